// The run writes each file on a second thread while it reads and expands the next one. These
// tests hold it to a run that waits for each write: at every pump point the report, the counters
// and the Project Set folder must agree, and a run stopped anywhere must leave what it says.

#include "creation/file_in_flight.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "creation/creation_run.h"
#include "creation/creation_run_test_support.h"
#include "model/variables.h"

namespace tsaw::creation {
namespace {
namespace fs = std::filesystem;
using testing_support::DemoSetup;

constexpr const char* kTemplate = "TSA/Wizard/Templates/Demo/";

// Regular files below `folder`, any name (a left-over temporary file counts).
int FilesBelow(const fs::path& folder) {
  if (!fs::exists(folder)) return 0;
  int files = 0;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) files += entry.is_regular_file();
  return files;
}

// The files the report has begun to process, skipped ones aside.
int FilesBegun(const std::vector<std::string>& lines) {
  return static_cast<int>(std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
    return line.rfind("    File '", 0) == 0 && line.ends_with(" - Skip? No ");
  }));
}

// Adds files to the demo, so that several lie in one folder and follow each other in flight, in
// one folder more of them than may be in flight at once.
void AddFiles(DemoSetup& setup) {
  std::vector<std::string> names = {"A1.txt", "A2.pas", "A3.bin", "A4.txt", "Common/B1.txt", "Common/B2.bin"};
  for (int i = 10; i < 30; ++i) names.push_back("Many/M" + std::to_string(i) + (i % 3 == 0 ? ".bin" : ".txt"));
  for (const std::string& name : names) {
    setup.dir.Write(kTemplate + name, "unit vrProjects_Prefix_x; // #Product.Name#\n");
  }
}

// Each case runs with files written behind the run (four cores) and with each file written
// before the next is begun (one core): both must show the same.
class FileInFlightTest : public ::testing::TestWithParam<unsigned> {
 protected:
  TRunServices Services(DemoSetup& setup) const {
    TRunServices services = setup.Services();
    services.Cores = GetParam();
    return services;
  }
};

TEST_P(FileInFlightTest, AtEveryPumpPointTheFolderHoldsTheFilesCountedAndTheReportNoFileAhead) {
  DemoSetup setup;
  AddFiles(setup);
  TCreationRun run(setup.wizard, Services(setup), setup.observer);
  int checked = 0;
  setup.observer.on_pump = [&](const std::string& task) {
    if (task != "processing files and folders...") return;
    const TCounters& counters = run.Counters();
    EXPECT_EQ(FilesBelow(setup.Out()), counters.FilesProcessed) << "at pump " << setup.observer.pumps;
    EXPECT_EQ(FilesBegun(setup.observer.lines), counters.FilesProcessed + counters.FilesFailed)
        << "at pump " << setup.observer.pumps;
    ++checked;
  };
  ASSERT_EQ(run.Start(), TRunOutcome::Finished);
  EXPECT_EQ(run.Counters().FilesProcessed, 36);
  EXPECT_GT(checked, 36);
}

// The run's report with its temporary folder written as "<dir>", so that runs in different
// folders compare.
std::vector<std::string> ReportOf(const TCreationRun& run, const DemoSetup& setup) {
  std::vector<std::string> lines = run.ReportLines().Read();
  const std::string dir = setup.dir.path().string();
  for (std::string& line : lines) {
    for (auto at = line.find(dir); at != std::string::npos; at = line.find(dir, at)) line.replace(at, dir.size(), "<dir>");
  }
  return lines;
}

// A run aborted at its `abort_at`-th pump of the processing pass.
struct TAbortedRun {
  TRunOutcome outcome;
  std::vector<std::string> report;
  TCounters counters;
  int files_on_disk;
};
TAbortedRun AbortAt(int abort_at, unsigned cores) {
  DemoSetup setup;
  AddFiles(setup);
  TRunServices services = setup.Services();
  services.Cores = cores;
  TCreationRun run(setup.wizard, services, setup.observer);
  int pumps = 0;
  setup.observer.on_pump = [&](const std::string& task) {
    if (task == "processing files and folders..." && ++pumps == abort_at) run.Abort();
  };
  const TRunOutcome outcome = run.Start();
  return {outcome, ReportOf(run, setup), run.Counters(), FilesBelow(setup.Out())};
}

TEST_P(FileInFlightTest, AnAbortAtAnyPumpPointLeavesTheFilesCountedAndTheFinishedRunsReportUpToThere) {
  DemoSetup setup;
  AddFiles(setup);
  TCreationRun run(setup.wizard, Services(setup), setup.observer);
  int processing_pumps = 0;
  setup.observer.on_pump = [&](const std::string& task) { processing_pumps += task == "processing files and folders..."; };
  ASSERT_EQ(run.Start(), TRunOutcome::Finished);
  const std::vector<std::string> finished = ReportOf(run, setup);

  for (int abort_at = 1; abort_at <= processing_pumps; ++abort_at) {
    const TAbortedRun aborted = AbortAt(abort_at, GetParam());
    ASSERT_EQ(aborted.outcome, TRunOutcome::Aborted) << "abort at " << abort_at;
    EXPECT_EQ(aborted.files_on_disk, aborted.counters.FilesProcessed) << "abort at " << abort_at;
    const auto end = std::find(aborted.report.begin(), aborted.report.end(), "Process aborted!");
    ASSERT_NE(end, aborted.report.end());
    // Before the blank line that precedes "Process aborted!", the report is the finished one's.
    const std::vector<std::string> before(aborted.report.begin(), end - 1);
    ASSERT_LE(before.size(), finished.size());
    EXPECT_TRUE(std::equal(before.begin(), before.end(), finished.begin())) << "abort at " << abort_at;
  }
}

