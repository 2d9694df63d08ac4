#include "model/file_bytes.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "testing/file_size_limit.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {
namespace fs = std::filesystem;

TEST(FileBytesTest, NeverOpensWhatIsNotARegularFileForReading) {
  testing::TempDir dir;
  const fs::path fifo = dir.path() / "pipe";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  std::string error;
  // A FIFO without a writer would block a plain open for ever.
  EXPECT_EQ(ReadFileBytes(fifo, &error), std::nullopt);
  EXPECT_EQ(error, "Cannot read \"" + fifo.string() + "\": it is not a regular file");
  EXPECT_EQ(ReadFileBytes("/dev/zero", &error), std::nullopt);
  EXPECT_EQ(error, "Cannot read \"/dev/zero\": it is not a regular file");
  EXPECT_FALSE(CopyFileBytes(fifo, dir.path() / "copy", &error));
  EXPECT_EQ(error, "Cannot copy \"" + fifo.string() + "\" to \"" + (dir.path() / "copy").string() +
                       "\": it is not a regular file");
  EXPECT_FALSE(fs::exists(dir.path() / "copy"));
}

TEST(FileBytesTest, RefusesFilesLargerThanTheReadBound) {
  testing::TempDir dir;
  const fs::path big = dir.path() / "big.ini";
  fs::resize_file(dir.Write("big.ini", ""), kMostFileBytes + 1);
  std::string error;
  EXPECT_EQ(ReadFileBytes(big, &error), std::nullopt);
  EXPECT_EQ(error, "Cannot read \"" + big.string() + "\": it is larger than 64 MB");
  fs::resize_file(big, kMostFileBytes);
  EXPECT_EQ(ReadFileBytes(big, &error)->size(), kMostFileBytes);
}

// Files the kernel makes up as they are read announce a size of 0 and are read to their end.
TEST(FileBytesTest, ReadsFilesThatAnnounceNoSizeToTheirEnd) {
  std::string error;
  const std::optional<std::string> status = ReadFileBytes("/proc/self/status", &error);
  ASSERT_TRUE(status) << error;
  EXPECT_NE(status->find("\nPid:"), std::string::npos);
}

TEST(FileBytesTest, ReplacesAFileWholeKeepingItsPermissionsAndLeavingNothingBeside) {
  testing::TempDir dir;
  const fs::path job = dir.Write("Job.ini", std::string(5000, 'o'));
  fs::permissions(job, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  ASSERT_TRUE(WriteFileBytes(job, "new"));
  EXPECT_EQ(dir.Read("Job.ini"), "new");
  EXPECT_EQ(fs::status(job).permissions() & fs::perms::all,
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  // Bits the umask takes from a new file stay on a replaced one.
  const mode_t mask = ::umask(0);
  ::umask(mask);
  const fs::path shared = dir.Write("Shared.ini", "old");
  fs::permissions(shared, fs::perms::all);
  ASSERT_TRUE(WriteFileBytes(shared, "new"));
  ASSERT_TRUE(WriteFileBytes(dir.path() / "Fresh.ini", "new"));
  EXPECT_EQ(fs::status(shared).permissions() & fs::perms::all, fs::perms::all);
  EXPECT_EQ(static_cast<mode_t>(fs::status(dir.path() / "Fresh.ini").permissions() & fs::perms::all), 0666 & ~mask);
  fs::remove(shared);
  fs::remove(dir.path() / "Fresh.ini");
  const fs::path source = dir.Write("tool.sh", "#!/bin/sh\n");
  fs::permissions(source, fs::perms::owner_all);
  ASSERT_TRUE(CopyFileBytes(source, dir.path() / "copy.sh"));
  EXPECT_EQ(dir.Read("copy.sh"), "#!/bin/sh\n");
  EXPECT_EQ(fs::status(dir.path() / "copy.sh").permissions() & fs::perms::all, fs::perms::owner_all);
  size_t entries = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator(dir.path())) ++entries;
  EXPECT_EQ(entries, 3u);
}

// Copies go through the kernel where it can; every byte must arrive, over any size.
TEST(FileBytesTest, CopiesEveryByteOfAnyFile) {
  testing::TempDir dir;
  for (const size_t size : {size_t{0}, size_t{1}, size_t{3} << 20}) {
    std::string bytes(size, '\0');
    for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>((i * 131) >> 3);
    const fs::path source = dir.Write("source.bin", bytes);
    ASSERT_TRUE(CopyFileBytes(source, dir.path() / "copy.bin")) << size;
    EXPECT_EQ(dir.Read("copy.bin"), bytes) << size;
  }
}

TEST(FileBytesTest, AFailedWriteLeavesTheOldFile) {
  testing::TempDir dir;
  const fs::path report = dir.Write("Report.txt", "old");
  // A name the file system refuses: the temporary file is made, the rename fails.
  const fs::path too_long = dir.path() / std::string(300, 'r');
  std::string error;
  EXPECT_FALSE(WriteFileBytes(too_long, "new", &error));
  EXPECT_EQ(error, "Cannot write \"" + too_long.string() + "\": File name too long");
  EXPECT_EQ(dir.Read("Report.txt"), "old");
  size_t entries = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator(dir.path())) ++entries;
  EXPECT_EQ(entries, 1u);
}

