#include "creation/creation_run.h"

#include <exception>

#include "creation/file_in_flight.h"
#include "creation/kept_answers.h"
#include "creation/report.h"
#include "creation/run_context.h"
#include "creation/run_directives.h"
#include "creation/safety.h"
#include "creation/system_variables.h"
#include "creation/walk.h"
#include "model/answer_check.h"
#include "model/expand.h"
#include "model/target_selection.h"
#include "model/targets.h"
#include "model/variables.h"
#include "platform/debug_log.h"
#include "platform/folder_access.h"
#include "templates/template_info.h"

namespace tsaw::creation {
namespace fs = std::filesystem;
namespace {

constexpr const char* kRoutine = "TSaW_frmCreation.TfrmCreation.btnStart_OnClick";

const char* OnOff(bool on) { return on ? "On" : "Off"; }

// A path from a wizard value: either separator accepted, doubled separators made single.
fs::path FolderFromValue(std::string text) {
  for (char& c : text) {
    if (c == '\\') c = '/';
  }
  for (auto at = text.find("//"); at != std::string::npos; at = text.find("//", at)) text.erase(at, 1);
  if (text.empty()) return {};
  fs::path folder = fs::absolute(fs::path(text)).lexically_normal();
  if (folder.filename().empty() && folder != folder.root_path()) folder = folder.parent_path();
  return folder;
}

// Keeps the target directives named after the current language, platform and target.
void SyncTargetDirectives(TRunContext& run) {
  TWizard& wizard = run.wizard;
  const TRunDirectiveNumbers numbers = wizard.RunDirectives;
  TDefines& defines = run.processor->Defines;
  RenameRunDirective(wizard, defines, numbers.TargetLanguage,
                     "TargetLanguage_" + CurrentItem(wizard, viTargetLanguage).IdfValue);
  RenameRunDirective(wizard, defines, numbers.TargetPlatform,
                     "TargetPlatform_" + CurrentItem(wizard, viTargetPlatform).IdfValue);
  RenameRunDirective(wizard, defines, numbers.Target, "Target_" + CurrentItem(wizard, viTarget).IdfValue);
}

}  // namespace

fs::path ProjectSetFolderOf(const TWizard& wizard) {
  return FolderFromValue(ExpandVar(wizard, "#Output.BaseFolder#/#Product.Name#"));
}

TCreationRun::TCreationRun(TWizard& wizard, TRunServices services, TRunObserver& observer)
    : wizard_(wizard),
      services_(std::move(services)),
      run_(std::make_unique<TRunContext>(wizard, observer, *services_.Dci, *services_.Trash)) {}

TCreationRun::~TCreationRun() = default;

const TReportLines& TCreationRun::ReportLines() const { return run_->report; }
const TCounters& TCreationRun::Counters() const { return run_->counters; }
const fs::path& TCreationRun::ProjectSetFolder() const { return project_set_; }
const std::string& TCreationRun::StopReason() const { return run_->stop_reason; }
bool TCreationRun::Refused() const { return run_->refused; }
const fs::path& TCreationRun::MovedToTrash() const { return run_->moved_to_trash; }
const std::vector<fs::path>& TCreationRun::PlannedFiles() const { return run_->planned_files; }

void TCreationRun::Abort() {
  TRunContext& run = *run_;
  run.aborted = true;
  run.Report();
  run.Report("Process aborted!");
  run.SetStatus("Process aborted!", "idle.");
}

void TCreationRun::WriteInto(const fs::path& folder) { write_into_ = folder; }

void TCreationRun::TellWrittenFiles(TWrittenFiles* listener) { run_->written = listener; }

TRunOutcome TCreationRun::Start(bool dry_run) {
  platform::ScopedRoutine routine(kRoutine);
  TRunContext& run = *run_;
  run.step = 10;
  run.aborted = false;
  run.report.Restart(ReportFile(wizard_).parent_path());
  run.stop_reason.clear();
  run.counters = {};
  run.dry_run = run.refused = false;
  // With the debug log on, each file is written before the next is begun, so that its routine
  // lines keep their order.
  run.write_behind = !platform::DebugEnabled() && WritesBehind(services_.Cores);
  run.moved_to_trash.clear();
  run.planned_files.clear();
  TRunOutcome outcome = TRunOutcome::Failed;
  try {
    if (services_.SetFixedVariables) services_.SetFixedVariables(wizard_);
    const TKeptAnswers answers(wizard_);
    outcome = RunPhases(dry_run);
  } catch (const std::exception& error) {
    const std::string line = platform::ExceptionLine(kRoutine, run.step, error.what());
    platform::DebugLine(line);
    run.Report(line);
    run.stop_reason = error.what();
    outcome = TRunOutcome::Failed;
  }
  Finish(!dry_run);
  return outcome;
}

TRunOutcome TCreationRun::RunPhases(bool dry_run) {
  TRunContext& run = *run_;
  for (const std::string& line : ReportHeader(wizard_)) run.Report(line);
  CheckVariables();
  // Read before the Base Folder's value is expanded in place below.
  const auto expand = [this](const std::string& text) { return ExpandVar(wizard_, text); };
  const std::string base_refusal = CheckBaseFolderValue(wizard_.Variables[viOutputBaseFolder].Value, expand);
  Expand_System_Variables(wizard_);
  if (!run.Pump()) return TRunOutcome::Aborted;
  if (!AnswersWithinBounds()) return TRunOutcome::Stopped;
  PrepareDirectives();
  CheckTargets();
  if (!ComputeProjectSet(base_refusal)) return TRunOutcome::Stopped;
  if (const TRunOutcome counted = CountingPass(); counted != TRunOutcome::Finished) return counted;
  if (dry_run) {
    const fs::path base = run.project_set.parent_path();
    if (const std::string why = platform::WhyFolderCannotTakeFiles(base); !why.empty()) {
      run.stop_reason = "The Base Folder '" + base.string() + "' cannot be made: " + why + ".";
      run.Report("  ERROR: " + run.stop_reason);
      return TRunOutcome::Stopped;
    }
    run.dry_run = true;
  }
  return ProcessingPass();
}

void TCreationRun::CheckVariables() {
  TRunContext& run = *run_;
  run.step = 20;
  run.Pump();
  run.Report("Checking for Circular Variable References...");
  const uint16_t cycle = AnyCvrError(wizard_, [&run](const std::string& message) {
    run.observer.ShowMessage(message);
  });
  if (cycle != 0) {
    const TVariableItem& item = wizard_.Variables[cycle];
    run.Report("  WARNING: At least 1 CVR has been detected:  " + item.Name + " (" + item.Value + ")");
  } else {
    run.Report("  No CVR detected.");
  }
}

// A cycle the check above did not neutralise, or an answer that grows beyond the expansion's
// bounds, would fill every file it reaches: the run is refused before anything is written.
bool TCreationRun::AnswersWithinBounds() {
  const std::string refusal = FirstAnswerBeyondBounds(wizard_);
  if (refusal.empty()) return true;
  Refuse(refusal);
  return false;
}

void TCreationRun::Refuse(const std::string& refusal) {
  TRunContext& run = *run_;
  run.Report();
  run.Report("  ERROR: " + refusal);
  run.stop_reason = refusal;
  run.refused = true;
}

void TCreationRun::PrepareDirectives() {
  TRunContext& run = *run_;
  run.Report("Plugin.Index set to 1.");
  wizard_.PluginIndex = 1;
  TVariableItem& index = wizard_.Variables[viPluginIndex];
  index.Value = index.DefaultValue = index.IdfValue = "1";
  run.Report("Setting up Template Directives...");
  Setup_Template_Directives(wizard_, services_.Program);
  run.processor = std::make_unique<TqrxModelProcessor>();
  run.processor->Defines = ModelProcessorDefines(wizard_);
  run.step = 30;
  run.Report("Starting process...");
  run.counters = {};
  run.ShowCounters();
  run.step = 40;
  run.SetGauge(100, 0);
  run.step = 50;
  run.SetStatus("Process started.", "doing...");
  run.Report();
}

void TCreationRun::CheckTargets() {
  TRunContext& run = *run_;
  run.Report("Checking platforms anf languages...");
  run.step = 60;
  bool platform_on[4] = {};
  for (bool& on : language_on_) on = false;
  for (uint16_t platform = 1; platform <= kPlatformCount; ++platform) {
    for (uint16_t language = 1; language <= kLanguageCount; ++language) {
      const uint16_t target = TargetOf(language, platform);
      if (target != 0 && wizard_.Targets[target].Checked) platform_on[platform] = language_on_[language] = true;
    }
  }
  for (uint16_t language = 1; language <= kLanguageCount; ++language) {
    run.Report("  Language '" + std::string(LanguageInfo(language).Name) + "' is " + OnOff(language_on_[language]));
  }
  for (uint16_t platform = 1; platform <= kPlatformCount; ++platform) {
    run.Report("  Platform '" + std::string(PlatformInfo(platform).Name) + "' is " + OnOff(platform_on[platform]));
  }
  run.Report();
  run.Report("Checking targets...");
  for (uint16_t target = 1; target <= kTargetCount; ++target) {
    run.Report("  Target '" + std::string(TargetInfo(target).Name) + "' is " + OnOff(wizard_.Targets[target].Checked));
  }
}

// The Project Set folder, refused (with the reason reported) unless it is safe to clear and write;
// `refusal` is one found before.
bool TCreationRun::ComputeProjectSet(std::string refusal) {
  TRunContext& run = *run_;
  const fs::path base = FolderFromValue(ExpandVar(wizard_, "#Output.BaseFolder#"));
  run.template_folder = FolderFromValue(wizard_.SelectedTemplate ? wizard_.SelectedTemplate->FolderPath : "");
  run.project_set = project_set_ = ProjectSetFolderOf(wizard_);
  const TProtectedFolders guarded{services_.Home, FolderFromValue(wizard_.WizardFolder), run.template_folder};
  if (refusal.empty() && (run.template_folder.empty() || !fs::is_directory(run.template_folder))) {
    refusal = "The template folder '" + run.template_folder.string() + "' is not available.";
  }
  if (refusal.empty()) refusal = CheckProjectSetFolder(run.project_set, base, guarded);
  if (refusal.empty()) {
    run.observer.ProjectSetFolderSettled(run.project_set);
    if (!write_into_.empty()) run.project_set = write_into_;
    return true;
  }
  Refuse(refusal);
  return false;
}

TRunOutcome TCreationRun::Interrupted() const {
  return run_->aborted ? TRunOutcome::Aborted : TRunOutcome::Stopped;
}

TRunOutcome TCreationRun::CountingPass() {
  TRunContext& run = *run_;
  run.step = 100;
  run.SetTask("counting files and folders...");
  run.Report();
  run.Report("Counting files and folders...");
  run.count_only = true;
  if (!Process_Root(run)) return Interrupted();
  run.step = 110;
  for (uint16_t language = 1; language <= kLanguageCount; ++language) {
    if (!run.Pump()) return TRunOutcome::Aborted;
    if (!language_on_[language]) {
      ++run.counters.FoldersSkipped;
    } else if (!Process_Language(run, language)) {
      return Interrupted();
    }
    run.ShowCounters();
  }
  run.step = 200;
  for (uint16_t target = 1; target <= kTargetCount; ++target) {
    run.step = 210;
    if (!run.Pump()) return TRunOutcome::Aborted;
    run.step = 220;
    if (!wizard_.Targets[target].Checked) {
      ++run.counters.FoldersSkipped;
    } else if (!Process_Target(run, target)) {
      return Interrupted();
    }
    run.ShowCounters();
  }
  return TRunOutcome::Finished;
}

TRunOutcome TCreationRun::ProcessingPass() {
  TRunContext& run = *run_;
  run.step = 300;
  run.SetGauge(run.counters.FilesScanned, 0);
  run.step = 310;
  run.Report();
  run.Report("Processing files and folders...");
  run.Report();
  run.SetTask("processing files and folders...");
  run.count_only = false;
  if (!run.Pump()) return TRunOutcome::Aborted;
  run.Report("Processing root folder...");
  if (!Process_Root(run)) return Interrupted();
  if (const TRunOutcome languages = ProcessLanguages(); languages != TRunOutcome::Finished) return languages;
  if (const TRunOutcome targets = ProcessTargets(); targets != TRunOutcome::Finished) return targets;
  run.ShowCounters();
  run.ShowCounters();
  run.SetStatus("Process finished!", "idle.");
  run.step = 430;
  run.Report();
  run.Report("Process finished.");
  return TRunOutcome::Finished;
}

TRunOutcome TCreationRun::ProcessLanguages() {
  TRunContext& run = *run_;
  run.step = 320;
  run.Report();
  run.Report("Processing language folders...");
  for (uint16_t language = 1; language <= kLanguageCount; ++language) {
    run.step = 330;
    if (!run.Pump()) return TRunOutcome::Aborted;
    if (!language_on_[language]) continue;
    run.step = 340;
    run.Report();
    run.Report("Processing language " + std::string(LanguageInfo(language).Name) + "...");
    Select_Language(wizard_, language);
    SyncTargetDirectives(run);
    if (!Process_Language(run, language)) return Interrupted();
  }
  return TRunOutcome::Finished;
}

TRunOutcome TCreationRun::ProcessTargets() {
  TRunContext& run = *run_;
  run.step = 400;
  run.Report();
  run.Report("Processing target files and folders...");
  for (uint16_t target = 1; target <= kTargetCount; ++target) {
    run.step = 410;
    if (!run.Pump()) return TRunOutcome::Aborted;
    if (!wizard_.Targets[target].Checked) continue;
    run.step = 420;
    Select_Target(wizard_, target);
    SyncTargetDirectives(run);
    run.Report();
    run.Report("Processing target " + std::string(TargetInfo(target).Name) + "...");
    if (!Process_Target(run, target)) return Interrupted();
  }
  return TRunOutcome::Finished;
}

void TCreationRun::Finish(bool save_report) {
  TRunContext& run = *run_;
  run.step = 900;
  // The writer does the listener's spare work: it ends with the run, as the listener may.
  run.writer.reset();
  try {
    for (const std::string& line : StatisticsBlock(run.counters)) run.Report(line);
    if (save_report) run.report.SaveAs(ReportFile(wizard_));
  } catch (const std::exception& error) {
    platform::DebugLine(platform::ExceptionLine(kRoutine, 900, error.what()));
  }
  run.processor.reset();
}

}  // namespace tsaw::creation
