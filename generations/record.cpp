#include "generations/record.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <vector>

#include "generations/snapshot.h"
#include "jobs/job_writer.h"
#include "model/text_file.h"
#include "platform/xdg_folders.h"
#include "templates/template_info.h"

namespace tsaw::generations {
namespace fs = std::filesystem;

std::optional<fs::path> StateFolder() {
  const std::optional<fs::path> state = platform::XdgStateHome();
  if (!state) return std::nullopt;
  return *state / "tsaw";
}

std::string TemplateFingerprint(const fs::path& folder) {
  std::vector<std::string> lines;
  std::error_code io;
  for (fs::recursive_directory_iterator it(folder, io), end; !io && it != end; it.increment(io)) {
    if (!it->is_regular_file(io) || it->is_symlink(io)) continue;
    const auto changed = it->last_write_time(io).time_since_epoch();
    lines.push_back(it->path().lexically_relative(folder).generic_string() + '\0' +
                    std::to_string(it->file_size(io)) + '\0' +
                    std::to_string(std::chrono::duration_cast<std::chrono::nanoseconds>(changed).count()) + '\n');
  }
  std::sort(lines.begin(), lines.end());
  std::string all;
  for (const std::string& line : lines) all += line;
  return ToHex(HashObject("blob", all));
}

TGenerationMeta MetaOf(const TWizard& wizard, const std::string& kind) {
  TGenerationMeta meta{kind, {}, {}, {}};
  if (wizard.SelectedTemplate) {
    meta.Template = wizard.SelectedTemplate->PartialPath;
    meta.Fingerprint = TemplateFingerprint(wizard.SelectedTemplate->FolderPath);
  }
  if (const auto model = ReadFileBytes(fs::path(wizard.JobsFolder) / kJobModelFileName)) {
    meta.Job = Fill_Job_Model(wizard, DecodeText(*model).Text);
  }
  return meta;
}

bool HasRecordedGeneration(const fs::path& project_set) {
  const std::optional<fs::path> state = StateFolder();
  std::string error;
  auto store = state ? TGenerationStore::Open(*state, project_set, false, error) : nullptr;
  try {
    return store && !store->Generations().empty();
  } catch (const std::exception&) {
    return false;
  }
}

std::string RecordCreation(const TWizard& wizard, const fs::path& project_set) {
  const std::optional<fs::path> state = StateFolder();
  if (!state) return "no state folder: neither $XDG_STATE_HOME nor $HOME is set";
  std::string error;
  auto store = TGenerationStore::Open(*state, project_set, true, error);
  if (!store) return error;
  try {
    TObjectPack pack(store->Odb());
    const TFiles files = SnapshotFolder(project_set, pack);
    if (!store->AddGeneration(pack, files, MetaOf(wizard, "creation"), error) || !store->DropUndo(error)) return error;
  } catch (const std::exception& failure) {
    return failure.what();
  }
  return {};
}

}  // namespace tsaw::generations
