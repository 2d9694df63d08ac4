#include "platform/folder_access.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace tsaw::platform {
namespace fs = std::filesystem;

std::string WhyFolderCannotTakeFiles(const fs::path& folder) {
  std::error_code ec;
  fs::path existing = fs::absolute(folder, ec).lexically_normal();
  if (existing.filename().empty() && existing != existing.root_path()) existing = existing.parent_path();
  while (!fs::exists(existing, ec) && existing != existing.root_path()) existing = existing.parent_path();
  if (!fs::is_directory(existing, ec)) return "'" + existing.string() + "' is not a folder";
  if (access(existing.c_str(), W_OK | X_OK) != 0) {
    return "'" + existing.string() + "' cannot be written: " + std::strerror(errno);
  }
  return {};
}

}  // namespace tsaw::platform
