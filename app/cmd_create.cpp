// tsaw create: makes a Project Set from a Job or a template, as the Creation page does, after the
// answers have passed every page's rules.

#include <unistd.h>

#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "app/command.h"
#include "app/create_answers.h"
#include "app/create_report.h"
#include "app/root.h"
#include "app/run_services.h"
#include "app/run_signals.h"
#include "creation/creation_run.h"
#include "creation/report.h"
#include "generations/creation_recorder.h"
#include "jobs/job_writer.h"
#include "model/format.h"
#include "pages/validate_all.h"

namespace tsaw::app {
namespace {
namespace fs = std::filesystem;

struct CreateOptions : AnswerOptions {
  bool dry_run = false;
  bool no_record = false;
  std::string save_job;
  bool force = false;
  bool json = false;
};

// Progress on a terminal: the counted files, then a bar over them; Ctrl-C, SIGTERM or SIGHUP
// aborts the run. Unless the output is JSON, the Project Set folder goes to standard output as
// soon as it is settled.
class TerminalProgress : public creation::TRunObserver {
 public:
  TerminalProgress(bool show, const CreateOptions& options) : show_(show), options_(options) {}
  void Attach(creation::TCreationRun* run) { run_ = run; }
  void ProjectSetFolderSettled(const fs::path& folder) override {
    if (options_.json) return;
    std::cout << (options_.dry_run ? "Project Set folder (not written): " : "Project Set folder: ")
              << folder.string() << std::endl;
  }
  void CountersChanged(const creation::TCounters& counters) override {
    if (show_ && counting_ && counters.FilesScanned % 64 == 0) {
      std::cerr << "\rcounting: " << FormatCount(counters.FilesScanned) << " files" << std::flush;
    }
  }
  void TaskChanged(const std::string& task) override {
    counting_ = task == "counting files and folders...";
    if (show_ && task == "processing files and folders...") std::cerr << "\r\033[K";
  }
  void GaugeChanged(int32_t max, int32_t position) override {
    if (!show_ || counting_ || max <= 0 || (position % 16 != 0 && position != max)) return;
    const int filled = static_cast<int>(40LL * position / max);
    std::cerr << "\r[" << std::string(filled, '#') << std::string(40 - filled, '.') << "] "
              << FormatCount(position) << "/" << FormatCount(max) << std::flush;
  }
  void ShowMessage(const std::string& text) override { std::cerr << "tsaw: create: " << text << "\n"; }
  void Pump() override {
    if (ScopedRunSignals::Caught() != 0 && run_ && !aborted_) {
      aborted_ = true;
      run_->Abort();
    }
  }
  void Done() const {
    if (show_) std::cerr << "\r\033[K" << std::flush;
  }

