// The run's report however the run ends: Report.txt holds exactly the lines the observer was told,
// in order, CR LF after each, and the run reads them back the same.

#include <gtest/gtest.h>

#include <functional>

#include "creation/creation_run.h"
#include "creation/creation_run_test_support.h"
#include "model/text_file.h"
#include "model/variables.h"

namespace tsaw::creation {
namespace {
namespace fs = std::filesystem;
using testing_support::DemoSetup;

// Files enough that the report passes through its scratch file several times.
void AddManyFiles(DemoSetup& setup) {
  for (int i = 0; i < 1000; ++i) setup.dir.Write("TSA/Wizard/Templates/Demo/Many/F" + std::to_string(i) + ".txt", "x\n");
}

// Names in the wizard folder left by the run: temporary files would begin with ".tsaw-".
std::vector<std::string> LeftBeside(const DemoSetup& setup) {
  std::vector<std::string> left;
  for (const auto& entry : fs::directory_iterator(setup.dir.path() / "TSA/Wizard")) {
    if (entry.path().filename().string().rfind(".tsaw-", 0) == 0) left.push_back(entry.path().filename());
  }
  return left;
}

struct EndCase {
  const char* name;
  TRunOutcome outcome;
  std::function<void(DemoSetup&, TCreationRun&)> arrange;
};

class RunEndReportTest : public ::testing::TestWithParam<EndCase> {};

TEST_P(RunEndReportTest, SavesEveryLineTheObserverWasTold) {
  const EndCase& c = GetParam();
  DemoSetup setup;
  AddManyFiles(setup);
  setup.dir.Write("TSA/Wizard/Report.txt", "the last run's report");
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  c.arrange(setup, run);
  EXPECT_EQ(run.Start(), c.outcome) << c.name;
  ASSERT_GT(setup.observer.lines.size(), 1000u) << c.name;
  EXPECT_EQ(setup.observer.lines.back(), "") << c.name;
  EXPECT_EQ(setup.dir.Read("TSA/Wizard/Report.txt"), JoinLines(setup.observer.lines)) << c.name;
  EXPECT_EQ(run.ReportLines().Read(), setup.observer.lines) << c.name;
  EXPECT_EQ(LeftBeside(setup), std::vector<std::string>{}) << c.name;
}

INSTANTIATE_TEST_SUITE_P(
    Ends, RunEndReportTest,
    ::testing::Values(
        EndCase{"Finished", TRunOutcome::Finished, [](DemoSetup&, TCreationRun&) {}},
        EndCase{"Aborted", TRunOutcome::Aborted,
                [](DemoSetup& setup, TCreationRun& run) {
                  setup.observer.on_pump = [&run, pumps = 0](const std::string& task) mutable {
                    if (task == "processing files and folders..." && ++pumps == 600) run.Abort();
                  };
                }},
        EndCase{"Failed", TRunOutcome::Failed,
                [](DemoSetup& setup, TCreationRun&) {
                  setup.dir.Write("TSA/Wizard/Templates/Demo/Zz/Broken.pas", "x;\n{$ELSE}\n");
                }}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(RunReportTest, ARefusedRunSavesItsReport) {
  DemoSetup setup;
  setup.SetVariable(viProductName, "..");
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  EXPECT_EQ(run.Start(), TRunOutcome::Stopped);
  EXPECT_EQ(setup.dir.Read("TSA/Wizard/Report.txt"), JoinLines(setup.observer.lines));
  EXPECT_EQ(run.ReportLines().Read(), setup.observer.lines);
}

TEST(RunReportTest, ADryRunKeepsTheLastRunsReportAndReadsBackItsOwn) {
  DemoSetup setup;
  AddManyFiles(setup);
  setup.dir.Write("TSA/Wizard/Report.txt", "the last run's report");
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  EXPECT_EQ(run.Start(true), TRunOutcome::Finished);
  EXPECT_EQ(setup.dir.Read("TSA/Wizard/Report.txt"), "the last run's report");
  EXPECT_EQ(run.ReportLines().Read(), setup.observer.lines);
  EXPECT_EQ(LeftBeside(setup), std::vector<std::string>{});
}

// Without a wizard folder to hold the scratch file the lines stay in memory, as does the run.
TEST(RunReportTest, WithoutAWizardFolderTheRunStillReadsBackItsReport) {
  DemoSetup setup;
  AddManyFiles(setup);
  setup.wizard.WizardFolder = (setup.dir.path() / "gone").string() + "/";
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  EXPECT_EQ(run.Start(), TRunOutcome::Finished);
  EXPECT_EQ(run.ReportLines().Read(), setup.observer.lines);
  EXPECT_FALSE(fs::exists(setup.dir.path() / "gone"));
}

}  // namespace
}  // namespace tsaw::creation
