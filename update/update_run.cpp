#include "update/update_run.h"

#include "creation/report.h"
#include "generations/record.h"
#include "generations/snapshot.h"
#include "update/apply.h"
#include "update/update_report.h"

namespace tsaw::update {
namespace fs = std::filesystem;
namespace {

// Removes the staging folder however the update ends.
struct StagingGuard {
  fs::path Folder;
  ~StagingGuard() {
    std::error_code io;
    if (!Folder.empty()) fs::remove_all(Folder, io);
  }
};

TUpdateResult Refusal(const fs::path& project_set, std::string message) {
  return {TUpdateOutcome::Refused, std::move(message), {}, project_set, creation::TRunOutcome::Finished};
}

std::string NotRecorded(const fs::path& project_set) {
  return "no generation of '" + project_set.string() + "' is recorded (it was made elsewhere, with --no-record or by a " +
         "run that did not finish, or the store was removed), so your edits cannot be told from the template's output; nothing was " +
         "changed. Make it anew with `tsaw create` (the folder goes to the trash); later updates keep your edits";
}

// The store of `project_set` when a generation of it is recorded; otherwise null with `refusal`
// saying why.
std::unique_ptr<generations::TGenerationStore> RecordedStore(const fs::path& project_set, std::string& refusal) {
  const std::optional<fs::path> state = generations::StateFolder();
  if (!state) {
    refusal = "no state folder: neither $XDG_STATE_HOME nor $HOME is set";
    return nullptr;
  }
  auto store = generations::TGenerationStore::Open(*state, project_set, false, refusal);
  if (store && store->HasBase()) return store;
  const bool locked = !store && fs::exists(generations::TGenerationStore::FolderOf(*state, project_set) / "objects");
  if (!locked) refusal = NotRecorded(project_set);
  return nullptr;
}

TUpdateResult Update(TWizard& wizard, creation::TCreationRun& run, bool dry_run) {
  const fs::path project_set = creation::ProjectSetFolderOf(wizard);
  std::string error;
  auto store = RecordedStore(project_set, error);
  if (!store) return Refusal(project_set, error);
  if (!fs::is_directory(project_set)) {
    return Refusal(project_set, "'" + project_set.string() + "' does not exist; make it with `tsaw create`");
  }
  StagingGuard staging{StagingFolderOf(project_set)};
  std::error_code io;
  fs::remove_all(staging.Folder, io);
  run.WriteInto(staging.Folder);
  const creation::TRunOutcome made = run.Start();
  if (made == creation::TRunOutcome::Aborted) return {TUpdateOutcome::Failed, "aborted", {}, project_set, made};
  if (made == creation::TRunOutcome::Stopped) return {TUpdateOutcome::Refused, run.StopReason(), {}, project_set, made};
  if (made != creation::TRunOutcome::Finished) return {TUpdateOutcome::Failed, run.StopReason(), {}, project_set, made};

  generations::TObjectPack pack = store->NewPack();
  const generations::TFiles theirs = generations::SnapshotFolder(staging.Folder, pack);
  const generations::TFiles base = store->Files(store->Generations().back());
  const auto read_base = [&store](const generations::TObjectId& id) { return store->Read(id); };
  TUpdateResult result{TUpdateOutcome::Finished, {}, PlanUpdate({base, read_base, project_set, theirs, staging.Folder}),
                       project_set, made};
  if (!dry_run &&
      !ApplyUpdate(*store, {result.Plan, project_set, staging.Folder, theirs, pack,
                            generations::MetaOf(wizard, "update")}, error)) {
    return {TUpdateOutcome::Failed, error, std::move(result.Plan), project_set, made};
  }
  std::vector<std::string> update_lines = UpdateSection(result.Plan, dry_run);
  for (std::string& line : UpdateStatistics(result.Plan)) update_lines.push_back(std::move(line));
  run.ReportLines().SaveAs(creation::ReportFile(wizard), update_lines);
  if (result.Plan.Count(TFate::Conflict) > 0) result.Outcome = TUpdateOutcome::Conflicts;
  return result;
}

}  // namespace

fs::path StagingFolderOf(const fs::path& project_set) {
  return project_set.parent_path() / ("." + project_set.filename().string() + ".tsaw-update");
}

TUpdateResult RunUpdate(TWizard& wizard, creation::TCreationRun& run, bool dry_run) {
  try {
    return Update(wizard, run, dry_run);
  } catch (const std::exception& failure) {
    return {TUpdateOutcome::Failed, failure.what(), {}, creation::ProjectSetFolderOf(wizard),
            creation::TRunOutcome::Finished};
  }
}

}  // namespace tsaw::update
