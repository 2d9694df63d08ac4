#pragma once
// Wizard configurations: the selector file that names the active configuration, and the reading
// of that configuration at start-up.

#include <string>
#include <vector>

#include "model/wizard.h"

namespace tsaw {

// The plug-in module's file name; the selector file is named after it with the extension ".ini".
inline constexpr const char* kPluginModuleFile = "TSaW.tsa";
// "TSaW.ini".
std::string SelectorFileName();

// Start-up reading of the configuration (wizard.WizardFolder must be set): the selector's
// "TSaW"/Config names the configuration (default "Default"); wizard.ConfigFile becomes the wizard
// folder + "TSaW.<name>.ini"; wizard.ShellBrowserMode becomes its "TSaW Config"/ShellBrowserPlugin
// when that is 1 or 2, else 1; the variable table is built afresh and the configuration's custom
// and look-up variables are added. Missing files read as empty. A name holding a path separator
// is refused and "Default" used. Exceptions are caught and logged with the step; start-up goes on
// with what was read. Returns what the user should be told (empty when all is well).
// A non-empty `config_name` (the command line's --config) stands in for the selector's choice.
std::vector<std::string> Read_Settings(TWizard& wizard, const std::string& config_name = {});

}  // namespace tsaw
