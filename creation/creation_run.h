#pragma once
// The creation run (the "Creation Process" page's start and stop buttons without the page): it
// checks the variables, sets up the run directives, counts the template, then writes the Project
// Set, and always ends by writing "Report.txt" into the wizard folder.

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "creation/dci.h"
#include "creation/report_lines.h"
#include "creation/run_observer.h"
#include "creation/written_files.h"
#include "model/startup.h"
#include "model/wizard.h"
#include "platform/trash.h"

namespace tsaw::creation {

struct TRunContext;

// What the run needs from outside the wizard state.
struct TRunServices {
  TProgramInfo Program;  // names the fixed directives
  platform::Trash* Trash = nullptr;
  TDciGenerator* Dci = nullptr;
  // Sets the fixed variables again (date and time of this run); empty: keeps them as they are.
  std::function<void(TWizard&)> SetFixedVariables;
  // Guarded besides the wizard folder and the template: the Project Set folder may not be or hold it.
  std::filesystem::path Home;
  // The processors the run may use: files are written behind the run only when one is free for
  // it (see file_in_flight.h).
  unsigned Cores = std::thread::hardware_concurrency();
};

// The Project Set folder the answers name: "#Output.BaseFolder#/#Product.Name#" expanded, either
// separator accepted, absolute and without a trailing separator.
std::filesystem::path ProjectSetFolderOf(const TWizard& wizard);

enum class TRunOutcome {
  Finished,  // every selected target was passed
  Aborted,   // Abort was called
  Stopped,   // refused or stopped by a walk (StopReason says why)
  Failed,    // an exception ended it (the report holds the "TSA EXCEPTION" line)
};

class TCreationRun {
 public:
  // `wizard` must have a selected, valid template. Trash and Dci must be set in `services`.
  TCreationRun(TWizard& wizard, TRunServices services, TRunObserver& observer);
  ~TCreationRun();

  // Runs the whole creation and saves the report. With `dry_run` the processing pass does all
  // but create folders, move the existing Project Set folder aside and write files: it lists the
  // files it would write (PlannedFiles), the Base Folder must be one that can be made, and the
  // report is not saved, so the last real run's report stays. Never throws. The answers the run
  // expands or computes are put back when it ends; only the fixed variables keep the values this
  // run set (its date and time).
  TRunOutcome Start(bool dry_run = false);
  // The stop button's Abort: the run stops at its next check (call it from a pump point).
  void Abort();
  // Makes later runs write the files into `folder` in place of the Project Set folder (an
  // update's staging folder); the checks and the variables still see the Project Set folder.
  void WriteInto(const std::filesystem::path& folder);
  // Makes later runs tell `listener` of every file they write (null: nobody); it must outlive
  // the runs it is told of.
  void TellWrittenFiles(TWrittenFiles* listener);

  // The report of the last run (a dry run's too, which is not saved).
  const TReportLines& ReportLines() const;
  const TCounters& Counters() const;
  // The Project Set folder of the last run (empty before the run computed it).
  const std::filesystem::path& ProjectSetFolder() const;
  // Why the last run stopped or failed; empty when it finished or was aborted.
  const std::string& StopReason() const;
  // True when the last run was refused (its answers or its Project Set folder) before anything
  // was touched.
  bool Refused() const;
  // The existing Project Set folder that the last run moved to the trash (a dry run: would move);
  // empty when there was none.
  const std::filesystem::path& MovedToTrash() const;
  // The files the last dry run would have written, in walk order.
  const std::vector<std::filesystem::path>& PlannedFiles() const;

 private:
  TRunOutcome RunPhases(bool dry_run);
  void CheckVariables();
  bool AnswersWithinBounds();
  void Refuse(const std::string& refusal);
  void PrepareDirectives();
  void CheckTargets();
  bool ComputeProjectSet(std::string refusal);
  TRunOutcome CountingPass();
  TRunOutcome ProcessingPass();
  TRunOutcome ProcessLanguages();
  TRunOutcome ProcessTargets();
  TRunOutcome Interrupted() const;
  void Finish(bool save_report);

  TWizard& wizard_;
  TRunServices services_;
  std::unique_ptr<TRunContext> run_;
  std::filesystem::path write_into_;
  std::filesystem::path project_set_;  // the Project Set folder, wherever the files go
  bool language_on_[10] = {};
};

}  // namespace tsaw::creation
