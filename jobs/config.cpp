#include "jobs/config.h"

#include <charconv>
#include <exception>
#include <filesystem>
#include <system_error>

#include "model/ini_file.h"
#include "model/startup.h"
#include "model/variables.h"
#include "platform/debug_log.h"

namespace tsaw {
namespace {

constexpr const char* kRoutine = "TSaW_frmMain.TfrmMain.Read_Settings";
constexpr const char* kDefaultConfig = "Default";

bool FileExists(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored);
}

// The text as a whole number, 0 when it is none (an optional '+' is accepted, as INI readers do).
int IntegerOf(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() ? value : 0;
}

// The configuration name: `chosen` when given, else the selector's; a name that would reach
// outside the wizard folder is replaced by "Default", with a warning.
std::string ConfigName(const std::string& selector, const std::string& chosen, std::vector<std::string>& warnings) {
  const std::string name =
      chosen.empty() ? TIniFile::Load(selector).ReadString("TSaW", "Config", kDefaultConfig) : chosen;
  if (name.find_first_of("/\\") == std::string::npos) return name;
  warnings.push_back("Configuration \"" + name + "\" named in \"" + (chosen.empty() ? selector : "--config") +
                     "\" is not a plain name (it holds a path separator); the configuration \"" +
                     kDefaultConfig + "\" is used instead.");
  return kDefaultConfig;
}

int ShellBrowserMode(const TIniFile& config) {
  const int mode = IntegerOf(config.ReadString("TSaW Config", "ShellBrowserPlugin", "1"));
  return mode == 1 || mode == 2 ? mode : 1;
}

}  // namespace

std::string SelectorFileName() {
  return std::filesystem::path(kPluginModuleFile).replace_extension(".ini").string();
}

std::vector<std::string> Read_Settings(TWizard& wizard, const std::string& config_name) {
  platform::ScopedRoutine routine(kRoutine);
  std::vector<std::string> warnings;
  int step = 10;
  try {
    const std::string selector = wizard.WizardFolder + SelectorFileName();
    const std::string name = ConfigName(selector, config_name, warnings);
    step = 20;
    const std::string file_name = "TSaW." + name + ".ini";
    wizard.ConfigFile = wizard.WizardFolder + file_name;
    if (platform::DebugEnabled()) {
      platform::DebugLine("ConfigName: '" + name + "'  ConfigFile: '" + file_name + "'  ConfigFileName: '" +
                          wizard.ConfigFile + "'");
    }
    if ((FileExists(selector) || !config_name.empty()) && !FileExists(wizard.ConfigFile)) {
      warnings.push_back("Configuration file \"" + wizard.ConfigFile + "\" (named in \"" + selector +
                         "\") was not found; no configuration values are used.");
    }
    step = 30;
    const TIniFile config = TIniFile::Load(wizard.ConfigFile);
    wizard.ShellBrowserMode = ShellBrowserMode(config);
    step = 40;
    Init_Variables(wizard);
    Custom_or_Lookup_Variables(wizard, config, false);
    Custom_or_Lookup_Variables(wizard, config, true);
  } catch (const std::exception& error) {
    const std::string line = platform::ExceptionLine(kRoutine, step, error.what());
    platform::DebugLine(line);
    warnings.push_back(line);
  }
  return warnings;
}

}  // namespace tsaw
