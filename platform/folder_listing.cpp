#include "platform/folder_listing.h"

#include <algorithm>

namespace tsaw::platform {
namespace fs = std::filesystem;

std::vector<TFolderEntry> ListFolder(const fs::path& folder, std::error_code& error) {
  std::vector<TFolderEntry> entries;
  error.clear();
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    std::string name = it->path().filename().string();
    if (name.empty() || name[0] == '.') continue;
    std::error_code status_error;
    entries.push_back({std::move(name), it->symlink_status(status_error)});
  }
  std::sort(entries.begin(), entries.end(),
            [](const TFolderEntry& a, const TFolderEntry& b) { return a.Name < b.Name; });
  return entries;
}

}  // namespace tsaw::platform
