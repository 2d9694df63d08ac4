#include "platform/machine_folders.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "platform/runtime_text.h"
#include "platform/wine_registry.h"
#include "platform/xdg_folders.h"

namespace tsaw::platform {
namespace fs = std::filesystem;
namespace {

std::string EnvironmentText(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::string FrameworkRootOf(const MachineEnvironment& environment, std::string root_override) {
  if (!root_override.empty()) return root_override;
  if (!environment.TesseraRoot.empty()) return environment.TesseraRoot;
  const auto data = XdgDataHomeFrom(environment.XdgDataHome, environment.Home);
  return data ? (*data / "tessera").string() : "";
}

std::string WinePrefixOf(const MachineEnvironment& environment) {
  fs::path prefix;
  if (!environment.WinePrefix.empty()) {
    prefix = environment.WinePrefix;
  } else if (!environment.Home.empty()) {
    prefix = fs::path(environment.Home) / ".wine";
  }
  std::error_code ec;
  return !prefix.empty() && fs::is_directory(prefix, ec) ? prefix.string() : "";
}

// The local folder of drive `letter` (lower case): its dosdevices link, else drive_c for C:.
fs::path DriveRoot(const fs::path& prefix, char letter) {
  const fs::path device = prefix / "dosdevices" / std::string{letter, ':'};
  std::error_code ec;
  if (fs::is_symlink(device, ec)) {
    const fs::path target = fs::read_symlink(device, ec);
    if (ec) return {};
    return target.is_absolute() ? target : (device.parent_path() / target).lexically_normal();
  }
  if (fs::is_directory(device, ec)) return device;
  return letter == 'c' ? prefix / "drive_c" : fs::path();
}

// `folder` / `name`, taking the spelling on disk when only a different letter case exists.
fs::path ChildIgnoringCase(const fs::path& folder, const std::string& name) {
  std::error_code ec;
  if (fs::exists(folder / name, ec)) return folder / name;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    const std::string entry = it->path().filename().string();
    if (SameText(entry, name)) return folder / entry;
  }
  return folder / name;
}

std::vector<std::string> Components(std::string_view path) {
  std::vector<std::string> parts;
  size_t start = 0;
  while (start <= path.size()) {
    const size_t end = std::min(path.find_first_of("\\/", start), path.size());
    if (end > start) parts.emplace_back(path.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

std::string ExistingFolder(const std::string& path) {
  std::error_code ec;
  return !path.empty() && fs::is_directory(path, ec) ? path : "";
}

}  // namespace

MachineEnvironment MachineEnvironment::FromProcess() {
  return {EnvironmentText("WINEPREFIX"), EnvironmentText("TESSERA_ROOT"), EnvironmentText("XDG_DATA_HOME"),
          EnvironmentText("HOME")};
}

WineMachineFolders::WineMachineFolders(const MachineEnvironment& environment, std::string root_override)
    : root_(FrameworkRootOf(environment, std::move(root_override))), prefix_(WinePrefixOf(environment)) {}

std::string WineMachineFolders::MachineRegistryString(std::string_view key, std::string_view name) const {
  if (prefix_.empty()) return "";
  std::string plain(key);
  while (!plain.empty() && plain.front() == '\\') plain.erase(0, 1);
  std::vector<std::string> keys;
  const std::string software = "software\\";
  if (SameText(std::string_view(plain).substr(0, software.size()), software)) {
    keys.push_back("Software\\Wow6432Node\\" + plain.substr(software.size()));
  }
  keys.push_back(plain);
  return ReadWineRegistryString(fs::path(prefix_) / "system.reg", keys, name).value_or("");
}

std::string WineMachineFolders::LocalPath(std::string_view windows_path) const {
  const bool has_drive = windows_path.size() >= 2 && windows_path[1] == ':' &&
                         std::isalpha(static_cast<unsigned char>(windows_path[0]));
  if (prefix_.empty() || !has_drive) return "";
  fs::path local = DriveRoot(prefix_, LowerAscii(windows_path[0]));
  if (local.empty()) return "";
  for (const std::string& part : Components(windows_path.substr(2))) local = ChildIgnoringCase(local, part);
  return local.string();
}

std::string WineMachineFolders::WindowsFolder() const { return ExistingFolder(LocalPath("C:\\windows")); }

std::string WineMachineFolders::SystemFolder() const {
  return ExistingFolder(LocalPath("C:\\windows\\system32"));
}

}  // namespace tsaw::platform
