#include "model/folders.h"

#include <string_view>

#include "platform/debug_log.h"

namespace tsaw {
namespace {

std::string StripTrailing(std::string folder, char separator) {
  while (!folder.empty() && folder.back() == separator) folder.pop_back();
  return folder;
}

// Replaces each "\\" by "\" in one left-to-right pass.
std::string ReduceDoubledBackslashes(std::string_view text) {
  std::string reduced;
  reduced.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    reduced += text[i];
    if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == '\\') ++i;
  }
  return reduced;
}

// A folder named by a registry value: its Windows text cleaned as the IDE writes it, then mapped
// to the local folder.
std::string RegistryFolder(const platform::MachineFolders& machine, std::string_view key, std::string_view name) {
  const std::string windows_path =
      StripTrailing(ReduceDoubledBackslashes(machine.MachineRegistryString(key, name)), '\\');
  if (windows_path.empty()) return "";
  if (platform::DebugEnabled()) {
    platform::DebugLine("  Registry " + std::string(key) + " " + std::string(name) + ": '" + windows_path + "'");
  }
  return StripTrailing(machine.LocalPath(windows_path), '/');
}

}  // namespace

std::string Get_TSA_RootFolder(const platform::MachineFolders& machine) {
  platform::ScopedRoutine routine("TSaW_Common.Get_TSA_RootFolder");
  return StripTrailing(machine.FrameworkRoot(), '/');
}

std::string Get_Delphi_Folder(const platform::MachineFolders& machine) {
  platform::ScopedRoutine routine("TSaW_Common.Get_Delphi_Folder");
  return RegistryFolder(machine, std::string("\\Software\\Borland\\Delphi\\") + "5" + ".0", "RootDir");
}

std::string Get_Windows_Folder(const platform::MachineFolders& machine) {
  platform::ScopedRoutine routine("TSaW_Common.Get_Windows_Folder");
  return StripTrailing(machine.WindowsFolder(), '/');
}

std::string Get_WindowsSys_Folder(const platform::MachineFolders& machine) {
  platform::ScopedRoutine routine("TSaW_Common.Get_WindowsSys_Folder");
  return StripTrailing(machine.SystemFolder(), '/');
}

std::string Get_ProgramFiles_Folder(const platform::MachineFolders& machine) {
  platform::ScopedRoutine routine("TSaW_Common.Get_ProgramFiles_Folder");
  return RegistryFolder(machine, "Software\\Microsoft\\Windows\\CurrentVersion", "ProgramFilesDir");
}

}  // namespace tsaw
