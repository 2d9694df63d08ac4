#pragma once
// The checks that keep a creation run inside its Project Set folder.

#include <filesystem>
#include <string>

namespace tsaw::creation {

// Folders a Project Set folder must never be, or hold.
struct TProtectedFolders {
  std::filesystem::path Home;
  std::filesystem::path WizardFolder;
  std::filesystem::path TemplateFolder;
};

// Empty when `project_set` may be cleared and written: it lies strictly inside `base_folder`
// (links resolved), is not and does not hold any protected folder, and does not lie inside the
// template. Otherwise the message saying what is wrong, naming the folders.
std::string CheckProjectSetFolder(const std::filesystem::path& project_set,
                                  const std::filesystem::path& base_folder,
                                  const TProtectedFolders& protect);

// True when `path` lies strictly below `folder`, compared after resolving links and "..".
bool StrictlyInside(const std::filesystem::path& path, const std::filesystem::path& folder);

}  // namespace tsaw::creation
