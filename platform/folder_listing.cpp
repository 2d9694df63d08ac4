#include "platform/folder_listing.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace tsaw::platform {
namespace fs = std::filesystem;
namespace {

fs::file_type TypeOfMode(mode_t mode) {
  if (S_ISREG(mode)) return fs::file_type::regular;
  if (S_ISDIR(mode)) return fs::file_type::directory;
  if (S_ISLNK(mode)) return fs::file_type::symlink;
  if (S_ISFIFO(mode)) return fs::file_type::fifo;
  if (S_ISSOCK(mode)) return fs::file_type::socket;
  if (S_ISBLK(mode)) return fs::file_type::block;
  if (S_ISCHR(mode)) return fs::file_type::character;
  return fs::file_type::unknown;
}

// The entry's type as the folder itself records it, so that most entries cost no status call of
// their own; a file system that records none is asked for the entry's status.
fs::file_type TypeOfEntry(DIR* folder, const dirent& entry) {
  switch (entry.d_type) {
    case DT_REG: return fs::file_type::regular;
    case DT_DIR: return fs::file_type::directory;
    case DT_LNK: return fs::file_type::symlink;
    case DT_FIFO: return fs::file_type::fifo;
    case DT_SOCK: return fs::file_type::socket;
    case DT_BLK: return fs::file_type::block;
    case DT_CHR: return fs::file_type::character;
    default: break;
  }
  struct stat status {};
  if (::fstatat(::dirfd(folder), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) return fs::file_type::not_found;
  return TypeOfMode(status.st_mode);
}

}  // namespace

std::vector<TFolderEntry> ListFolder(const fs::path& folder, std::error_code& error) {
  std::vector<TFolderEntry> entries;
  error.clear();
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(folder.c_str()), ::closedir);
  if (!listing) {
    error = std::error_code(errno, std::generic_category());
    return entries;
  }
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(listing.get());
    if (entry == nullptr) {
      if (errno != 0) error = std::error_code(errno, std::generic_category());
      break;
    }
    if (entry->d_name[0] == '.') continue;
    entries.push_back({entry->d_name, fs::file_status(TypeOfEntry(listing.get(), *entry))});
  }
  std::sort(entries.begin(), entries.end(),
            [](const TFolderEntry& a, const TFolderEntry& b) { return a.Name < b.Name; });
  return entries;
}

}  // namespace tsaw::platform
