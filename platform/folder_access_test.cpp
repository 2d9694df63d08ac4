#include "platform/folder_access.h"

#include <gtest/gtest.h>

#include "testing/temp_dir.h"

namespace tsaw::platform {
namespace {

TEST(FolderAccessTest, AFolderThatExistsOrCanBeMadeTakesFiles) {
  testing::TempDir dir;
  dir.MakeDir("there");
  EXPECT_EQ(WhyFolderCannotTakeFiles(dir.path() / "there"), "");
  EXPECT_EQ(WhyFolderCannotTakeFiles(dir.path() / "there/not/yet/"), "");
}

TEST(FolderAccessTest, NamesTheFileThatStandsWhereAFolderWouldBe) {
  testing::TempDir dir;
  const auto file = dir.Write("plain.txt", "x");
  EXPECT_EQ(WhyFolderCannotTakeFiles(file / "below/deeper"), "'" + file.string() + "' is not a folder");
  EXPECT_EQ(WhyFolderCannotTakeFiles(file), "'" + file.string() + "' is not a folder");
}

}  // namespace
}  // namespace tsaw::platform
