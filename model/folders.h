#pragma once
// The machine folders behind the Path.* variables. Each routine returns a local folder without
// trailing separators, or an empty text when the folder cannot be found; none reports an error.

#include <string>

#include "platform/machine_folders.h"

namespace tsaw {

// The Tessera framework's root folder.
std::string Get_TSA_RootFolder(const platform::MachineFolders& machine);
// The IDE's root folder: "RootDir" of the machine key "\Software\Borland\Delphi\5.0". Only this
// IDE version is looked up, on purpose. Doubled backslashes in the value count as single ones.
std::string Get_Delphi_Folder(const platform::MachineFolders& machine);
// The Windows folder and the system folder.
std::string Get_Windows_Folder(const platform::MachineFolders& machine);
std::string Get_WindowsSys_Folder(const platform::MachineFolders& machine);
// "ProgramFilesDir" of the machine key "Software\Microsoft\Windows\CurrentVersion".
std::string Get_ProgramFiles_Folder(const platform::MachineFolders& machine);

}  // namespace tsaw
