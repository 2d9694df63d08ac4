#include "platform/xdg_folders.h"

#include <cstdlib>

namespace tsaw::platform {
namespace fs = std::filesystem;
namespace {

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

// The rule for every folder: the variable when it holds an absolute path, else the home folder's
// default when the home folder is absolute.
std::optional<fs::path> FolderFrom(std::string_view value, std::string_view home, const char* below_home) {
  if (value.starts_with('/')) return fs::path(value);
  if (home.starts_with('/')) return fs::path(home) / below_home;
  return std::nullopt;
}

}  // namespace

std::optional<fs::path> XdgDataHome() { return XdgDataHomeFrom(Environment("XDG_DATA_HOME"), Environment("HOME")); }
std::optional<fs::path> XdgStateHome() {
  return FolderFrom(Environment("XDG_STATE_HOME"), Environment("HOME"), ".local/state");
}
std::optional<fs::path> XdgConfigHome() {
  return FolderFrom(Environment("XDG_CONFIG_HOME"), Environment("HOME"), ".config");
}

std::optional<fs::path> XdgDataHomeFrom(std::string_view xdg_data_home, std::string_view home) {
  return FolderFrom(xdg_data_home, home, ".local/share");
}

}  // namespace tsaw::platform
