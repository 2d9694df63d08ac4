#include "pages/output_page.h"

#include <gtest/gtest.h>

#include "testing/wizard_builder.h"

namespace tsaw {
namespace {

TEST(OutputPageTest, BlankBaseFolderIsOneError) {
  TWizard wizard = testing::MakeWizard(0);
  testing::SetVar(wizard, viOutputBaseFolder, "#Path.TsaProjects#");
  TPageMemory memory;
  TOutputPage page(wizard, memory.For(TPageKind::Output));
  page.Open();
  EXPECT_EQ(page.Errors().Text(),
            "1 - Base Folder (expanded to \"\") cannot be blank.\r\n"
            "It will be the parent of the Project Set root folder.");
  EXPECT_EQ(page.Caption(), "1 Error:");
}

TEST(OutputPageTest, EmbedVarPutsTheFirstFittingPathVariableInFront) {
  TWizard wizard = testing::MakeWizard(0);
  testing::SetVar(wizard, viPathDelphi, "/opt/Delphi5");
  testing::SetVar(wizard, viPathWindows, "/win/WINDOWS");
  testing::SetVar(wizard, viPathWindowsSystem, "/win/WINDOWS/system32");
  const struct {
    const char* folder;
    const char* stored;
  } cases[] = {
      {"/opt/Delphi5/Projects", "#Path.Delphi#/Projects/"},
      {"/OPT/delphi5/Projects/", "#Path.Delphi#/Projects/"},
      {"/win/WINDOWS/system32/drivers", "#Path.WindowsSystem#/drivers/"},
      {"/win/WINDOWS/Temp", "#Path.Windows#/Temp/"},
      {"/home/ann/work", "/home/ann/work/"},
      {"/home/ann//work/", "/home/ann/work/"},
  };
  for (const auto& c : cases) EXPECT_EQ(EmbedVar(wizard, c.folder), c.stored) << c.folder;
}

}  // namespace
}  // namespace tsaw
