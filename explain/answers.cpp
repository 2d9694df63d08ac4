#include "explain/answers.h"

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

TAnswer Answer(TWizard& wizard, const TAnswerLayers& layers, uint16_t var_idx, uint16_t plugin) {
  const TVariableItem& variable = wizard.Variables[var_idx];
  const TVariableItem& item = plugin == 0 ? variable : *variable.Pins[plugin];
  // A file sets a plug-in item's default, but its value stays the variable's own default: the
  // value then came from where the variable's did.
  const uint16_t source = plugin != 0 && item.Value != item.DefaultValue ? 0 : plugin;
  TAnswer answer{item.Name, item.Value, {}, item.IdfValue, layers.Of(var_idx, source), ReadOnly(wizard, var_idx),
                 Settable(wizard, item.Name)};
  if (plugin == 0) {
    answer.Expanded = ExpandVar(wizard, item.Value);
    return answer;
  }
  const uint16_t current = wizard.PluginIndex;
  wizard.PluginIndex = plugin;
  BackupVar(wizard, viPluginIndex, std::to_string(plugin));
  answer.Expanded = ExpandVar(wizard, item.Value);
  RestoreVar(wizard, viPluginIndex);
  wizard.PluginIndex = current;
  return answer;
}

const char* TargetState(const TTargetChoice& choice) {
  if (choice.Required) return "required";
  if (choice.PreSelected) return "selected";
  return choice.Allowed ? "allowed" : "not allowed";
}

}  // namespace

std::vector<TAnswer> ListAnswers(TWizard& wizard, const TAnswerLayers& layers) {
  std::vector<TAnswer> answers;
  for (uint16_t v = 1; v <= LastSearchedVar(wizard); ++v) {
    const TVariableItem& variable = wizard.Variables[v];
    if (!variable.IsPluginArray) {
      answers.push_back(Answer(wizard, layers, v, 0));
      continue;
    }
    for (uint16_t n = 1; n < variable.Pins.size(); ++n) {
      if (variable.Pins[n]) answers.push_back(Answer(wizard, layers, v, n));
    }
  }
  for (uint16_t t = 1; t <= kTargetCount; ++t) {
    const std::string state = TargetState(wizard.Targets[t]);
    answers.push_back({std::string(TargetInfo(t).DefaultsKey), state, state, {}, layers.OfTarget(t), false, true, t});
  }
  return answers;
}

}  // namespace tsaw::explain
