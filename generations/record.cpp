#include "generations/record.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

namespace {

// "path\0size\0change time\n" of a regular file, the time in nanoseconds of the file clock.
std::string FingerprintLine(const std::string& path, const struct stat& status) {
  const std::chrono::sys_time<std::chrono::nanoseconds> changed{std::chrono::seconds(status.st_mtim.tv_sec) +
                                                                 std::chrono::nanoseconds(status.st_mtim.tv_nsec)};
  return path + '\0' + std::to_string(status.st_size) + '\0' +
         std::to_string(std::chrono::file_clock::from_sys(changed).time_since_epoch().count()) + '\n';
}

// Adds the line of every regular file below the open folder `fd` (at `relative` below the
// template), and closes it. Links are not followed; a folder that cannot be read adds nothing.
// Each name is looked up in its open folder, sparing the system a walk along its whole path.
void AddFingerprintLines(int fd, const std::string& relative, std::vector<std::string>& lines) {
  DIR* folder = ::fdopendir(fd);
  if (folder == nullptr) {
    ::close(fd);
    return;
  }
  while (const dirent* entry = ::readdir(folder)) {
    const std::string name = entry->d_name;
    if (name == "." || name == ".." || entry->d_type == DT_LNK) continue;
    struct stat status {};
    if (::fstatat(::dirfd(folder), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) continue;
    if (S_ISREG(status.st_mode)) lines.push_back(FingerprintLine(relative + name, status));
    if (!S_ISDIR(status.st_mode)) continue;
    const int inner = ::openat(::dirfd(folder), entry->d_name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (inner >= 0) AddFingerprintLines(inner, relative + name + '/', lines);
  }
  ::closedir(folder);
}

}  // namespace

std::string TemplateFingerprint(const fs::path& folder) {
  std::vector<std::string> lines;
  const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd >= 0) AddFingerprintLines(fd, "", lines);
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
