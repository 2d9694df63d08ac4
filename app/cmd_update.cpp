// tsaw update: makes the Project Set again from a Job or a template and merges the new generation
// into the folder, keeping the developer's edits; --undo puts the folder back as it was before.

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "app/command.h"
#include "app/create_answers.h"
#include "app/root.h"
#include "app/run_services.h"
#include "creation/report.h"
#include "generations/record.h"
#include "jobs/session.h"
#include "pages/validate_all.h"
#include "update/apply.h"
#include "update/update_report.h"
#include "update/update_run.h"

namespace tsaw::app {
namespace {
namespace fs = std::filesystem;

inline constexpr int kExitConflicts = 3;

struct UpdateOptions : AnswerOptions {
  std::string undo;
  bool dry_run = false;
};

// The run's messages for the user go to standard error. Ctrl-C is left to end the program: until
// the first write the Project Set is untouched, and after it every file is old or new and the
// undo record is kept.
class MessagesToStandardError : public creation::TRunObserver {
 public:
  void ShowMessage(const std::string& text) override { std::cerr << "tsaw: update: " << text << "\n"; }
};

// `word` as a shell reads it back: single-quoted when it holds anything but plain characters.
std::string ShellWord(const std::string& word) {
  if (word.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._-") == std::string::npos) {
    return word;
  }
  std::string quoted = "'";
  for (char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

int Print(const update::TUpdateResult& result, const TWizard& wizard, bool dry_run) {
  if (result.Outcome == update::TUpdateOutcome::Refused || result.Outcome == update::TUpdateOutcome::Failed) {
    std::cerr << "tsaw: update: " << (result.Outcome == update::TUpdateOutcome::Failed ? "failed: " : "")
              << result.Message << "\n";
    return kExitFailed;
  }
  if (dry_run) {
    for (const std::string& line : update::UpdateSection(result.Plan, true)) std::cout << line << "\n";
  }
  for (const std::string& line : update::UpdateStatistics(result.Plan)) std::cout << line << "\n";
  for (const std::string& line : update::ConflictLines(result.Plan)) std::cout << line << "\n";
  std::cout << "Project Set folder: " << result.ProjectSet.string()
            << "\nReport: " << creation::ReportFile(wizard).string() << "\n";
  if (!dry_run) std::cout << "Undo with: tsaw update --undo " << ShellWord(result.ProjectSet.string()) << "\n";
  return result.Outcome == update::TUpdateOutcome::Conflicts ? kExitConflicts : kExitOk;
}

int RunUpdate(const UpdateOptions& options, const GlobalOptions& global) {
  auto session = StartWithAnswers(global, options, "update");
  if (!session) return kExitFailed;
  TWizard& wizard = session->Wizard;
  if (const auto failures = ValidateAllAnswers(wizard); !failures.empty()) {
    std::cerr << FormatFailures(failures) << "tsaw: update: the answers do not pass the pages' rules; nothing was changed\n";
    return kExitFailed;
  }
  auto trash = platform::MakeUserTrash();
  auto dci = creation::MakeDciGeneratorFromEnvironment();
  MessagesToStandardError messages;
  creation::TCreationRun run(wizard, CreationServices(*session, *trash, *dci), messages);
  return Print(update::RunUpdate(wizard, run, options.dry_run), wizard, options.dry_run);
}

int RunUndo(const std::string& folder) {
  const std::optional<fs::path> state = generations::StateFolder();
  fs::path project_set = fs::absolute(folder).lexically_normal();
  if (project_set.filename().empty()) project_set = project_set.parent_path();
  std::string error = "no state folder: neither $XDG_STATE_HOME nor $HOME is set";
  auto store = state ? generations::TGenerationStore::Open(*state, project_set, false, error) : nullptr;
  if (!store && error.rfind("no generation", 0) == 0) error = "nothing to undo: no update of '" + project_set.string() + "' is recorded";
  if (!store || !update::UndoLastUpdate(*store, project_set, error)) {
    std::cerr << "tsaw: update: " << error << "\n";
    return kExitFailed;
  }
  std::cout << "The Project Set is back as it was before the last update: " << project_set.string() << "\n";
  return kExitOk;
}

}  // namespace

Command MakeUpdateCommand() {
  return {"update",
          "Make a Project Set again, keeping your edits (exit status 3: finished with conflicts)",
          [](CLI::App& sub, const GlobalOptions& global) -> std::function<int()> {
            auto options = std::make_shared<UpdateOptions>();
            sub.footer(
                "Exit status: 0 finished without conflicts, 3 finished with conflicts (listed, one per line),\n"
                "1 refused or failed (nothing was changed, or what was changed can be undone), 2 usage.");
            const auto [job, tpl] = AddAnswerOptions(sub, *options);
            sub.add_flag("--dry-run", options->dry_run, "Say what would happen to each file; change nothing");
            auto* undo = sub.add_option("--undo", options->undo,
                                        "Put the Project Set FOLDER back as it was before its last update");
            undo->excludes(job)->excludes(tpl);
            return [options, &global] {
              if (!options->undo.empty()) return RunUndo(options->undo);
              if (options->job.empty() && options->template_path.empty()) {
                std::cerr << "tsaw: update: give --job FILE, --template PATH or --undo FOLDER\n";
                return kExitUsage;
              }
              return RunUpdate(*options, global);
            };
          }};
}

}  // namespace tsaw::app