TEST(FileBytesTest, ASourceThatGivesUpHalfWayLeavesTheOldFile) {
  testing::TempDir dir;
  const fs::path report = dir.Write("Report.txt", "old");
  const TByteSource half = [](const TByteSink& write, std::string& reason) {
    if (!write("new, first half")) return false;
    reason = "the rest could not be read";
    return false;
  };
  std::string error;
  EXPECT_FALSE(WriteFileFrom(report, half, &error));
  EXPECT_EQ(error, "Cannot write \"" + report.string() + "\": the rest could not be read");
  EXPECT_EQ(dir.Read("Report.txt"), "old");
  size_t entries = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator(dir.path())) ++entries;
  EXPECT_EQ(entries, 1u);
  const TByteSource pieces = [](const TByteSink& write, std::string&) { return write("new, ") && write("whole"); };
  ASSERT_TRUE(WriteFileFrom(report, pieces));
  EXPECT_EQ(dir.Read("Report.txt"), "new, whole");
}

// Filled, a fresh file is in no folder listing; shown, it is there whole; never shown, it is gone.
TEST(FileBytesTest, AFreshFileIsSeenOnlyOnceShown) {
  testing::TempDir dir;
  const fs::path source = dir.Write("source.bin", std::string("\x00\x01bin", 5));
  const auto names = [&dir] {
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(dir.path())) found.push_back(entry.path().filename().string());
    std::sort(found.begin(), found.end());
    return found;
  };
  const std::string text = "unit Fresh;";
  TFreshFile written = TFreshFile::OfBytes(dir.path() / "Fresh.pas", text);
  TFreshFile copied = TFreshFile::CopyOf(source, dir.path() / "copy.bin");
  {
    TFreshFile dropped = TFreshFile::OfBytes(dir.path() / "Dropped.pas", text);
    written.Fill();
    copied.Fill();
    dropped.Fill();
    EXPECT_EQ(names(), std::vector<std::string>{"source.bin"});
  }
  ASSERT_TRUE(written.Show());
  ASSERT_TRUE(copied.Show());
  EXPECT_EQ(names(), (std::vector<std::string>{"Fresh.pas", "copy.bin", "source.bin"}));
  EXPECT_EQ(dir.Read("Fresh.pas"), text);
  EXPECT_EQ(dir.Read("copy.bin"), std::string("\x00\x01bin", 5));

  // A copy whose source is not a regular file fails when shown, with the copy's message.
  std::string error;
  EXPECT_FALSE(TFreshFile::CopyOf(dir.path(), dir.path() / "folder copy").Show(&error));
  EXPECT_EQ(error, "Cannot copy \"" + dir.path().string() + "\" to \"" + (dir.path() / "folder copy").string() +
                       "\": it is a folder");
}

// A fresh file appears whole under its name, with no temporary name beside it; a name already
// taken is replaced as ever, and a file that cannot be written whole leaves no trace.
TEST(FileBytesTest, AFreshFileAppearsWholeOrNotAtAll) {
  testing::TempDir dir;
  const mode_t mask = ::umask(0);
  ::umask(mask);
  ASSERT_TRUE(WriteFileBytes(dir.path() / "New.pas", "unit New;", nullptr, TPlacement::Fresh));
  EXPECT_EQ(dir.Read("New.pas"), "unit New;");
  EXPECT_EQ(static_cast<mode_t>(fs::status(dir.path() / "New.pas").permissions() & fs::perms::all), 0666 & ~mask);
  const fs::path tool = dir.Write("tool.sh", "#!/bin/sh\n");
  fs::permissions(tool, fs::perms::all);
  ASSERT_TRUE(CopyFileBytes(tool, dir.path() / "copy.sh", nullptr, TPlacement::Fresh));
  EXPECT_EQ(dir.Read("copy.sh"), "#!/bin/sh\n");
  EXPECT_EQ(fs::status(dir.path() / "copy.sh").permissions() & fs::perms::all, fs::perms::all);

  // Written again: the new bytes replace the old whole, keeping the file's permissions.
  fs::permissions(dir.path() / "New.pas", fs::perms::owner_read | fs::perms::owner_write);
  ASSERT_TRUE(WriteFileBytes(dir.path() / "New.pas", "unit New2;", nullptr, TPlacement::Fresh));
  EXPECT_EQ(dir.Read("New.pas"), "unit New2;");
  EXPECT_EQ(fs::status(dir.path() / "New.pas").permissions() & fs::perms::all,
            fs::perms::owner_read | fs::perms::owner_write);
  ASSERT_TRUE(CopyFileBytes(dir.path() / "New.pas", dir.path() / "copy.sh", nullptr, TPlacement::Fresh));
  EXPECT_EQ(dir.Read("copy.sh"), "unit New2;");
  std::string error;
  fs::create_directory(dir.path() / "Folder.pas");
  EXPECT_FALSE(WriteFileBytes(dir.path() / "Folder.pas", "unit F;", &error, TPlacement::Fresh));
  EXPECT_EQ(error, "Cannot write \"" + (dir.path() / "Folder.pas").string() + "\": it is a folder");
  {
    const testing::FileSizeLimit full(4);
    EXPECT_FALSE(WriteFileBytes(dir.path() / "New.pas", "unit New3;", &error, TPlacement::Fresh));
    EXPECT_FALSE(WriteFileBytes(dir.path() / "Big.pas", "unit Big;", &error, TPlacement::Fresh));
    EXPECT_EQ(error, "Cannot write \"" + (dir.path() / "Big.pas").string() + "\": File too large");
    EXPECT_FALSE(CopyFileBytes(dir.path() / "New.pas", dir.path() / "Big copy.pas", &error, TPlacement::Fresh));
  }
  EXPECT_EQ(dir.Read("New.pas"), "unit New2;");
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(dir.path())) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"Folder.pas", "New.pas", "copy.sh", "tool.sh"}));
}

}  // namespace
}  // namespace tsaw