TEST_P(FileInFlightTest, AFileThatCannotBeSavedIsReportedInItsPlaceAndTheRunGoesOn) {
  DemoSetup setup;
  AddFiles(setup);
  // A name longer than the file system allows: the write itself fails, even for root.
  setup.SetVariable(viCompanyName, std::string(300, 'c'));
  setup.dir.Write(kTemplate + std::string("A3#Company.Name#.txt"), "too long\n");
  TCreationRun run(setup.wizard, Services(setup), setup.observer);
  ASSERT_EQ(run.Start(), TRunOutcome::Finished);
  EXPECT_EQ(run.Counters().FilesFailed, 1);
  EXPECT_EQ(run.Counters().FilesProcessed, 36);
  const std::vector<std::string> report = ReportOf(run, setup);
  const auto error = std::find_if(report.begin(), report.end(), [](const std::string& line) {
    return line.rfind("      ERROR: File could not be saved: ", 0) == 0;
  });
  ASSERT_NE(error, report.end());
  EXPECT_EQ(*(error - 1), "      Saving file to destination folder...");
  EXPECT_EQ(*(error + 1), "    File '<dir>/TSA/Wizard/Templates/Demo/A3.bin' - Skip? No ");
}

// The demo with a file after A4.txt that breaks the run: it is read while A4.txt is in flight.
// By default the preprocessor refuses it (an exception); `too_large` makes its expansion break
// the expansion's bound instead (a stop reason).
struct TBrokenAfterA4 {
  explicit TBrokenAfterA4(bool too_large = false) {
    AddFiles(setup);
    if (too_large) {
      setup.SetVariable(viCompanyName, std::string(40000, 'c'));  // 2,000 of them pass 64 MB
      std::string text;
      for (int i = 0; i < 2000; ++i) text += "#Company.Name#";
      setup.dir.Write(kTemplate + std::string("A5.txt"), text);
    } else {
      setup.dir.Write(kTemplate + std::string("A5.pas"), "x;\n{$ELSE}\n");
    }
  }
  bool A4Written() const { return fs::exists(setup.Out() / "Rocket/A4.txt"); }
  DemoSetup setup;
};

TEST_P(FileInFlightTest, AnErrorInTheNextFileComesAfterTheFileInFlightIsCounted) {
  TBrokenAfterA4 broken;
  TCreationRun run(broken.setup.wizard, Services(broken.setup), broken.setup.observer);
  ASSERT_EQ(run.Start(), TRunOutcome::Failed);
  EXPECT_TRUE(broken.A4Written());
  EXPECT_EQ(run.Counters().FilesProcessed, 4);
  EXPECT_EQ(FilesBelow(broken.setup.Out()), 4);
  const std::vector<std::string> report = ReportOf(run, broken.setup);
  const auto a5 = std::find(report.begin(), report.end(), "    File '<dir>/TSA/Wizard/Templates/Demo/A5.pas' - Skip? No ");
  ASSERT_NE(a5, report.end());
  EXPECT_EQ(*(a5 + 1), "      Expanding variables with no char replacement...");
  EXPECT_EQ(*(a5 + 2), "      Is directive-aware? Yes");
  EXPECT_EQ((a5 + 3)->rfind("TSA EXCEPTION at ", 0), 0u) << *(a5 + 3);
}

TEST_P(FileInFlightTest, AnAbortAfterTheFileInFlightComesBeforeTheNextFilesError) {
  TBrokenAfterA4 broken;
  TCreationRun run(broken.setup.wizard, Services(broken.setup), broken.setup.observer);
  broken.setup.observer.on_pump = [&](const std::string&) {
    if (broken.A4Written()) run.Abort();
  };
  ASSERT_EQ(run.Start(), TRunOutcome::Aborted);
  EXPECT_EQ(run.Counters().FilesProcessed, 4);
  EXPECT_EQ(run.StopReason(), "");
  for (const std::string& line : ReportOf(run, broken.setup)) {
    EXPECT_EQ(line.find("A5.pas"), std::string::npos) << line;
    EXPECT_EQ(line.find("EXCEPTION"), std::string::npos) << line;
  }
}

TEST_P(FileInFlightTest, ABoundBrokenByTheNextFileStopsTheRunOnlyIfTheFileInFlightLetsItGoOn) {
  {
    TBrokenAfterA4 broken(true);
    TCreationRun run(broken.setup.wizard, Services(broken.setup), broken.setup.observer);
    ASSERT_EQ(run.Start(), TRunOutcome::Stopped);
    EXPECT_EQ(run.Counters().FilesProcessed, 4);
    EXPECT_EQ(run.Counters().FilesFailed, 1);
    EXPECT_NE(run.StopReason().find("A5.txt' exceeds"), std::string::npos) << run.StopReason();
  }
  TBrokenAfterA4 broken(true);
  TCreationRun run(broken.setup.wizard, Services(broken.setup), broken.setup.observer);
  broken.setup.observer.on_pump = [&](const std::string&) {
    if (broken.A4Written()) run.Abort();
  };
  ASSERT_EQ(run.Start(), TRunOutcome::Aborted);
  EXPECT_EQ(run.Counters().FilesProcessed, 4);
  EXPECT_EQ(run.Counters().FilesFailed, 0);
  EXPECT_EQ(run.StopReason(), "");
}

INSTANTIATE_TEST_SUITE_P(Cores, FileInFlightTest, ::testing::Values(1u, 4u), [](const auto& info) {
  return info.param == 1 ? std::string("WrittenBeforeTheNext") : std::string("WrittenBehind");
});

}  // namespace
}  // namespace tsaw::creation
