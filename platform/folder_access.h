#pragma once
// Whether a folder can take new files, asked before work that would otherwise fail half-way.

#include <filesystem>
#include <string>

namespace tsaw::platform {

// Empty when `folder` exists, or can be made below its nearest existing parent, and files can be
// created in it; otherwise why not, naming the path that stands in the way ("'/a/b' is not a
// folder", "'/a' cannot be written: Permission denied").
std::string WhyFolderCannotTakeFiles(const std::filesystem::path& folder);

}  // namespace tsaw::platform
