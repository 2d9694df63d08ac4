#include "platform/folder_listing.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "testing/temp_dir.h"

namespace tsaw::platform {
namespace {
namespace fs = std::filesystem;

std::vector<std::string> Names(const std::vector<TFolderEntry>& entries) {
  std::vector<std::string> names;
  for (const TFolderEntry& entry : entries) names.push_back(entry.Name);
  return names;
}

TEST(FolderListingTest, SortsByNameLeavesHiddenNamesOutAndDoesNotFollowLinks) {
  testing::TempDir dir;
  dir.Write("b.txt", "b");
  dir.Write("A.txt", "a");
  dir.Write(".hidden", "h");
  dir.MakeDir("c");
  dir.MakeDir(".git");
  fs::create_directory_symlink(dir.path() / "c", dir.path() / "d");
  ASSERT_EQ(::mkfifo((dir.path() / "e").c_str(), 0600), 0);
  std::error_code error;
  const std::vector<TFolderEntry> entries = ListFolder(dir.path(), error);
  EXPECT_FALSE(error);
  EXPECT_EQ(Names(entries), (std::vector<std::string>{"A.txt", "b.txt", "c", "d", "e"}));
  EXPECT_TRUE(fs::is_regular_file(entries[0].Status));
  EXPECT_TRUE(fs::is_directory(entries[2].Status));
  EXPECT_TRUE(fs::is_symlink(entries[3].Status));
  EXPECT_TRUE(fs::is_fifo(entries[4].Status));
}

TEST(FolderListingTest, AFolderThatCannotBeReadGivesItsReason) {
  testing::TempDir dir;
  std::error_code error;
  EXPECT_TRUE(ListFolder(dir.path() / "missing", error).empty());
  EXPECT_EQ(error, std::errc::no_such_file_or_directory);
}

}  // namespace
}  // namespace tsaw::platform
