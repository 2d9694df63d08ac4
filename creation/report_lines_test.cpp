#include "creation/report_lines.h"

#include <gtest/gtest.h>

#include "model/text_file.h"
#include "testing/file_size_limit.h"
#include "testing/temp_dir.h"

namespace tsaw::creation {
namespace {
namespace fs = std::filesystem;

// Lines enough to pass through the scratch file several times, with empty ones between.
std::vector<std::string> ManyLines() {
  std::vector<std::string> lines;
  for (int i = 0; i < 5000; ++i) lines.push_back(i % 7 == 0 ? "" : "    File 'Host/Unit" + std::to_string(i) + ".pas' - Skip? No ");
  return lines;
}

std::vector<fs::path> Entries(const fs::path& folder) {
  std::vector<fs::path> entries;
  for (const auto& entry : fs::directory_iterator(folder)) entries.push_back(entry.path().filename());
  return entries;
}

TEST(ReportLinesTest, SavesEveryLineWithCrLfAndTheMoreLinesAfter) {
  testing::TempDir dir;
  TReportLines report;
  report.Restart(dir.path());
  const std::vector<std::string> lines = ManyLines();
  for (const std::string& line : lines) report.Add(line);
  EXPECT_EQ(report.Read(), lines);
  ASSERT_TRUE(report.SaveAs(dir.path() / "Report.txt", {"", "UPDATE"}));
  EXPECT_EQ(dir.Read("Report.txt"), JoinLines(lines) + "\r\nUPDATE\r\n");
  // Saving again (an update after the run) gives the run's lines again.
  ASSERT_TRUE(report.SaveAs(dir.path() / "Report.txt"));
  EXPECT_EQ(dir.Read("Report.txt"), JoinLines(lines));
  EXPECT_EQ(Entries(dir.path()), std::vector<fs::path>{"Report.txt"});
}

TEST(ReportLinesTest, RestartForgetsTheLines) {
  testing::TempDir dir;
  TReportLines report;
  report.Restart(dir.path());
  for (const std::string& line : ManyLines()) report.Add(line);
  report.Restart(dir.path());
  report.Add("second run");
  EXPECT_EQ(report.Read(), std::vector<std::string>{"second run"});
  TReportLines never_started;
  EXPECT_EQ(never_started.Read(), std::vector<std::string>{});
}

TEST(ReportLinesTest, KeepsTheLinesInMemoryWhereNoScratchFileCanBeMade) {
  testing::TempDir dir;
  TReportLines report;
  report.Restart(dir.path() / "missing");
  const std::vector<std::string> lines = ManyLines();
  for (const std::string& line : lines) report.Add(line);
  EXPECT_EQ(report.Read(), lines);
  EXPECT_FALSE(report.SaveAs(dir.path() / "missing" / "Report.txt"));
  ASSERT_TRUE(report.SaveAs(dir.path() / "Report.txt"));
  EXPECT_EQ(dir.Read("Report.txt"), JoinLines(lines));
}

TEST(ReportLinesTest, KeepsTheRestInMemoryWhenTheDiskFills) {
  testing::TempDir dir;
  TReportLines report;
  report.Restart(dir.path());
  const std::vector<std::string> lines = ManyLines();
  {
    const testing::FileSizeLimit full_disk(100000);
    for (const std::string& line : lines) report.Add(line);
  }
  EXPECT_EQ(report.Read(), lines);
  ASSERT_TRUE(report.SaveAs(dir.path() / "Report.txt"));
  EXPECT_EQ(dir.Read("Report.txt"), JoinLines(lines));
}

TEST(ReportLinesTest, AFailedSaveLeavesTheOldReport) {
  testing::TempDir dir;
  dir.Write("Report.txt", "the last run's report");
  TReportLines report;
  report.Restart(dir.path());
  for (const std::string& line : ManyLines()) report.Add(line);
  {
    const testing::FileSizeLimit full_disk(1000);
    EXPECT_FALSE(report.SaveAs(dir.path() / "Report.txt"));
  }
  EXPECT_EQ(dir.Read("Report.txt"), "the last run's report");
  EXPECT_EQ(Entries(dir.path()), std::vector<fs::path>{"Report.txt"});
}

}  // namespace
}  // namespace tsaw::creation
