#include "jobs/session.h"

#include <filesystem>
#include <system_error>

#include "jobs/config.h"
#include "platform/debug_log.h"

namespace tsaw {
namespace {

// A configuration named on the command line must be there: a run on another one would use answers
// the user did not choose. Returns why it cannot be used, or the empty text.
std::string CheckChosenConfig(const TWizard& wizard, const std::string& name) {
  if (name.find_first_of("/\\") != std::string::npos) {
    return "--config takes the name of a configuration, not a path: \"" + name + "\" holds a separator.";
  }
  const std::string file = wizard.WizardFolder + "TSaW." + name + ".ini";
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored)) {
    return "There is no configuration \"" + name + "\": \"" + file + "\" does not exist.";
  }
  return {};
}

}  // namespace

TSessionStart Start_Session(TWizard& wizard, const platform::Clock& clock, const platform::MachineFolders& machine,
                            const std::string& config_name) {
  platform::ScopedRoutine routine("TSaW_frmMain.TfrmMain.OnCreate");
  platform::DebugLine("Initializing stuff..");
  TSessionStart start;
  const std::string root = machine.FrameworkRoot();
  if (root.empty()) {
    start.Messages.push_back("The framework root folder is unknown: give --root, or set TESSERA_ROOT or HOME.");
    return start;
  }
  wizard.WizardFolder = (std::filesystem::path(root) / "TSA/Wizard/").lexically_normal().string();
  wizard.JobsFolder = wizard.WizardFolder + "Jobs/";
  wizard.TemplatesFolder = wizard.WizardFolder + "Templates/";
  std::error_code ignored;
  if (!std::filesystem::is_directory(wizard.WizardFolder, ignored)) {
    start.Messages.push_back("Wizard folder \"" + wizard.WizardFolder +
                             "\" does not exist; no configuration, Jobs or templates are found there.");
  }
  if (!config_name.empty()) {
    if (std::string refusal = CheckChosenConfig(wizard, config_name); !refusal.empty()) {
      start.Messages = {std::move(refusal)};
      return start;
    }
  }
  for (std::string& warning : Read_Settings(wizard, config_name)) start.Messages.push_back(std::move(warning));
  Set_Fixed_Variables(wizard, kWizardProgram, clock, machine);
  start.Ok = true;
  return start;
}

}  // namespace tsaw
