#pragma once
// The start of a wizard session, shared by the command line and the window: the wizard's folders
// below the framework root, the active configuration and the fixed variables.

#include <string>
#include <vector>

#include "model/startup.h"
#include "model/wizard.h"
#include "platform/clock.h"
#include "platform/machine_folders.h"

namespace tsaw {

// What the wizard reports about itself; feeds "TSaW.DeepName" and "TSaW.Version".
inline const TProgramInfo kWizardProgram{"Tessera Wizard", "6.01"};

struct TSessionStart {
  bool Ok = false;
  std::vector<std::string> Messages;  // what the user should be told, in order
};

// Sets the wizard folder to <framework root>/TSA/Wizard/ and the Jobs and Templates folders below
// it (each with a trailing separator), reads the active configuration (Read_Settings) and sets the
// fixed variables from `clock` and `machine`. A missing wizard folder is reported and the session
// goes on with empty defaults. Without a framework root nothing is set and Ok is false.
// A non-empty `config_name` chooses the configuration in place of the selector file; when it holds
// a path separator or names no configuration file, that is the one message and Ok is false.
TSessionStart Start_Session(TWizard& wizard, const platform::Clock& clock, const platform::MachineFolders& machine,
                            const std::string& config_name = {});

}  // namespace tsaw
