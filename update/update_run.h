#pragma once
// An update from start to end, for the command line and the window alike: the same checks as a
// creation, the new generation made by the real creation run in a staging folder beside the
// Project Set (so that its files can be renamed into place), the three-way plan against the last
// recorded generation, its application (or, for a dry run, nothing), and the update's section in
// "Report.txt".

#include <filesystem>
#include <string>

#include "creation/creation_run.h"
#include "model/wizard.h"
#include "update/plan.h"

namespace tsaw::update {

enum class TUpdateOutcome {
  Finished,   // no conflicts
  Conflicts,  // finished, with conflicts to resolve
  Refused,    // nothing was changed: no recorded generation, no Project Set, the run refused
  Failed,     // the run stopped, was aborted or failed; what was written can be undone
};

struct TUpdateResult {
  TUpdateOutcome Outcome = TUpdateOutcome::Failed;
  std::string Message;  // why it was refused or failed
  TUpdatePlan Plan;
  std::filesystem::path ProjectSet;
  // How the making of the new generation ended; only a finished run leads to a plan.
  creation::TRunOutcome Run = creation::TRunOutcome::Failed;
};

// Updates the Project Set the answers name, with `run` (made for `wizard` by the caller, whose
// observer sees its progress and may abort it) making the new generation; with `dry_run` the
// plan is made and reported but nothing is changed. Never throws.
TUpdateResult RunUpdate(TWizard& wizard, creation::TCreationRun& run, bool dry_run);

// The staging folder of `project_set`: a hidden sibling on the same file system.
std::filesystem::path StagingFolderOf(const std::filesystem::path& project_set);

}  // namespace tsaw::update
