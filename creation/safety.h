#pragma once
// The checks that keep a creation run inside its Project Set folder.

#include <filesystem>
#include <functional>
#include <string>

namespace tsaw::creation {

// Folders a Project Set folder must never be, or hold.
struct TProtectedFolders {
  std::filesystem::path Home;
  std::filesystem::path WizardFolder;
  std::filesystem::path TemplateFolder;
};

// Empty when `project_set` may be cleared and written: it lies strictly inside `base_folder`
// (links resolved), its name does not begin with '.', it is not and does not hold any protected
// folder, it does not lie inside the template, and, when it exists, it is owned by the user and
// lies outside the operating system's folders (/etc, /usr, /var, /lib*, ...). Otherwise the
// message saying what is wrong, naming the folders.
std::string CheckProjectSetFolder(const std::filesystem::path& project_set,
                                  const std::filesystem::path& base_folder,
                                  const TProtectedFolders& protect);

// Empty unless the raw Base Folder value `raw` begins with a reference ("#Path.Delphi#/Projects")
// that `expand` turns into nothing, which would make the rest an absolute path from the root; then
// the message naming the value.
std::string CheckBaseFolderValue(const std::string& raw, const std::function<std::string(const std::string&)>& expand);

// True when `path` lies strictly below `folder`, compared after resolving links and "..".
bool StrictlyInside(const std::filesystem::path& path, const std::filesystem::path& folder);

}  // namespace tsaw::creation
