// The template's fingerprint: it changes with any file's name, size or change time, whatever
// order or pace the folders are read in, and links are not followed.

#include "generations/template_fingerprint.h"

#include <gtest/gtest.h>

#include "testing/temp_dir.h"

namespace tsaw::generations {
namespace {
namespace fs = std::filesystem;

TEST(TemplateFingerprintTest, ChangesWithEveryFileAndNotWithLinks) {
  tsaw::testing::TempDir dir;
  dir.Write("Template.ini", "[Template]\r\n");
  dir.Write("Delphi 7/Win32/Host/A.pas", "unit A;");
  dir.Write("Delphi 7/Win32/Plugin/B.pas", "unit B;");
  const std::string first = TemplateFingerprint(dir.path());
  EXPECT_EQ(TemplateFingerprint(dir.path()), first);

  // Taken one entry at a time, as the recorder takes it between files, it is the same.
  TTemplateFingerprint stepped(dir.path());
  size_t steps = 0;
  while (stepped.Step(1)) ++steps;
  EXPECT_GE(steps, 8u);
  EXPECT_EQ(stepped.Digest(), first);

  fs::create_symlink(dir.path() / "Template.ini", dir.path() / "Linked.ini");
  fs::create_directory_symlink(dir.path() / "Delphi 7", dir.path() / "Linked folder");
  EXPECT_EQ(TemplateFingerprint(dir.path()), first);

  dir.Write("Delphi 7/Win32/Host/A.pas", "unit AA;");
  const std::string resized = TemplateFingerprint(dir.path());
  EXPECT_NE(resized, first);
  fs::last_write_time(dir.path() / "Delphi 7/Win32/Host/A.pas", fs::file_time_type::clock::now() - std::chrono::hours(1));
  const std::string touched = TemplateFingerprint(dir.path());
  EXPECT_NE(touched, resized);
  fs::rename(dir.path() / "Delphi 7/Win32/Plugin", dir.path() / "Delphi 7/Win32/Plug-in");
  EXPECT_NE(TemplateFingerprint(dir.path()), touched);
}

TEST(TemplateFingerprintTest, AMissingFolderHasTheFingerprintOfAnEmptyOne) {
  tsaw::testing::TempDir dir;
  fs::create_directory(dir.path() / "empty");
  EXPECT_EQ(TemplateFingerprint(dir.path() / "missing"), TemplateFingerprint(dir.path() / "empty"));
  EXPECT_FALSE(TTemplateFingerprint(dir.path() / "missing").Step(1));
}

}  // namespace
}  // namespace tsaw::generations
