#include "creation/background_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <deque>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "testing/temp_dir.h"

namespace tsaw::creation {
namespace {
namespace fs = std::filesystem;

std::vector<std::string> Names(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

TEST(BackgroundWriterTest, FilesAreFilledUnseenAndShownInTurnOnlyWhenLet) {
  testing::TempDir dir;
  const std::vector<std::string> texts = {"a", "b", "c"};
  TBackgroundWriter writer;
  for (const char* name : {"A.txt", "B.txt", "C.txt"}) {
    writer.Start(TFreshFile::OfBytes(dir.path() / name, texts[static_cast<size_t>(name[0] - 'A')]));
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(Names(dir.path()), std::vector<std::string>{});
  EXPECT_FALSE(writer.Done());

  std::string error;
  writer.Let(true);
  EXPECT_TRUE(writer.Wait(error));
  EXPECT_EQ(Names(dir.path()), std::vector<std::string>{"A.txt"});
  writer.Let(false);
  EXPECT_FALSE(writer.Wait(error));
  writer.Let(true);
  EXPECT_TRUE(writer.Wait(error));
  EXPECT_EQ(Names(dir.path()), (std::vector<std::string>{"A.txt", "C.txt"}));
  EXPECT_EQ(dir.Read("C.txt"), "c");
}

// As the run uses it: up to kMostFiles in flight, each let once the one before is waited for.
TEST(BackgroundWriterTest, ManyFilesInFlightComeOutInTurnWithTheirErrors) {
  testing::TempDir dir;
  fs::create_directory(dir.path() / "F17");
  std::deque<std::string> texts;
  TBackgroundWriter writer;
  int waited = 0;
  const auto wait_oldest = [&] {
    std::string error;
    const bool written = writer.Wait(error);
    const std::string name = "F" + std::to_string(waited++);
    EXPECT_EQ(written, name != "F17") << name;
    EXPECT_EQ(error, name != "F17" ? "" : "Cannot write \"" + (dir.path() / name).string() + "\": it is a folder");
    if (waited < static_cast<int>(texts.size())) writer.Let(true);
  };
  for (int number = 0; number < 2000; ++number) {
    if (number - waited == static_cast<int>(TBackgroundWriter::kMostFiles)) wait_oldest();
    texts.push_back("text " + std::to_string(number));
    writer.Start(TFreshFile::OfBytes(dir.path() / ("F" + std::to_string(number)), texts.back()));
    if (number == waited) writer.Let(true);
  }
  while (waited < 2000) wait_oldest();
  EXPECT_EQ(Names(dir.path()).size(), 2000u);
  EXPECT_EQ(dir.Read("F1999"), "text 1999");
}

TEST(BackgroundWriterTest, ItsEndShowsTheFilesLetAndGivesUpTheOthers) {
  testing::TempDir dir;
  {
    TBackgroundWriter writer;
    writer.Start(TFreshFile::OfBytes(dir.path() / "Let.txt", "let"));
    writer.Start(TFreshFile::OfBytes(dir.path() / "NotLet.txt", "not let"));
    writer.Let(true);
  }
  EXPECT_EQ(Names(dir.path()), std::vector<std::string>{"Let.txt"});
}

// The writer does spare work when it has no file to write; a file let meanwhile waits for the
// piece in hand, and the run's thread, waiting for it, is offered spare work of its own.
TEST(BackgroundWriterTest, SpareWorkFillsTheWritersIdleTimeAndTheRunsWait) {
  testing::TempDir dir;
  const std::thread::id run_thread = std::this_thread::get_id();
  std::atomic<bool> writer_piece_begun{false};
  std::atomic<bool> run_offered{false};
  std::atomic<int> writer_pieces{0};
  std::atomic<bool> offered_elsewhere{false};
  TBackgroundWriter writer([&](bool run_waits) {
    if (run_waits != (std::this_thread::get_id() == run_thread)) offered_elsewhere = true;
    if (run_waits) {
      run_offered = true;
      return false;
    }
    // The first piece lasts until the run's thread has been offered one (or long enough).
    if (!writer_piece_begun.exchange(true)) {
      const auto give_up = std::chrono::steady_clock::now() + std::chrono::seconds(2);
      while (!run_offered && std::chrono::steady_clock::now() < give_up) std::this_thread::yield();
      ++writer_pieces;
      return true;
    }
    return false;
  });
  writer.Start(TFreshFile::OfBytes(dir.path() / "A.txt", "a"));
  while (!writer_piece_begun) std::this_thread::yield();
  EXPECT_EQ(Names(dir.path()), std::vector<std::string>{}) << "not let yet";
  writer.Let(true);
  std::string error;
  EXPECT_TRUE(writer.Wait(error));
  EXPECT_TRUE(run_offered);
  EXPECT_EQ(writer_pieces, 1);
  EXPECT_EQ(dir.Read("A.txt"), "a");
  EXPECT_FALSE(offered_elsewhere);
}

}  // namespace
}  // namespace tsaw::creation
