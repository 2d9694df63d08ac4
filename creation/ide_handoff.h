#pragma once
// "Open Projects": asking the running IDE to open the new Project Set's project group.

#include <cstdint>
#include <filesystem>
#include <string>

#include "creation/run_observer.h"
#include "model/wizard.h"
#include "platform/ide.h"

namespace tsaw::creation {

// The registry key of an IDE's executable from its short name: "D5" -> "\Software\Borland\Delphi\5.0",
// "D8" -> "\Software\Borland\BDS\2.0", "D2005" -> "...\BDS\3.0", "D2006" -> "4.0", "D2007" -> "5.0".
std::string IdeRegistryKey(const std::string& short_name);

// The project group file name for an IDE: "vrProjects_Prefix <short name> Win32.<extension>",
// expanded.
std::string GroupFileName(const TWizard& wizard, const std::string& short_name, uint16_t ide_index);

// btnOpen_OnClick: outside the IDE only the information message appears. Otherwise, when the
// Delphi 5 target was part of the Project Set, opens a DDE link to the IDE, sends
// [open("<group file>")] and raises the host window; each failure shows its error message and
// ends the operation. Task texts and the gauge go to `observer`, which is pumped between steps.
void OpenProjects(const TWizard& wizard, const std::filesystem::path& project_set, platform::Ide& ide,
                  TRunObserver& observer);

}  // namespace tsaw::creation
