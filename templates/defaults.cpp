#include "templates/defaults.h"

#include <array>

#include "model/expand.h"
#include "model/startup.h"
#include "model/target_selection.h"
#include "model/targets.h"
#include "model/variables.h"
#include "platform/runtime_text.h"
#include "platform/debug_log.h"
#include "templates/template_info.h"

namespace tsaw {
namespace {

constexpr std::string_view kSection = "Default Values";
constexpr std::string_view kPilcrow = "\xC2\xB6";    // "¶"
constexpr std::string_view kBrokenBar = "\xC2\xA6";  // "¦"

constexpr std::array<uint16_t, 13> kCommonVars = {
    viProductName,     viCompanyName,      viCopyright,     viAuthor,
    viProjectsPrefix,  viHostProjectName,  viManagerDeepName, viManagerVersion,
    viManagerAuthor,   viManagerCopyright, viManagerPluginExtension, viManagerPluginFolder,
    viManagerServiceFolder};
constexpr std::array<uint16_t, 5> kLoggingVars = {viLoggingUseTLG, viLoggingLogComments,
                                                  viLoggingLogInitFinit, viLoggingLogPinCreation,
                                                  viLoggingLogFunctionResults};

struct PluginKey {
  const char* suffix;  // the key after "Plugin." or "Plugin[n]."
  uint16_t var_idx;
};
constexpr std::array<PluginKey, 6> kPluginKeys = {{{"ProjectName", viPluginProjectName},
                                                   {"DeepName", viPluginDeepName},
                                                   {"Version", viPluginVersion},
                                                   {"Author", viPluginAuthor},
                                                   {"Copyright", viPluginCopyright},
                                                   {"Description", viPluginDescription}}};

bool IsBooleanVar(uint16_t var_idx) {
  return var_idx >= viLoggingUseTLG && var_idx <= viCosmeticCommentedHeaders;
}

std::string Trimmed(std::string_view s) {
  const auto first = s.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return std::string(s.substr(first, s.find_last_not_of(" \t") - first + 1));
}

// The routines act only on a valid template and a built variable table.
bool Acts(const TWizard& wizard) {
  const TTemplateInfo* info = wizard.SelectedTemplate.get();
  return info && info->IsTemplate && info->IsValid && wizard.Variables.size() > kFixedVariableCount;
}

enum class Idf { Same, Cleared };

void SetDefault(TVariableItem& item, std::string value, Idf idf) {
  item.DefaultValue = std::move(value);
  item.Value = item.DefaultValue;
  if (idf == Idf::Same) item.IdfValue = item.DefaultValue;
  if (idf == Idf::Cleared) item.IdfValue.clear();
}

void SetDefault(TWizard& wizard, uint16_t var_idx, std::string value, Idf idf) {
  SetDefault(wizard.Variables[var_idx], std::move(value), idf);
}

// Sets the default, with the identifier form of its expansion. `table` is made for the wizard's
// variables; the values set meanwhile leave it valid.
void SetExpandedDefault(const TExpansionTable& table, TVariableItem& item, std::string value) {
  SetDefault(item, std::move(value), Idf::Cleared);
  item.IdfValue = Str2Idf(ExpandVar(table, item.DefaultValue));
}

// The plug-in variable's own item carries the text too: it is what a plug-in's value falls back
// to when a file sets that plug-in's default (see Read).
void SetPluginDefaults(TWizard& wizard, const TExpansionTable& table, uint16_t var_idx, const std::string& value) {
  TVariableItem& variable = wizard.Variables[var_idx];
  SetExpandedDefault(table, variable, value);
  for (size_t n = 1; n < variable.Pins.size(); ++n) {
    if (!variable.Pins[n]) continue;
    BackupVar(wizard, viPluginIndex, std::to_string(n));
    SetExpandedDefault(table, *variable.Pins[n], value);
    RestoreVar(wizard, viPluginIndex);
  }
}

void ApplyInternalTargets(TWizard& wizard) {
  const uint16_t required = TargetOf(3, 1);  // "Delphi.7.Win32"
  for (uint16_t t = 1; t <= kTargetCount; ++t) {
    TTargetChoice& choice = wizard.Targets[t];
    choice.Allowed = true;
    choice.Required = t == required;
    choice.PreSelected = choice.Required || choice.Allowed;
    choice.Checked = choice.PreSelected && choice.InstallState != 2 && choice.InstallState != 3;
  }
}

void TellApplied(const TWizard& wizard, uint16_t var_idx, uint16_t plugin) {
  if (wizard.DefaultApplied) wizard.DefaultApplied(var_idx, plugin);
}

void ApplyTargetValue(TTargetChoice& choice, const std::string& value) {
  choice.Allowed = value != "D";
  choice.Required = value == "R";
  choice.PreSelected = value == "1" || choice.Required;
  if (choice.Required) choice.Allowed = true;
  if (!choice.Allowed) choice.PreSelected = false;
  choice.Checked = choice.PreSelected && choice.InstallState != 2 && choice.InstallState != 3;
}

void MarkReadOnly(TWizard& wizard, uint16_t var_idx, bool read_only) {
  std::vector<bool>& marks = wizard.SelectedTemplate->ReadOnly;
  if (marks.size() <= var_idx) marks.resize(var_idx + 1, false);
  marks[var_idx] = read_only;
}

std::string PluginKeyName(const PluginKey& key, uint16_t n, bool indexed) {
  return indexed ? "Plugin[" + std::to_string(n) + "]." + key.suffix
                 : std::string("Plugin.") + key.suffix;
}

// Reads the six plug-in keys of plug-in n. `set_values` also gives each sub-item read its own
// default as value.
void ReadPluginKeys(TWizard& wizard, const TIniFile& ini, uint16_t n, bool indexed,
                    bool set_values = false) {
  for (const PluginKey& key : kPluginKeys) {
    const std::string name = PluginKeyName(key, n, indexed);
    Read(wizard, ini, kSection, name, key.var_idx == viPluginDescription, n, key.var_idx);
    const auto& pins = wizard.Variables[key.var_idx].Pins;
    if (set_values && !ini.ReadString(kSection, name).empty() && n < pins.size() && pins[n]) {
      pins[n]->Value = pins[n]->DefaultValue;
    }
  }
}

void ApplyFile(TWizard& wizard, const std::string& file, bool indexed) {
  const TIniFile ini = TIniFile::Load(file);
  if (!ini.Error().empty()) platform::DebugLine("  " + ini.Error());
  Apply_Values(wizard, ini, kSection);
  for (uint16_t n = 1; n <= wizard.SelectedTemplate->PluginCount; ++n) {
    ReadPluginKeys(wizard, ini, n, indexed);
  }
}

}  // namespace

void Apply_Internal_Default_Values(TWizard& wizard) {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.Apply_Internal_Default_Values");
  if (!Acts(wizard)) return;
  // Made once: the defaults set here change values only, never a variable's name or token.
  const TExpansionTable table(wizard);
  SetExpandedDefault(table, wizard.Variables[viPluginCount], std::to_string(wizard.SelectedTemplate->PluginCount));
  SetDefault(wizard, viProjectsPrefix, "MySystem", Idf::Same);
  SetExpandedDefault(table, wizard.Variables[viHostProjectName], "#Projects.Prefix#Host");
  SetExpandedDefault(table, wizard.Variables[viCompanyName], "My Company");
  SetExpandedDefault(table, wizard.Variables[viProductName], "My Product");
  SetExpandedDefault(table, wizard.Variables[viAuthor], "My Name");
  SetExpandedDefault(table, wizard.Variables[viCopyright], "\xC2\xA9#Creation.Year# #Company.Name#");
  SetDefault(wizard, viManagerPluginExtension, "tsa", Idf::Same);
  SetDefault(wizard, viManagerPluginFolder, "%HostAppDir%", Idf::Cleared);
  SetDefault(wizard, viManagerServiceFolder, "%HostAppDir%", Idf::Cleared);
  SetExpandedDefault(table, wizard.Variables[viManagerVersion], "1.0");
  SetExpandedDefault(table, wizard.Variables[viManagerAuthor], "#Author#");
  SetExpandedDefault(table, wizard.Variables[viManagerDeepName], "My Host");
  SetExpandedDefault(table, wizard.Variables[viManagerCopyright], "#Copyright#");
  SetPluginDefaults(wizard, table, viPluginProjectName, "#Projects.Prefix#Pin#Plugin.Index#");
  SetPluginDefaults(wizard, table, viPluginDeepName, "Plugin ##Plugin.Index#");
  SetPluginDefaults(wizard, table, viPluginVersion, "1.0");
  SetPluginDefaults(wizard, table, viPluginAuthor, "#Author#");
  SetPluginDefaults(wizard, table, viPluginCopyright, "#Copyright#");
  SetPluginDefaults(wizard, table, viPluginDescription, "This is my plugin ##Plugin.Index#");
  SetDefault(wizard, viPluginIndex, "1", Idf::Same);
  wizard.PluginIndex = 1;
  for (uint16_t v = viLoggingUseTLG; v <= viCosmeticCommentedHeaders; ++v) {
    SetDefault(wizard, v, "True", Idf::Same);
  }
  SetDefault(wizard, viOutputBaseFolder, "#Path.TsaProjects#", Idf::Cleared);
  ApplyInternalTargets(wizard);
}

void Apply_Config_Default_Values(TWizard& wizard) {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.Apply_Config_Default_Values");
  if (Acts(wizard)) ApplyFile(wizard, wizard.ConfigFile, false);
}

void Apply_Template_Values(TWizard& wizard) {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.Apply_Template_Values");
  if (Acts(wizard)) ApplyFile(wizard, wizard.SelectedTemplate->IniFile, true);
}

void Apply_Job_Default_Values(TWizard& wizard) {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.Apply_Job_Default_Values");
  if (Acts(wizard) && !wizard.ActiveJobFile.empty()) ApplyFile(wizard, wizard.ActiveJobFile, true);
}

void Apply_Values(TWizard& wizard, const TIniFile& ini, std::string_view section) {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.Apply_Values");
  if (!Acts(wizard)) return;
  Custom_or_Lookup_Variables(wizard, ini, false);
  Custom_or_Lookup_Variables(wizard, ini, true);
  for (uint16_t v : kCommonVars) Read(wizard, ini, section, kFixedVariableNames[v], false, 0, v);
  for (uint16_t t = 1; t <= kTargetCount; ++t) {
    const std::string value = ini.ReadString(section, TargetInfo(t).DefaultsKey);
    if (value.empty()) continue;
    ApplyTargetValue(wizard.Targets[t], value);
    TellApplied(wizard, 0, t);
  }
  Update_Target_Variables(wizard);
  for (uint16_t v : kLoggingVars) Read(wizard, ini, section, kFixedVariableNames[v], false, 0, v);
  if (wizard.Variables[viLoggingUseTLG].DefaultValue == "False") {
    for (uint16_t v : kLoggingVars) {
      if (v == viLoggingUseTLG || wizard.Variables[v].DefaultValue == "False") continue;
      SetDefault(wizard, v, "False", Idf::Same);
      TellApplied(wizard, v, 0);
    }
  }
  for (uint16_t v : {viCosmeticCommentedHeaders, viOutputBaseFolder}) {
    Read(wizard, ini, section, kFixedVariableNames[v], false, 0, v);
  }
}

void Read(TWizard& wizard, const TIniFile& ini, std::string_view section, std::string_view key,
          bool is_description, uint16_t plugin, uint16_t var_idx) {
  std::string text = ini.ReadString(section, key);
  if (text.empty() || var_idx >= wizard.Variables.size() || !Acts(wizard)) return;
  TellApplied(wizard, var_idx, plugin);
  TVariableItem& variable = wizard.Variables[var_idx];
  if (IsBooleanVar(var_idx)) {
    SetDefault(variable, IniBool(text) ? "True" : "False", Idf::Same);
    return;
  }
  if (const size_t bar = text.find(kBrokenBar); bar != std::string::npos) {
    MarkReadOnly(wizard, var_idx, text.find("$ReadOnly", bar + kBrokenBar.size()) != std::string::npos);
    text = Trimmed(std::string_view(text).substr(0, bar));
  }
  const std::string value = is_description ? Piped2Text(text, kPilcrow) : text;
  const std::string idf = is_description ? "" : Str2Idf(ExpandVar(wizard, text));
  if (!variable.IsPluginArray) {
    SetDefault(variable, value, Idf::Cleared);
    variable.IdfValue = idf;
    return;
  }
  wizard.PluginIndex = plugin;
  SetDefault(wizard, viPluginIndex, std::to_string(plugin), Idf::Cleared);
  if (plugin >= variable.Pins.size() || !variable.Pins[plugin]) return;
  TVariableItem& pin = *variable.Pins[plugin];
  pin.DefaultValue = value;
  pin.IdfValue = idf;
  // The established behaviour: the value is the variable's own default, not the text read.
  pin.Value = variable.DefaultValue;
}

void Update_Wizard_Variables(TWizard& wizard) {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.Update_Wizard_Variables");
  if (wizard.Variables.size() <= viTemplatePrefix) return;
  TVariableItem& prefix = wizard.Variables[viTemplatePrefix];
  if (Acts(wizard)) {
    SetDefault(prefix, wizard.SelectedTemplate->Prefix, Idf::Cleared);
    prefix.IdfValue = Str2Idf(prefix.Value);
  } else {
    SetDefault(prefix, "", Idf::Cleared);
  }
}

namespace {

bool IsPluginSuffix(std::string_view lowered_suffix) {
  for (const PluginKey& key : kPluginKeys) {
    if (platform::LowerAscii(key.suffix) == lowered_suffix) return true;
  }
  return false;
}

}  // namespace

std::string CheckDefaultValuesKey(std::string_view key, uint16_t plugin_count) {
  const std::string lowered = platform::LowerAscii(key);
  for (uint16_t v = 1; v <= kFixedVariableCount; ++v) {
    const bool listed = (v >= viProjectsPrefix && v != viProjectGroup && v < viPluginProjectName) ||
                        v >= viLoggingUseTLG;
    if (listed && lowered == platform::LowerAscii(kFixedVariableNames[v])) return {};
  }
  for (uint16_t t = 1; t <= kTargetCount; ++t) {
    if (lowered == platform::LowerAscii(TargetInfo(t).DefaultsKey)) return {};
  }
  if (lowered.starts_with("plugin.") && IsPluginSuffix(lowered.substr(7))) return {};
  const size_t close = lowered.find("].");
  if (lowered.starts_with("plugin[") && close != std::string::npos &&
      IsPluginSuffix(lowered.substr(close + 2))) {
    const std::string digits = lowered.substr(7, close - 7);
    const bool numeric = !digits.empty() && digits.size() <= 3 &&
                         digits.find_first_not_of("0123456789") == std::string::npos;
    const int n = numeric ? std::stoi(digits) : 0;
    if (n >= 1 && n <= plugin_count && digits.front() != '0') return {};
    return "Plug-in number in \"" + std::string(key) + "\" is out of range: the template has " +
           std::to_string(plugin_count) + " plug-in" + (plugin_count == 1 ? "" : "s");
  }
  return "Unknown key \"" + std::string(key) + "\": not a \"Default Values\" key";
}

namespace {

// One override as a "Default Values" section of its own, read by the files' rules.
void ApplyOverrideLayer(TWizard& wizard, const std::string& key, const std::string& value) {
  const TIniFile ini = TIniFile::FromText("[" + std::string(kSection) + "]\n" + key + "=" + value + "\n");
  Apply_Values(wizard, ini, kSection);
  for (uint16_t n = 1; n <= wizard.SelectedTemplate->PluginCount; ++n) {
    ReadPluginKeys(wizard, ini, n, false, true);
    ReadPluginKeys(wizard, ini, n, true, true);
  }
}

}  // namespace

std::vector<std::string> Ignored_Default_Keys(const TIniFile& ini, uint16_t plugin_count, bool indexed) {
  std::vector<std::string> warnings;
  for (const auto& [key, value] : ini.ReadSection(kSection)) {
    std::string why = CheckDefaultValuesKey(key, plugin_count);
    const std::string lowered = platform::LowerAscii(key);
    const bool unindexed = lowered.starts_with("plugin.");
    if (why.empty() && (unindexed || lowered.starts_with("plugin[")) && unindexed == indexed) {
      why = "\"" + key + "\" is read only from " +
            (indexed ? "configuration files; write \"Plugin[n]." : "Job and template files; write \"Plugin.") +
            key.substr(key.find('.') + 1) + "\" here";
    }
    if (why.empty()) continue;
    warnings.push_back(ini.Path().string() + ":" + std::to_string(ini.KeyLine(kSection, key)) + ": " + why +
                       "; the key is ignored");
  }
  return warnings;
}

std::string Apply_Value_Overrides(TWizard& wizard,
                                  const std::vector<std::pair<std::string, std::string>>& values) {
  platform::ScopedRoutine routine("tsaw.Apply_Value_Overrides");
  if (!Acts(wizard)) return "No valid template is selected";
  for (const auto& [key, value] : values) {
    if (std::string error = CheckDefaultValuesKey(key, wizard.SelectedTemplate->PluginCount); !error.empty()) {
      return error;
    }
    if (value.find_first_of("\r\n") != std::string::npos) {
      return "The value of \"" + key + "\" holds a line break; write line breaks as \"\xC2\xB6\"";
    }
  }
  for (const auto& [key, value] : values) ApplyOverrideLayer(wizard, key, value);
  return {};
}

}  // namespace tsaw
