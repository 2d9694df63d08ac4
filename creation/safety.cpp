#include "creation/safety.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iterator>

namespace tsaw::creation {
namespace fs = std::filesystem;
namespace {

fs::path Resolved(const fs::path& path) {
  std::error_code ec;
  fs::path resolved = fs::weakly_canonical(fs::absolute(path), ec);
  if (ec) resolved = fs::absolute(path).lexically_normal();
  if (resolved.filename().empty() && resolved.has_parent_path() && resolved != resolved.root_path()) {
    resolved = resolved.parent_path();
  }
  return resolved;
}

// True when `inner` is `outer` or lies below it; both already resolved.
bool SameOrBelow(const fs::path& inner, const fs::path& outer) {
  const fs::path relative = inner.lexically_relative(outer);
  if (relative.empty()) return false;
  const auto first = *relative.begin();
  return first != "..";
}

// The operating system's own folders: an existing folder below one is never a Project Set.
bool InSystemHierarchy(const fs::path& resolved) {
  const fs::path relative = resolved.relative_path();
  if (relative.empty()) return true;
  const std::string top = relative.begin()->string();
  static const char* const kSystemFolders[] = {"etc", "usr", "var", "boot", "bin", "sbin", "opt",
                                               "srv", "proc", "sys", "dev", "run"};
  for (const char* folder : kSystemFolders) {
    if (top == folder) return true;
  }
  return top.rfind("lib", 0) == 0;
}

// Refusals that depend on what stands at the Project Set folder's place now.
std::string CheckExistingFolder(const fs::path& set, const std::string& where) {
  struct stat status {};
  if (::lstat(set.c_str(), &status) != 0) {
    if (errno == ENAMETOOLONG) return where + " cannot be used: " + std::strerror(errno) + ".";
    return {};
  }
  if (InSystemHierarchy(set)) return where + " lies in the operating system's own folders; it is not replaced.";
  if (status.st_uid != ::getuid()) return where + " is not owned by you; it is not replaced.";
  return {};
}

}  // namespace

bool StrictlyInside(const fs::path& path, const fs::path& folder) {
  const fs::path inner = Resolved(path);
  const fs::path outer = Resolved(folder);
  return SameOrBelow(inner, outer) && inner != outer;
}

std::string CheckProjectSetFolder(const fs::path& project_set, const fs::path& base_folder,
                                  const TProtectedFolders& protect) {
  const std::string where = "The Project Set folder '" + project_set.string() + "'";
  if (base_folder.empty()) return "The Base Folder (Output.BaseFolder) is empty.";
  if (!StrictlyInside(project_set, base_folder)) {
    return where + " does not lie inside the Base Folder '" + base_folder.string() +
           "' (check Product.Name).";
  }
  if (project_set.filename().string().starts_with(".")) {
    return where + " has a name that begins with '.' (check Product.Name).";
  }
  const fs::path set = Resolved(project_set);
  // A folder right below the root ("/usr", "/etc") is a system's, never a Project Set to replace.
  const fs::path below_root = set.relative_path();
  if (std::distance(below_root.begin(), below_root.end()) < 2) {
    return where + " lies directly below the root of the file system; choose a deeper Base Folder.";
  }
  const std::pair<const char*, const fs::path*> guarded[] = {
      {"the home folder", &protect.Home},
      {"the wizard folder", &protect.WizardFolder},
      {"the template", &protect.TemplateFolder}};
  for (const auto& [what, folder] : guarded) {
    if (!folder->empty() && SameOrBelow(Resolved(*folder), set)) {
      return where + " is or holds " + what + " '" + folder->string() + "'.";
    }
  }
  if (!protect.TemplateFolder.empty() && SameOrBelow(set, Resolved(protect.TemplateFolder))) {
    return where + " lies inside the template '" + protect.TemplateFolder.string() + "'.";
  }
  return CheckExistingFolder(set, where);
}

std::string CheckBaseFolderValue(const std::string& raw, const std::function<std::string(const std::string&)>& expand) {
  if (!raw.starts_with("#")) return {};
  const size_t close = raw.find('#', 1);
  if (close == std::string::npos) return {};
  const std::string reference = raw.substr(0, close + 1);
  if (!expand(reference).empty()) return {};
  return "The Base Folder '" + raw + "' begins with " + reference + ", which is empty on this machine.";
}

}  // namespace tsaw::creation
