#include "platform/xdg_folders.h"

#include <cstdlib>

namespace tsaw::platform {
namespace fs = std::filesystem;
namespace {

std::optional<fs::path> AbsoluteFromEnvironment(const char* name) {
  const char* value = std::getenv(name);
  if (!value || *value != '/') return std::nullopt;
  return fs::path(value);
}

std::optional<fs::path> Folder(const char* variable, const char* below_home) {
  if (auto folder = AbsoluteFromEnvironment(variable)) return folder;
  if (auto home = AbsoluteFromEnvironment("HOME")) return *home / below_home;
  return std::nullopt;
}

}  // namespace

std::optional<fs::path> XdgDataHome() { return Folder("XDG_DATA_HOME", ".local/share"); }
std::optional<fs::path> XdgStateHome() { return Folder("XDG_STATE_HOME", ".local/state"); }
std::optional<fs::path> XdgConfigHome() { return Folder("XDG_CONFIG_HOME", ".config"); }

}  // namespace tsaw::platform
