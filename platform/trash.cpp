#include "platform/trash.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <optional>

#include "platform/debug_log.h"
#include "platform/xdg_folders.h"

namespace tsaw::platform {
namespace fs = std::filesystem;
namespace {

// Where one trash keeps its files, and how the Path= line names the original.
struct TrashPlace {
  fs::path root;       // holds files/ and info/
  fs::path relative_to;  // empty: Path= is absolute; else Path= is relative to this top dir
};

std::string UrlEncode(const std::string& path) {
  static const char kHex[] = "0123456789ABCDEF";
  std::string out;
  for (const unsigned char c : path) {
    if (std::isalnum(c) || c == '/' || c == '-' || c == '.' || c == '_' || c == '~') {
      out += static_cast<char>(c);
    } else {
      out += '%';
      out += kHex[c >> 4];
      out += kHex[c & 15];
    }
  }
  return out;
}

std::string Now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local);
  return text;
}

std::optional<dev_t> DeviceOf(const fs::path& path) {
  struct stat st {};
  if (lstat(path.c_str(), &st) != 0) return std::nullopt;
  return st.st_dev;
}

std::optional<fs::path> HomeTrash() {
  if (auto data_home = XdgDataHome()) return *data_home / "Trash";
  return std::nullopt;
}

// Creates `root`/files and `root`/info (owner-only) when missing.
bool PrepareTrash(const fs::path& root) {
  std::error_code ec;
  fs::create_directories(root / "files", ec);
  if (ec) return false;
  fs::create_directories(root / "info", ec);
  if (ec) return false;
  chmod(root.c_str(), 0700);
  return fs::is_directory(root / "files") && fs::is_directory(root / "info");
}

// The mount point of the file system that holds `path`.
fs::path TopDirOf(const fs::path& path, dev_t device) {
  fs::path top = path;
  while (top.has_parent_path() && top.parent_path() != top) {
    const auto parent_device = DeviceOf(top.parent_path());
    if (!parent_device || *parent_device != device) break;
    top = top.parent_path();
  }
  return top;
}

// "$topdir/.Trash/$uid" when ".Trash" is a real folder with the sticky bit, else
// "$topdir/.Trash-$uid" (created owner-only, and refused unless it is ours and no link).
std::optional<fs::path> TopDirTrash(const fs::path& top) {
  const std::string uid = std::to_string(getuid());
  struct stat st {};
  const fs::path shared = top / ".Trash";
  if (lstat(shared.c_str(), &st) == 0 && S_ISDIR(st.st_mode) && (st.st_mode & S_ISVTX)) {
    if (PrepareTrash(shared / uid)) return shared / uid;
  }
  const fs::path own = top / (".Trash-" + uid);
  mkdir(own.c_str(), 0700);
  if (lstat(own.c_str(), &st) != 0 || !S_ISDIR(st.st_mode) || st.st_uid != getuid()) {
    return std::nullopt;
  }
  if (!PrepareTrash(own)) return std::nullopt;
  return own;
}

std::optional<TrashPlace> ChooseTrash(const fs::path& folder, std::string& why) {
  const auto device = DeviceOf(folder);
  if (!device) {
    why = std::strerror(errno);
    return std::nullopt;
  }
  const auto home = HomeTrash();
  if (home && PrepareTrash(*home) && DeviceOf(*home) == device) return TrashPlace{*home, {}};
  const fs::path top = TopDirOf(folder, *device);
  if (const auto trash = TopDirTrash(top)) return TrashPlace{*trash, top};
  why = "no trash folder on its file system (tried the home trash and " + top.string() +
        "/.Trash-" + std::to_string(getuid()) + ")";
  return std::nullopt;
}

// Reserves a unique name in `place` by creating its .trashinfo file exclusively.
std::optional<std::string> ReserveName(const TrashPlace& place, const fs::path& folder) {
  const std::string base = folder.filename().string();
  const std::string original = place.relative_to.empty()
                                   ? folder.string()
                                   : folder.lexically_relative(place.relative_to).string();
  const std::string info = TrashInfoText(original, Now());
  for (int i = 1; i < 10000; ++i) {
    const std::string name = i == 1 ? base : base + "." + std::to_string(i);
    if (fs::exists(fs::symlink_status(place.root / "files" / name))) continue;
    const fs::path info_path = place.root / "info" / (name + ".trashinfo");
    const int fd = open(info_path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
    if (fd < 0) {
      if (errno == EEXIST) continue;
      return std::nullopt;
    }
    const bool written = write(fd, info.data(), info.size()) == static_cast<ssize_t>(info.size());
    close(fd);
    if (written) return name;
    unlink(info_path.c_str());
    return std::nullopt;
  }
  return std::nullopt;
}

class UserTrash : public Trash {
 public:
  bool MoveToTrash(const fs::path& given, std::string& error) override {
    const fs::path folder = fs::absolute(given).lexically_normal();
    const fs::path clean = folder.filename().empty() ? folder.parent_path() : folder;
    const std::string prefix = "Cannot move '" + clean.string() + "' to the trash: ";
    std::string why;
    const auto place = ChooseTrash(clean, why);
    if (!place) {
      error = prefix + why;
      return false;
    }
    const auto name = ReserveName(*place, clean);
    if (!name) {
      error = prefix + "cannot write its entry in " + (place->root / "info").string();
      return false;
    }
    const fs::path target = place->root / "files" / *name;
    if (rename(clean.c_str(), target.c_str()) != 0) {
      error = prefix + std::strerror(errno);
      unlink((place->root / "info" / (*name + ".trashinfo")).c_str());
      return false;
    }
    DebugLine("Trash: moved '" + clean.string() + "' to '" + target.string() + "'");
    return true;
  }
};

}  // namespace

std::string TrashInfoText(const std::string& original, const std::string& deletion_date) {
  return "[Trash Info]\nPath=" + UrlEncode(original) + "\nDeletionDate=" + deletion_date + "\n";
}

std::unique_ptr<Trash> MakeUserTrash() { return std::make_unique<UserTrash>(); }

}  // namespace tsaw::platform
