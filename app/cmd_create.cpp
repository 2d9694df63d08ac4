// tsaw create: makes a Project Set from a Job or a template, as the Creation page does, after the
// answers have passed every page's rules.

#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "app/command.h"
#include "app/create_answers.h"
#include "app/root.h"
#include "app/run_signals.h"
#include "creation/creation_run.h"
#include "creation/report.h"
#include "generations/record.h"
#include "jobs/job_writer.h"
#include "jobs/session.h"
#include "model/format.h"
#include "pages/validate_all.h"

namespace tsaw::app {
namespace {

struct CreateOptions : AnswerOptions {
  bool dry_run = false;
  bool no_record = false;
  std::string save_job;
};

// Progress on a terminal: the counted files, then a bar over them; Ctrl-C, SIGTERM or SIGHUP
// aborts the run.
class TerminalProgress : public creation::TRunObserver {
 public:
  explicit TerminalProgress(bool show) : show_(show) {}
  void Attach(creation::TCreationRun* run) { run_ = run; }
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
  bool counting_ = false;
  bool aborted_ = false;
  creation::TCreationRun* run_ = nullptr;
};

int Report(creation::TRunOutcome outcome, const creation::TCreationRun& run, const TWizard& wizard,
           bool dry_run) {
  for (const std::string& line : creation::StatisticsBlock(run.Counters())) std::cout << line << "\n";
  std::cout << (dry_run ? "Project Set folder (not written): " : "Project Set folder: ")
            << run.ProjectSetFolder().string() << "\nReport: " << creation::ReportFile(wizard).string() << "\n";
  switch (outcome) {
    case creation::TRunOutcome::Finished: return kExitOk;
    case creation::TRunOutcome::Aborted:
      std::cerr << "tsaw: create: aborted\n";
      return ScopedRunSignals::ExitStatus(kExitFailed);
    case creation::TRunOutcome::Stopped: std::cerr << "tsaw: create: stopped: " << run.StopReason() << "\n"; break;
    case creation::TRunOutcome::Failed: std::cerr << "tsaw: create: failed: " << run.StopReason() << "\n"; break;
  }
  return kExitFailed;
}

int RunCreate(const CreateOptions& options, const GlobalOptions& global) {
  auto session = StartWithAnswers(global, options, "create");
  if (!session) return kExitFailed;
  TWizard& wizard = session->Wizard;
  if (const auto failures = ValidateAllAnswers(wizard); !failures.empty()) {
    std::cerr << FormatFailures(failures) << "tsaw: create: the answers do not pass the pages' rules; nothing was written\n";
    return kExitFailed;
  }
  auto trash = platform::MakeUserTrash();
  auto dci = creation::MakeDciGeneratorFromEnvironment();
  creation::TRunServices services{kWizardProgram, trash.get(), dci.get(),
                                  [&session](TWizard& w) {
                                    Set_Fixed_Variables(w, kWizardProgram, *session->Clock, *session->Machine);
                                  },
                                  std::getenv("HOME") ? std::getenv("HOME") : ""};
  TerminalProgress progress(isatty(STDERR_FILENO) == 1);
  creation::TCreationRun run(wizard, std::move(services), progress);
  progress.Attach(&run);
  creation::TRunOutcome outcome;
  {
    const ScopedRunSignals signals;
    outcome = run.Start(options.dry_run);
  }
  progress.Done();
  if (outcome == creation::TRunOutcome::Finished && !options.dry_run && !options.no_record) {
    if (std::string error = generations::RecordCreation(wizard, run.ProjectSetFolder()); !error.empty()) {
      std::cerr << "tsaw: create: warning: this creation was not recorded, so `tsaw update` cannot use it: " << error
                << "\n";
    }
  }
  const int status = Report(outcome, run, wizard, options.dry_run);
  if (status != kExitOk || options.save_job.empty()) return status;
  if (std::string error = Save_Job(wizard, options.save_job, TOverwrite::Confirmed); !error.empty()) {
    std::cerr << "tsaw: create: the Job was not saved: " << error << "\n";
    return kExitFailed;
  }
  return kExitOk;
}

}  // namespace

Command MakeCreateCommand() {
  return {"create", "Make a Project Set from a Job or a template",
          [](CLI::App& sub, const GlobalOptions& global) -> std::function<int()> {
            auto options = std::make_shared<CreateOptions>();
            AddAnswerOptions(sub, *options);
            sub.add_flag("--dry-run", options->dry_run, "Count only; write nothing into the output folder");
            sub.add_flag("--no-record", options->no_record,
                         "Do not remember this creation (a throw-away run that `tsaw update` cannot use)");
            sub.add_option("--save-job", options->save_job, "Save the answers as a Job after a finished run");
            return [options, &global] {
              if (options->job.empty() && options->template_path.empty()) {
                std::cerr << "tsaw: create: give --job FILE or --template PATH\n";
                return kExitUsage;
              }
              return RunCreate(*options, global);
            };
          }};
}

}  // namespace tsaw::app
