#include "model/variables.h"

#include <algorithm>
#include <cstdio>

#include "model/expand.h"
#include "platform/debug_log.h"

namespace tsaw {
namespace {

bool IsPinVariable(uint16_t var_idx) {
  return var_idx == viPluginSourcePrefix || (var_idx >= viPluginProjectName && var_idx <= viPluginDescription);
}

}  // namespace

std::string IdentifierToken(std::string_view name) {
  std::string token = "vr";
  token.append(name);
  std::replace(token.begin() + 2, token.end(), '.', '_');
  return token;
}

uint16_t LastSearchedVar(const TWizard& wizard) {
  if (wizard.Variables.empty()) return 0;
  return static_cast<uint16_t>(std::min<size_t>(wizard.VarCount, wizard.Variables.size() - 1));
}

void Init_Variables(TWizard& wizard) {
  platform::ScopedRoutine routine("TSaW_Common.Init_Variables");
  wizard.Variables.clear();
  wizard.Variables.resize(kFixedVariableCount + 1);
  for (uint16_t i = 1; i <= kFixedVariableCount; ++i) {
    TVariableItem& item = wizard.Variables[i];
    item.Name = kFixedVariableNames[i];
    item.Token = IdentifierToken(item.Name);
    item.IsPluginArray = IsPinVariable(i);
    if (item.IsPluginArray) item.Pins.resize(1);
  }
  wizard.VarCount = kInitialVariableCount;
}

void ResizePinSubArray(TVariableItem& variable, uint16_t plugin_count) {
  variable.Pins.clear();
  variable.Pins.resize(plugin_count + 1);
  for (uint16_t n = 1; n <= plugin_count; ++n) {
    auto item = std::make_unique<TVariableItem>();
    const std::string number = std::to_string(n);
    item->Name = ReplaceAll(variable.Name, "Plugin.", "Plugin[" + number + "].");
    item->Token = ReplaceAll(variable.Token, "vrPlugin", "vrPlugin" + number);
    variable.Pins[n] = std::move(item);
  }
}

void Clear_Wizard(TWizard& wizard) {
  platform::ScopedRoutine routine("TSaW_Common.Clear_Wizard");
  wizard.RunData.reset();
  Clear_Pin_SubArrays(wizard);
  wizard = TWizard{};
}

void Clear_Pin_SubArrays(TWizard& wizard) {
  platform::ScopedRoutine routine("TSaW_Common.Clear_Pin_SubArrays");
  const uint16_t last = LastSearchedVar(wizard);
  for (uint16_t v = 1; v <= last; ++v) {
    TVariableItem& variable = wizard.Variables[v];
    if (!variable.IsPluginArray) continue;
    variable.Pins.resize(1);  // frees the plug-ins' items; element 0 is never assigned
  }
}

uint16_t PluginCountOf(const TWizard& wizard) { return wizard.RunData ? wizard.RunData->PluginCount : 0; }

uint16_t MakeNewDirective(TWizard& wizard, uint16_t var_idx, std::string_view name) {
  if (wizard.Directives.empty()) wizard.Directives.emplace_back();  // ddUndef
  wizard.Directives.push_back(TDirectiveItem{var_idx, "dd" + std::string(name)});
  wizard.DirectivesHigh = static_cast<uint16_t>(wizard.Directives.size() - 1);
  return wizard.DirectivesHigh;
}

void ResetDirective(TWizard& wizard, uint16_t dir_const, std::string_view name) {
  const int high = static_cast<int>(wizard.Directives.size()) - 1;
  if (dir_const == ddUndef) {
    platform::DebugLine("Parameter \"DirConst\" cannot be ddUndef.");
    return;
  }
  if (dir_const > high) {
    if (platform::DebugEnabled()) {
      char line[96];
      std::snprintf(line, sizeof line, "Parameter \"DirConst\" out of bounds: %d.  High(Directives): %d",
                    static_cast<int>(dir_const), high);
      platform::DebugLine(line);
    }
    return;
  }
  wizard.Directives[dir_const].Name = "dd" + std::string(name);
}

TVariableItem& CurrentItem(TWizard& wizard, uint16_t var_idx) {
  const TWizard& read_only = wizard;
  return const_cast<TVariableItem&>(CurrentItem(read_only, var_idx));
}

const TVariableItem& CurrentItem(const TWizard& wizard, uint16_t var_idx) {
  const TVariableItem& variable = wizard.Variables[var_idx];
  const uint16_t index = wizard.PluginIndex;
  if (variable.IsPluginArray && index > 0 && index < variable.Pins.size() && variable.Pins[index]) {
    return *variable.Pins[index];
  }
  return variable;
}

void BackupVar(TWizard& wizard, uint16_t var_idx, std::string_view new_value) {
  TVariableItem& item = CurrentItem(wizard, var_idx);
  item.BackupValue = item.Value;
  item.Value = new_value;
}

void RestoreVar(TWizard& wizard, uint16_t var_idx) {
  TVariableItem& item = CurrentItem(wizard, var_idx);
  item.Value = item.BackupValue;
}

void Assign_Value(TVariableItem& item, std::string_view value) {
  item.Value = std::string(value);
  item.DefaultValue = item.Value;
  item.IdfValue = Str2Idf(item.Value);
}

void Set_Plugin_Index_Var(TWizard& wizard, int index) {
  if (wizard.Variables.size() <= viPluginIndex) return;
  Assign_Value(wizard.Variables[viPluginIndex], std::to_string(index));
}

}  // namespace tsaw
