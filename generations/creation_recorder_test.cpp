// Recording a creation as it runs: the generation holds exactly what a snapshot of the finished
// folder would (a file written twice counts with its last content), and a run that does not
// finish adds nothing to the store.

#include "generations/creation_recorder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

#include "creation/creation_run.h"
#include "creation/creation_run_test_support.h"
#include "generations/record.h"
#include "generations/snapshot.h"
#include "generations/template_fingerprint.h"
#include "templates/template_info.h"

namespace tsaw::generations {
namespace {
namespace fs = std::filesystem;
using creation::TRunOutcome;

class CreationRecorderTest : public ::testing::Test {
 protected:
  void SetUp() override { setenv("XDG_STATE_HOME", (setup_.dir.path() / "state").c_str(), 1); }
  fs::path ProjectSet() const { return setup_.Out() / "Rocket"; }
  fs::path PackFolder() const {
    return TGenerationStore::FolderOf(setup_.dir.path() / "state/tsaw", ProjectSet()) / "objects/pack";
  }
  std::unique_ptr<TGenerationStore> OpenStore() {
    std::string error;
    return TGenerationStore::Open(setup_.dir.path() / "state/tsaw", ProjectSet(), false, error);
  }
  // With one core the run has no writer and its own thread does the recording; with more the
  // writer does it in its spare time, and the run's thread helps while it waits.
  unsigned cores_ = 1;
  creation::TRunServices Services() {
    creation::TRunServices services = setup_.Services();
    services.Cores = cores_;
    return services;
  }
  // Runs a recorded creation; `abort` stops it once its first files are written.
  TRunOutcome Record(bool abort = false) {
    TCreationRecorder recorder(setup_.wizard);
    creation::TCreationRun run(setup_.wizard, Services(), setup_.observer);
    run.TellWrittenFiles(&recorder);
    setup_.observer.on_pump = [&](const std::string&) {
      if (abort && fs::exists(ProjectSet() / "ReadMe.txt")) run.Abort();
    };
    const TRunOutcome outcome = run.Start();
    if (outcome == TRunOutcome::Finished) {
      EXPECT_EQ(recorder.Finish(), "");
    }
    return outcome;
  }
  creation::testing_support::DemoSetup setup_;
};

class RecordedRunTest : public CreationRecorderTest, public ::testing::WithParamInterface<unsigned> {
 protected:
  RecordedRunTest() { cores_ = GetParam(); }
};

TEST_P(RecordedRunTest, AFinishedRunGivesTheGenerationASnapshotOfItsFolderWould) {
  // Both names become "Rocket.txt"; the run writes the second one last.
  setup_.dir.Write("TSA/Wizard/Templates/Demo/#Product.Name#.txt", "first\n");
  setup_.dir.Write("TSA/Wizard/Templates/Demo/Rocket.txt", "second\n");
  // More than the recording lets wait for the writer's spare time.
  for (int i = 0; i < 300; ++i) {
    setup_.dir.Write("TSA/Wizard/Templates/Demo/Many/" + std::to_string(i) + ".txt",
                     std::string(30000, static_cast<char>('a' + i % 26)));
  }
  {
    TCreationRecorder recorder(setup_.wizard);
    creation::TCreationRun run(setup_.wizard, Services(), setup_.observer);
    run.TellWrittenFiles(&recorder);
    ASSERT_EQ(run.Start(), TRunOutcome::Finished);
    EXPECT_EQ(recorder.Finish(), "");
  }
  auto store = OpenStore();
  ASSERT_TRUE(store);
  const std::vector<TGeneration> generations = store->Generations();
  ASSERT_EQ(generations.size(), 1u);
  EXPECT_EQ(generations[0].Meta.Kind, "creation");
  EXPECT_EQ(generations[0].Meta.Template, setup_.wizard.SelectedTemplate->PartialPath);
  EXPECT_EQ(generations[0].Meta.Fingerprint, TemplateFingerprint(setup_.wizard.SelectedTemplate->FolderPath));
  TObjectPack pack = store->NewPack();
  const TFiles snapshot = SnapshotFolder(ProjectSet(), pack);
  EXPECT_EQ(store->Files(generations[0]), snapshot);
  EXPECT_EQ(store->Read(snapshot.at("Rocket.txt")), "second\r\n");
  EXPECT_EQ(store->Read(snapshot.at("Delphi 7/Win32/Host/logo.bin")), std::string("\x00\x01\xFF" "bin", 6));
}

TEST_P(RecordedRunTest, ARunAbortedAfterItsFirstFilesRecordsNothing) {
  setup_.dir.Write("TSA/Wizard/Templates/Demo/Big.bin", std::string(3 << 20, 'b'));
  ASSERT_EQ(Record(true), TRunOutcome::Aborted);
  EXPECT_FALSE(HasRecordedGeneration(ProjectSet()));
  EXPECT_FALSE(fs::exists(PackFolder().parent_path().parent_path())) << "the store it made is not left behind";

  // A store that holds an earlier generation stays, with nothing added; but that generation is no
  // longer the folder's, which the run made anew.
  ASSERT_EQ(Record(), TRunOutcome::Finished);
  EXPECT_TRUE(HasRecordedGeneration(ProjectSet()));
  fs::remove_all(ProjectSet());  // so that the run stops once its own first files are written
  ASSERT_EQ(Record(true), TRunOutcome::Aborted);
  {
    auto store = OpenStore();
    ASSERT_TRUE(store);
    EXPECT_EQ(store->Generations().size(), 1u);
    EXPECT_TRUE(store->MadeAnew());
  }
  EXPECT_FALSE(HasRecordedGeneration(ProjectSet()));

  ASSERT_EQ(Record(), TRunOutcome::Finished);
  EXPECT_TRUE(HasRecordedGeneration(ProjectSet()));
  EXPECT_EQ(OpenStore()->Generations().size(), 2u);
}

// Files told by paths that are not plain below the folder are recorded under their plain paths;
// told many at once, with no writer to help, they are taken as they come and all are recorded.
TEST_F(CreationRecorderTest, EveryFileToldIsRecordedUnderItsPlainPathBelowTheFolder) {
  fs::create_directories(ProjectSet());
  std::map<std::string, std::string> told = {{"a/b.txt", "1"}, {"c.txt", "2"}, {"e.txt", "3"}};
  for (int i = 0; i < 2000; ++i) told["Many/" + std::to_string(i)] = std::string(4000, static_cast<char>(i));
  {
    TCreationRecorder recorder(setup_.wizard);
    recorder.Started(ProjectSet());
    recorder.Written(ProjectSet() / "a/./b.txt", "1");
    recorder.Written(ProjectSet().string() + "//c.txt", "2");
    recorder.Written(ProjectSet() / "d/../e.txt", "3");
    for (int i = 0; i < 2000; ++i) {
      recorder.Written(ProjectSet() / "Many" / std::to_string(i), told["Many/" + std::to_string(i)]);
    }
    EXPECT_EQ(recorder.Finish(), "");
  }
  auto store = OpenStore();
  ASSERT_TRUE(store);
  const TFiles files = store->Files(store->Generations().at(0));
  std::map<std::string, std::string> recorded;
  for (const auto& [path, id] : files) recorded[path] = store->Read(id);
  EXPECT_EQ(recorded, told);
}

INSTANTIATE_TEST_SUITE_P(Cores, RecordedRunTest, ::testing::Values(1u, 4u), [](const auto& info) {
  return info.param == 1 ? std::string("RecordedByTheRunsThread") : std::string("RecordedInTheWritersSpareTime");
});

}  // namespace
}  // namespace tsaw::generations
