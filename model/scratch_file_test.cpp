#include "model/scratch_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "testing/file_size_limit.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {
namespace fs = std::filesystem;

std::string ReadBack(const TScratchFile& scratch) {
  std::string bytes;
  std::string reason;
  EXPECT_TRUE(scratch.ReadBack([&bytes](std::string_view chunk) { bytes.append(chunk); return true; }, reason))
      << reason;
  return bytes;
}

bool IsEmpty(const fs::path& folder) { return fs::directory_iterator(folder) == fs::directory_iterator(); }

// Reads go in chunks of 64 KB; pieces of every size must come back whole and in order.
TEST(ScratchFileTest, GivesBackEveryByteInOrderAndHasNoName) {
  testing::TempDir dir;
  std::optional<TScratchFile> scratch = TScratchFile::Make(dir.path());
  ASSERT_TRUE(scratch);
  EXPECT_TRUE(IsEmpty(dir.path()));
  EXPECT_EQ(ReadBack(*scratch), "");
  std::string all;
  for (const size_t size : {size_t{1}, size_t{0}, size_t{65535}, size_t{70000}, size_t{3}}) {
    std::string piece(size, '\0');
    for (size_t i = 0; i < size; ++i) piece[i] = static_cast<char>((all.size() + i) * 131 >> 3);
    ASSERT_TRUE(scratch->Append(piece)) << size;
    all += piece;
  }
  EXPECT_EQ(scratch->Size(), all.size());
  EXPECT_EQ(ReadBack(*scratch), all);
  TScratchFile moved = std::move(*scratch);
  EXPECT_EQ(ReadBack(moved), all);
  EXPECT_TRUE(IsEmpty(dir.path()));
}

TEST(ScratchFileTest, StopsWhenTheSinkRefuses) {
  testing::TempDir dir;
  std::optional<TScratchFile> scratch = TScratchFile::Make(dir.path());
  ASSERT_TRUE(scratch);
  ASSERT_TRUE(scratch->Append(std::string(200000, 'x')));
  int chunks = 0;
  std::string reason;
  EXPECT_FALSE(scratch->ReadBack([&chunks](std::string_view) { return ++chunks < 2; }, reason));
  EXPECT_EQ(chunks, 2);
  EXPECT_EQ(reason, "");
}

TEST(ScratchFileTest, CannotBeMadeInAMissingFolder) {
  testing::TempDir dir;
  std::string error;
  EXPECT_FALSE(TScratchFile::Make(dir.path() / "missing", &error));
  EXPECT_EQ(error, "Cannot make a scratch file in \"" + (dir.path() / "missing").string() +
                       "\": No such file or directory");
}

// A write that fills the disk half way must not leave half of its bytes behind.
TEST(ScratchFileTest, AWriteThatDoesNotFitKeepsNoneOfItsBytes) {
  testing::TempDir dir;
  std::optional<TScratchFile> scratch = TScratchFile::Make(dir.path());
  ASSERT_TRUE(scratch);
  {
    const testing::FileSizeLimit full_disk(100000);
    ASSERT_TRUE(scratch->Append(std::string(60000, 'a')));
    EXPECT_FALSE(scratch->Append(std::string(60000, 'b')));
  }
  EXPECT_EQ(scratch->Size(), 60000u);
  ASSERT_TRUE(scratch->Append("c"));
  EXPECT_EQ(ReadBack(*scratch), std::string(60000, 'a') + "c");
}

}  // namespace
}  // namespace tsaw
