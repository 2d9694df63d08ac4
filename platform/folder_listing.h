#pragma once
// One folder's entries as the template walks want them: in name order, hidden names left out,
// each with the type of the entry itself (a link is a link, not what it points to).

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace tsaw::platform {

struct TFolderEntry {
  std::string Name;
  std::filesystem::file_status Status;  // the type only; links not followed
};

// The entries of `folder` whose names do not begin with ".", sorted by name (byte order). When
// the folder cannot be read, or reading stops half-way, `error` says why and the entries read so
// far are returned.
std::vector<TFolderEntry> ListFolder(const std::filesystem::path& folder, std::error_code& error);

}  // namespace tsaw::platform
