#include "generations/record.h"

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <vector>

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
  // Every path below begins with the folder's, so the relative one is what follows it; and one
  // stat gives both size and change time.
  const size_t prefix = (folder / "").native().size();
  std::error_code io;
  for (fs::recursive_directory_iterator it(folder, io), end; !io && it != end; it.increment(io)) {
    struct stat status {};
    if (!it->is_regular_file(io) || it->is_symlink(io) || ::stat(it->path().c_str(), &status) != 0) continue;
    const std::chrono::sys_time<std::chrono::nanoseconds> changed{std::chrono::seconds(status.st_mtim.tv_sec) +
                                                                   std::chrono::nanoseconds(status.st_mtim.tv_nsec)};
    lines.push_back(it->path().native().substr(prefix) + '\0' + std::to_string(status.st_size) + '\0' +
                    std::to_string(std::chrono::file_clock::from_sys(changed).time_since_epoch().count()) + '\n');
  }
  std::sort(lines.begin(), lines.end());
  std::string all;
  for (const std::string& line : lines) all += line;
  return ToHex(HashObject("blob", all));
}

TGenerationMeta MetaWithoutFingerprint(const TWizard& wizard, const std::string& kind) {
  TGenerationMeta meta{kind, {}, {}, {}};
  if (wizard.SelectedTemplate) meta.Template = wizard.SelectedTemplate->PartialPath;
  if (const auto model = ReadFileBytes(fs::path(wizard.JobsFolder) / kJobModelFileName)) {
    meta.Job = Fill_Job_Model(wizard, DecodeText(*model).Text);
  }
  return meta;
}

TGenerationMeta MetaOf(const TWizard& wizard, const std::string& kind) {
  TGenerationMeta meta = MetaWithoutFingerprint(wizard, kind);
  if (wizard.SelectedTemplate) meta.Fingerprint = TemplateFingerprint(wizard.SelectedTemplate->FolderPath);
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

}  // namespace tsaw::generations
