#pragma once
// An update from start to end, for the command line and the window alike: the same checks as a
// creation, the new generation made by the real creation run in a staging folder beside the
// Project Set (so that its files can be renamed into place), the three-way plan against the last
// recorded generation, its application (or, for a dry run, nothing), and the update's section in
// "Report.txt".

#include <filesystem>
#include <memory>
#include <string>

#include "creation/creation_run.h"
#include "model/wizard.h"
#include "update/plan.h"

namespace tsaw::update {

enum class TUpdateOutcome {
  Finished,   // no conflicts
  Conflicts,  // finished, with conflicts to resolve
  Refused,    // nothing was changed: no recorded generation, no Project Set, answers refused
  Failed,     // the run stopped, was aborted or failed; what was written can be undone
};

struct TUpdateResult {
  TUpdateOutcome Outcome = TUpdateOutcome::Failed;
  std::string Message;  // why it was refused or failed
  TUpdatePlan Plan;
  std::filesystem::path ProjectSet;
};

class TUpdateRun {
 public:
  // As for a creation run.
  TUpdateRun(TWizard& wizard, creation::TRunServices services, creation::TRunObserver& observer);
  ~TUpdateRun();

  // Runs the update; with `dry_run` the plan is made and reported but nothing is changed. Never
  // throws.
  TUpdateResult Start(bool dry_run);
  // Aborts the making of the new generation (call it from a pump point); the Project Set is then
  // left untouched.
  void Abort();

 private:
  TUpdateResult Update(bool dry_run);

  TWizard& wizard_;
  creation::TRunServices services_;
  creation::TRunObserver& observer_;
  std::unique_ptr<creation::TCreationRun> run_;
};

// The staging folder of `project_set`: a hidden sibling on the same file system.
std::filesystem::path StagingFolderOf(const std::filesystem::path& project_set);

}  // namespace tsaw::update
