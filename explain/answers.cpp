#include "explain/answers.h"

#include "creation/system_variables.h"
#include "model/expand.h"
#include "model/targets.h"
#include "model/variables.h"
#include "templates/defaults.h"
#include "templates/template_info.h"

namespace tsaw::explain {
namespace {

bool ReadOnly(const TWizard& wizard, uint16_t var_idx) {
  return wizard.SelectedTemplate && IsReadOnly(*wizard.SelectedTemplate, var_idx);
}

bool Settable(const TWizard& wizard, const std::string& name) {
  const uint16_t plugins = wizard.SelectedTemplate ? wizard.SelectedTemplate->PluginCount : 0;
  return CheckDefaultValuesKey(name, plugins).empty();
}

// The answer before the run's preparation: its value as the sources left it.
TAnswer Answer(const TWizard& wizard, const TAnswerLayers& layers, uint16_t var_idx, uint16_t plugin) {
  const TVariableItem& variable = wizard.Variables[var_idx];
  const TVariableItem& item = plugin == 0 ? variable : *variable.Pins[plugin];
  // A file sets a plug-in item's default, but its value stays the variable's own default: the
  // value then came from where the variable's did.
  const uint16_t source = plugin != 0 && item.Value != item.DefaultValue ? 0 : plugin;
  return {item.Name, item.Value, {}, {}, layers.Of(var_idx, source), ReadOnly(wizard, var_idx), Settable(wizard, item.Name)};
}

// The expanded value and identifier form as the prepared run has them, with the answer's plug-in
// current.
void FillAsTheRunHasIt(TWizard& wizard, TAnswer& answer, uint16_t var_idx, uint16_t plugin) {
  const TVariableItem& item = plugin == 0 ? wizard.Variables[var_idx] : *wizard.Variables[var_idx].Pins[plugin];
  answer.Identifier = item.IdfValue;
  if (plugin == 0) {
    answer.Expanded = ExpandVar(wizard, item.Value);
    return;
  }
  const uint16_t current = wizard.PluginIndex;
  wizard.PluginIndex = plugin;
  BackupVar(wizard, viPluginIndex, std::to_string(plugin));
  answer.Expanded = ExpandVar(wizard, item.Value);
  RestoreVar(wizard, viPluginIndex);
  wizard.PluginIndex = current;
}

const char* TargetState(const TTargetChoice& choice) {
  if (choice.Required) return "required";
  if (choice.PreSelected) return "selected";
  return choice.Allowed ? "allowed" : "not allowed";
}

}  // namespace

std::vector<TAnswer> ListAnswers(TWizard& wizard, const TAnswerLayers& layers) {
  struct TItem {
    uint16_t var_idx;
    uint16_t plugin;
  };
  std::vector<TItem> items;
  for (uint16_t v = 1; v <= LastSearchedVar(wizard); ++v) {
    const TVariableItem& variable = wizard.Variables[v];
    if (!variable.IsPluginArray) items.push_back({v, 0});
    for (uint16_t n = 1; variable.IsPluginArray && n < variable.Pins.size(); ++n) {
      if (variable.Pins[n]) items.push_back({v, n});
    }
  }
  std::vector<TAnswer> answers;
  for (const TItem& item : items) answers.push_back(Answer(wizard, layers, item.var_idx, item.plugin));
  creation::Expand_System_Variables(wizard);
  for (size_t i = 0; i < items.size(); ++i) FillAsTheRunHasIt(wizard, answers[i], items[i].var_idx, items[i].plugin);
  for (uint16_t t = 1; t <= kTargetCount; ++t) {
    const std::string state = TargetState(wizard.Targets[t]);
    answers.push_back({std::string(TargetInfo(t).DefaultsKey), state, state, {}, layers.OfTarget(t), false, true, t});
  }
  return answers;
}

}  // namespace tsaw::explain
