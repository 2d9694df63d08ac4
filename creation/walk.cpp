#include "creation/walk.h"

#include "creation/file_in_flight.h"
#include "creation/file_names.h"
#include "creation/file_processing.h"
#include "creation/run_directives.h"
#include "model/targets.h"
#include "model/variables.h"
#include "platform/debug_log.h"
#include "platform/folder_listing.h"
#include "platform/runtime_text.h"

namespace tsaw::creation {
namespace fs = std::filesystem;
namespace {

// Which catalogue folders a walk leaves to the other walk entries.
enum class TLevel { Root, Language, Inner };

// The folder's entries in name order, without those whose name begins with ".".
std::vector<platform::TFolderEntry> ListFolder(TRunContext& run, const fs::path& folder) {
  std::error_code ec;
  std::vector<platform::TFolderEntry> entries = platform::ListFolder(folder, ec);
  if (ec) run.Report("    ERROR: Folder could not be read: '" + folder.string() + "' (" + ec.message() + ")");
  return entries;
}

bool IsCatalogueFolder(const std::string& name, TLevel level) {
  if (level == TLevel::Root) {
    for (uint16_t language = 1; language <= kLanguageCount; ++language) {
      if (name == LanguageInfo(language).Folder) return true;
    }
  } else if (level == TLevel::Language) {
    for (uint16_t platform = 1; platform <= kPlatformCount; ++platform) {
      if (name == PlatformInfo(platform).Folder) return true;
    }
  }
  return false;
}

bool IsTplHelper(const std::string& name) { return platform::SameText(name, "TplHelper"); }

fs::path DestinationOf(const TRunContext& run, const fs::path& source) {
  return run.project_set / source.lexically_relative(run.template_folder);
}

// Creates `dest` and any missing folders above it, top down. Empty when it stands; otherwise the
// first folder that could not be made, with the system's reason.
std::string MakeFolders(const fs::path& dest) {
  std::vector<fs::path> missing;
  std::error_code ec;
  for (fs::path folder = dest; !folder.empty(); folder = folder.parent_path()) {
    if (fs::is_directory(folder, ec)) break;
    missing.push_back(folder);
    if (folder == folder.root_path()) break;
  }
  for (auto it = missing.rbegin(); it != missing.rend(); ++it) {
    std::error_code made;
    std::error_code probe;
    if (fs::create_directory(*it, made) || (!made && fs::is_directory(*it, probe))) continue;
    return "'" + it->string() + "' (" + (made ? made.message() : std::string("a file of that name exists")) + ")";
  }
  return {};
}

bool CreateFolder(TRunContext& run, const fs::path& dest) {
  run.Report("  Creating folder:  '" + dest.string() + "'...");
  const std::string failed = run.dry_run ? std::string() : MakeFolders(dest);
  if (failed.empty()) {
    ++run.counters.FoldersProcessed;
    return true;
  }
  ++run.counters.FoldersFailed;
  run.Report("    ERROR: Folder could not be created: '" + dest.string() + "'");
  run.stop_reason = "Folder could not be created: " + failed;
  return false;
}

// A "Host" folder, or a folder below "Plugins", inside a target tree.
void EnterPluginFolder(TRunContext& run, const fs::path& folder) {
  const std::string name = folder.filename().string();
  const std::string path = "/" + folder.lexically_relative(run.template_folder).generic_string() + "/";
  if (name != "Host" && path.find("/Plugins/") == std::string::npos) return;
  const int number = PluginNumberOfFolder(name);
  if (number >= 1 && number <= PluginCountOf(run.wizard)) MakePluginCurrent(run, number);
}

bool Scan_More(TRunContext& run, const fs::path& source, TLevel level, bool in_target);

bool WalkFolder(TRunContext& run, const fs::path& folder, bool in_target) {
  const bool skip = IsTplHelper(folder.filename().string());
  if (run.count_only) {
    ++(skip ? run.counters.FoldersSkipped : run.counters.FoldersScanned);
    run.ShowCounters();
    return skip || Scan_More(run, folder, TLevel::Inner, in_target);
  }
  if (!SettleFileInFlight(run)) return false;
  run.Report("  Folder '" + folder.string() + "' - Skip? " + YesNo(skip) + " ");
  if (skip) return true;
  if (!CreateFolder(run, DestinationOf(run, folder))) return false;
  run.ShowCounters();
  if (in_target) EnterPluginFolder(run, folder);
  return Scan_More(run, folder, TLevel::Inner, in_target);
}

// `dest_folder` is where the files of `file`'s folder go, found at the first of them.
bool WalkFile(TRunContext& run, const fs::path& file, bool is_link, std::optional<TDestFolder>& dest_folder) {
  const bool skip = SkippedFile(file.filename().string());
  if (run.count_only) {
    ++run.counters.FilesScanned;
    if (skip) ++run.counters.FilesSkipped;
    run.ShowCounters();
    return run.Pump();
  }
  run.Report("    File '" + file.string() + "' - Skip? " + YesNo(skip) + " ");
  run.AdvanceGauge();
  if (run.aborted) return false;
  if (!skip) {
    if (!dest_folder) dest_folder = DestFolderOf(run, DestinationOf(run, file.parent_path()));
    const TFileOutcome outcome = Process_File(run, file, is_link, *dest_folder);
    // A file handed to the background writer is counted when it is settled.
    if (outcome == TFileOutcome::InFlight) return true;
    return SettleFileInFlight(run) && CountFile(run, outcome);
  }
  if (!SettleFileInFlight(run)) return false;
  run.ShowCounters();
  return run.Pump();
}

bool WalkEntry(TRunContext& run, const fs::path& source, const platform::TFolderEntry& entry, TLevel level,
               bool in_target, std::optional<TDestFolder>& dest_folder) {
  const fs::path path = source / entry.Name;
  // A linked folder is not entered (a link to a parent would never end); it fails as a file.
  const bool folder = fs::is_directory(entry.Status);
  if (folder && IsCatalogueFolder(entry.Name, level)) return true;
  return folder ? WalkFolder(run, path, in_target) : WalkFile(run, path, fs::is_symlink(entry.Status), dest_folder);
}

bool Scan_More(TRunContext& run, const fs::path& source, TLevel level, bool in_target) {
  std::optional<TDestFolder> dest_folder;
  for (const platform::TFolderEntry& entry : ListFolder(run, source)) {
    if (run.aborted) return false;
    try {
      if (!WalkEntry(run, source, entry, level, in_target, dest_folder)) return false;
    } catch (...) {
      // The files in flight ended before the error came; if the run stopped at one of them,
      // the error never happened.
      if (!SettleFileInFlight(run)) return false;
      throw;
    }
  }
  return SettleFileInFlight(run) && !run.aborted;
}

// Process_Language and Process_Target: one catalogue folder of the template.
bool ProcessCatalogueFolder(TRunContext& run, const fs::path& relative, TLevel level, bool in_target) {
  if (!run.Pump()) return false;
  const fs::path source = run.template_folder / relative;
  const bool exists = fs::is_directory(source);
  if (run.count_only) {
    ++run.counters.FoldersScanned;
  } else if (exists) {
    if (!CreateFolder(run, DestinationOf(run, source))) return false;
  } else {
    ++run.counters.FoldersFailed;
    run.Report("    ERROR: Source Folder not available: '" + source.string() + "'");
  }
  run.ShowCounters();
  if (!exists) return true;
  return Scan_More(run, source, level, in_target);
}

// Whoever the run tells of its files may refuse that the Project Set folder be made anew.
bool MayMakeAnew(TRunContext& run) {
  const std::string refusal = run.written ? run.written->MakingAnew(run.project_set) : std::string();
  if (refusal.empty()) return true;
  run.Report("    ERROR: " + refusal);
  run.stop_reason = refusal + "; nothing was changed.";
  return false;
}

}  // namespace

void MakePluginCurrent(TRunContext& run, int number) {
  TWizard& wizard = run.wizard;
  wizard.PluginIndex = static_cast<uint16_t>(number);
  run.Report("  Plugin Index set to " + std::to_string(number) + ".");
  Set_Plugin_Index_Var(wizard, number);
  if (run.processor) {
    RenameRunDirective(wizard, run.processor->Defines, wizard.RunDirectives.PluginIndex,
                       "PluginIndex_" + std::to_string(number));
  }
}

bool Process_Root(TRunContext& run) {
  platform::ScopedRoutine routine("TSaW_frmCreation.TfrmCreation.Process_Root");
  if (!run.Pump()) return false;
  if (run.count_only) {
    ++run.counters.FoldersScanned;
    run.Report("  Folder '" + run.template_folder.string() + "' will be copied to '" +
               run.project_set.string() + "'");
  } else {
    if (!run.dry_run && !MayMakeAnew(run)) return false;
    if (fs::exists(fs::symlink_status(run.project_set)) && run.dry_run) {
      run.Report("  Folder '" + run.project_set.string() + "' would go to the trash.");
      run.moved_to_trash = run.project_set;
    } else if (fs::exists(fs::symlink_status(run.project_set))) {
      const std::string task = run.task;
      run.SetTask("clearing project set folder and all subfoders...");
      run.Pump();
      run.Report("  Deltreeing folder '" + run.project_set.string() + "' to Recycle Byn...");
      std::string error;
      const bool trashed = run.trash.MoveToTrash(run.project_set, error);
      run.SetTask(task);
      if (!trashed) {
        run.Report("    ERROR: " + error);
        run.stop_reason = error + "; nothing was deleted.";
        return false;
      }
      run.moved_to_trash = run.project_set;
    }
    if (!CreateFolder(run, run.project_set)) return false;
    if (run.written && !run.dry_run) run.written->Started(run.project_set);
  }
  run.ShowCounters();
  if (!run.Pump()) return false;
  if (!run.count_only) run.Report("  Scanning main folder '" + run.template_folder.string() + "'...");
  return Scan_More(run, run.template_folder, TLevel::Root, false);
}

bool Process_Language(TRunContext& run, uint16_t language) {
  platform::ScopedRoutine routine("TSaW_frmCreation.TfrmCreation.Process_Language");
  return ProcessCatalogueFolder(run, std::string(LanguageInfo(language).Folder), TLevel::Language, false);
}

bool Process_Target(TRunContext& run, uint16_t target) {
  platform::ScopedRoutine routine("TSaW_frmCreation.TfrmCreation.Process_Target");
  return ProcessCatalogueFolder(run, std::string(TargetInfo(target).Folder), TLevel::Inner, true);
}

}  // namespace tsaw::creation