 private:
  bool show_;
  const CreateOptions& options_;
  bool counting_ = false;
  bool aborted_ = false;
  creation::TCreationRun* run_ = nullptr;
};

int Refuse(CreateReport& report, const std::string& message) {
  std::cerr << "tsaw: create: " << message << "\n";
  report.Message = message;
  return kExitFailed;
}

// Why --save-job's file could not be saved after the run; asked before it.
std::string CheckSaveJob(const TWizard& wizard, const CreateOptions& options) {
  std::error_code ignored;
  if (!options.force && fs::exists(fs::symlink_status(options.save_job, ignored))) {
    return "\"" + options.save_job + "\" already exists; give --force to replace it (the old file goes to the trash)";
  }
  return Check_Job_File(wizard, options.save_job, TOverwrite::Confirmed);
}

const char* OutcomeName(creation::TRunOutcome outcome, bool refused) {
  switch (outcome) {
    case creation::TRunOutcome::Finished: return "finished";
    case creation::TRunOutcome::Aborted: return "aborted";
    case creation::TRunOutcome::Failed: return "failed";
    case creation::TRunOutcome::Stopped: break;
  }
  return refused ? "refused" : "stopped";
}

// The line that ends a run that did not finish: "aborted", "stopped: <why>" or "failed: <why>".
std::string UnfinishedLine(creation::TRunOutcome outcome, const std::string& why) {
  if (outcome == creation::TRunOutcome::Aborted) return "aborted";
  return (outcome == creation::TRunOutcome::Failed ? "failed: " : "stopped: ") + why;
}

// Fills `report` from the run and, unless the output is JSON, prints what the run did.
void Summarise(const creation::TCreationRun& run, creation::TRunOutcome outcome, const TWizard& wizard,
               const CreateOptions& options, CreateReport& report) {
  report.Outcome = OutcomeName(outcome, run.Refused());
  report.Message = outcome == creation::TRunOutcome::Aborted ? "aborted" : run.StopReason();
  if (run.Refused()) return;
  report.ProjectSetFolder = run.ProjectSetFolder();
  report.Statistics = run.Counters();
  if (!run.MovedToTrash().empty()) report.MovedToTrash.push_back(run.MovedToTrash());
  report.PlannedFiles = run.PlannedFiles();
  if (!options.dry_run) report.ReportFile = creation::ReportFile(wizard);
  if (options.json) return;
  for (const std::string& line : creation::StatisticsBlock(run.Counters())) std::cout << line << "\n";
  const char* would = options.dry_run ? "Would move" : "Moved";
  for (const fs::path& folder : report.MovedToTrash) std::cout << would << " to the trash: " << folder.string() << "\n";
  for (const fs::path& file : report.PlannedFiles) std::cout << "Would write: " << file.string() << "\n";
  if (!report.ReportFile.empty()) std::cout << "Report: " << report.ReportFile.string() << "\n";
}

// --save-job after a finished run: an existing file (allowed by --force) goes to the trash first.
int SaveJob(const TWizard& wizard, const CreateOptions& options, platform::Trash& trash, CreateReport& report) {
  const fs::path file = options.save_job;
  const auto say = [&options](const std::string& line) {
    if (!options.json) std::cout << line << "\n";
  };
  report.JobFile = file;
  if (options.dry_run) {
    say("Would save the Job: " + file.string());
    return kExitOk;
  }
  std::error_code ignored;
  if (fs::exists(fs::symlink_status(file, ignored))) {
    std::string error;
    if (!trash.MoveToTrash(file, error)) {
      report.JobFile.clear();
      report.Outcome = "failed";
      return Refuse(report, "Job not saved: " + error);
    }
    report.MovedToTrash.push_back(file);
    say("Moved to the trash: " + file.string());
  }
  if (std::string error = Save_Job(wizard, file, TOverwrite::Confirmed); !error.empty()) {
    report.JobFile.clear();
    report.Outcome = "failed";
    return Refuse(report, error);
  }
  say("Job saved: " + file.string());
  return kExitOk;
}

int Create(const CreateOptions& options, const GlobalOptions& global, CreateReport& report) {
  std::ostringstream notes;
  auto session = ResolveWizardSession(global, notes, options.config);
  std::cerr << notes.str();
  if (!session) {
    report.Message = "the wizard session could not start";
    return kExitFailed;
  }
  TWizard& wizard = session->Wizard;
  if (std::string error = ChooseAnswers(wizard, options.job, options.template_path, options.sets); !error.empty()) {
    return Refuse(report, error);
  }
  for (const std::string& warning : AnswerFileWarnings(wizard)) std::cerr << "tsaw: warning: " << warning << "\n";
  ResolveBaseFolder(wizard);
  if (const auto failures = ValidateAllAnswers(wizard); !failures.empty()) {
    std::cerr << FormatFailures(failures);
    return Refuse(report, "the answers do not pass the pages' rules; nothing was written");
  }
  if (!options.save_job.empty()) {
    if (std::string error = CheckSaveJob(wizard, options); !error.empty()) return Refuse(report, error);
  }
  auto trash = platform::MakeUserTrash();
  auto dci = creation::MakeDciGeneratorFromEnvironment();
  TerminalProgress progress(isatty(STDERR_FILENO) == 1, options);
  std::optional<generations::TCreationRecorder> recorder;
  generations::TUnrecordedCreation unrecorded;
  creation::TCreationRun run(wizard, CreationServices(*session, *trash, *dci), progress);
  progress.Attach(&run);
  if (!options.dry_run) run.TellWrittenFiles(options.no_record ? static_cast<creation::TWrittenFiles*>(&unrecorded)
                                                                : &recorder.emplace(wizard));
  creation::TRunOutcome outcome;
  {
    const ScopedRunSignals signals;
    outcome = run.Start(options.dry_run);
  }
  progress.Done();
  if (outcome == creation::TRunOutcome::Finished && recorder) {
    if (std::string error = recorder->Finish(); !error.empty()) {
      std::cerr << "tsaw: create: warning: this creation was not recorded, so `tsaw update` cannot use it: " << error
                << "\n";
    }
  }
  Summarise(run, outcome, wizard, options, report);
  if (outcome != creation::TRunOutcome::Finished) {
    std::cerr << "tsaw: create: " << UnfinishedLine(outcome, report.Message) << "\n";
    return ScopedRunSignals::ExitStatus(kExitFailed);
  }
  return options.save_job.empty() ? kExitOk : SaveJob(wizard, options, *trash, report);
}

int RunCreate(const CreateOptions& options, const GlobalOptions& global) {
  CreateReport report;
  report.DryRun = options.dry_run;
  const int status = Create(options, global, report);
  if (options.json) std::cout << CreateReportJson(report);
  return status;
}

std::function<int()> SetUpCreate(CLI::App& sub, const GlobalOptions& global) {
  auto options = std::make_shared<CreateOptions>();
  AddAnswerOptions(sub, *options);
  sub.add_flag("--dry-run", options->dry_run,
               "List what would be written and moved to the trash; write nothing, not even the report");
  sub.add_flag("--no-record", options->no_record,
               "Do not remember this creation (a throw-away run that `tsaw update` cannot use)");
  sub.add_option("--save-job", options->save_job, "Save the answers as a Job after a finished run");
  sub.add_flag("--force", options->force, "Let --save-job replace an existing file (the old one goes to the trash)");
  sub.add_flag("--json", options->json, "Print one JSON document in place of the text on standard output");
  return [options, &global] {
    if (options->job.empty() && options->template_path.empty()) {
      std::cerr << "tsaw: create: give --job FILE or --template PATH\n";
      return kExitUsage;
    }
    return RunCreate(*options, global);
  };
}

}  // namespace

Command MakeCreateCommand() {
  return {"create", "Make a Project Set from a Job or a template", SetUpCreate};
}

}  // namespace tsaw::app
