#include "creation/safety.h"

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
  return {};
}

}  // namespace tsaw::creation
