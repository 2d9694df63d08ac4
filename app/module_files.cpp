#include "app/module_files.h"

#include <system_error>

namespace tsaw::app {
namespace fs = std::filesystem;

std::vector<fs::path> ModuleCandidates(std::string_view file) {
  std::error_code error;
  const fs::path exe = fs::read_symlink("/proc/self/exe", error);
  if (error) return {};
  const fs::path dir = exe.parent_path();
  return {dir / file, (dir / TSAW_MODULE_DIR / file).lexically_normal()};
}

fs::path FindModule(std::string_view what, std::string_view file, std::ostream& err) {
  const std::vector<fs::path> candidates = ModuleCandidates(file);
  std::error_code ignored;
  for (const fs::path& candidate : candidates) {
    if (fs::exists(candidate, ignored)) return candidate;
  }
  err << "tsaw: " << what << ' ' << file << " was not found";
  for (const fs::path& candidate : candidates) {
    err << (&candidate == &candidates.front() ? " (looked for " : ", ") << candidate;
  }
  err << (candidates.empty() ? "" : ")") << "; the window cannot be opened.\n";
  return {};
}

}  // namespace tsaw::app
