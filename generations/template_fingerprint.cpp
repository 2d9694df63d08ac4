#include "generations/template_fingerprint.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

#include "generations/object_pack.h"

namespace tsaw::generations {
namespace {

// "path\0size\0change time\n" of a regular file, the time in nanoseconds of the file clock.
std::string FingerprintLine(const std::string& path, const struct stat& status) {
  const std::chrono::sys_time<std::chrono::nanoseconds> changed{std::chrono::seconds(status.st_mtim.tv_sec) +
                                                                 std::chrono::nanoseconds(status.st_mtim.tv_nsec)};
  return path + '\0' + std::to_string(status.st_size) + '\0' +
         std::to_string(std::chrono::file_clock::from_sys(changed).time_since_epoch().count()) + '\n';
}

}  // namespace

TTemplateFingerprint::TTemplateFingerprint(const std::filesystem::path& folder) {
  Enter(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC), "");
}

TTemplateFingerprint::~TTemplateFingerprint() {
  for (const TOpenFolder& folder : open_) ::closedir(folder.Handle);
}

// Takes ownership of `fd` (which may be -1).
void TTemplateFingerprint::Enter(int fd, std::string relative) {
  if (fd < 0) return;
  DIR* handle = ::fdopendir(fd);
  if (handle == nullptr) {
    ::close(fd);
    return;
  }
  open_.push_back({handle, std::move(relative)});
}

// Each name is looked up in its open folder, sparing the system a walk along its whole path.
bool TTemplateFingerprint::Step(size_t entries) {
  for (; entries > 0 && !open_.empty(); --entries) {
    const TOpenFolder& folder = open_.back();
    const dirent* entry = ::readdir(folder.Handle);
    if (entry == nullptr) {
      ::closedir(folder.Handle);
      open_.pop_back();
      continue;
    }
    const std::string_view name = entry->d_name;
    if (name == "." || name == ".." || entry->d_type == DT_LNK) continue;
    struct stat status {};
    if (::fstatat(::dirfd(folder.Handle), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) continue;
    if (S_ISREG(status.st_mode)) lines_.push_back(FingerprintLine(folder.Relative + entry->d_name, status));
    if (!S_ISDIR(status.st_mode)) continue;
    const int inner = ::openat(::dirfd(folder.Handle), entry->d_name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    Enter(inner, folder.Relative + entry->d_name + '/');  // `folder` is not used after this
  }
  return !open_.empty();
}

std::string TTemplateFingerprint::Digest() {
  while (Step(1024)) {
  }
  std::sort(lines_.begin(), lines_.end());
  std::string all;
  for (const std::string& line : lines_) all += line;
  return ToHex(HashObject("blob", all));
}

std::string TemplateFingerprint(const std::filesystem::path& folder) { return TTemplateFingerprint(folder).Digest(); }

}  // namespace tsaw::generations
