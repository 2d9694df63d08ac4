#include "explain/answer_layers.h"

#include "model/ini_file.h"
#include "templates/defaults.h"
#include "templates/template_info.h"

namespace tsaw::explain {
namespace {

// A custom or look-up variable's key in its section: its name without "Custom." or "Lookup.".
std::pair<std::string, std::string> DeclaringKey(const std::string& name) {
  for (const char* section : {"Custom", "Lookup"}) {
    const std::string prefix = std::string(section) + ".";
    if (name.starts_with(prefix)) return {std::string(section) + " Variables", name.substr(prefix.size())};
  }
  return {};
}

}  // namespace

const char* LayerName(TLayer layer) {
  switch (layer) {
    case TLayer::Internal: return "internal";
    case TLayer::Configuration: return "configuration";
    case TLayer::Template: return "template";
    case TLayer::Job: return "Job";
    case TLayer::Set: return "--set";
  }
  return "";
}

// Custom and look-up variables are declared, not set through the observer: the last file that
// declares one with a value is its source.
void TAnswerLayers::Note(TLayer layer, const TWizard& wizard, const std::string& file) {
  if (file.empty()) return;
  const TIniFile ini = TIniFile::Load(file);
  for (uint16_t v = kInitialVariableCount; v < wizard.Variables.size(); ++v) {
    const auto [section, key] = DeclaringKey(wizard.Variables[v].Name);
    if (!section.empty() && !ini.ReadString(section, key).empty()) layers_[{v, 0}] = layer;
  }
}

std::string TAnswerLayers::Replay(TWizard& wizard, const std::vector<std::pair<std::string, std::string>>& sets) {
  layers_.clear();
  TLayer current = TLayer::Internal;
  wizard.DefaultApplied = [this, &current](uint16_t var_idx, uint16_t plugin) {
    layers_[{var_idx, plugin}] = current;
  };
  Apply_Internal_Default_Values(wizard);
  current = TLayer::Configuration;
  Apply_Config_Default_Values(wizard);
  Note(current, wizard, wizard.ConfigFile);
  current = TLayer::Template;
  Apply_Template_Values(wizard);
  if (wizard.SelectedTemplate) Note(current, wizard, wizard.SelectedTemplate->IniFile);
  current = TLayer::Job;
  Apply_Job_Default_Values(wizard);
  Note(current, wizard, wizard.ActiveJobFile);
  Update_Wizard_Variables(wizard);
  current = TLayer::Set;
  std::string error = sets.empty() ? std::string() : Apply_Value_Overrides(wizard, sets);
  wizard.DefaultApplied = nullptr;
  return error;
}

TLayer TAnswerLayers::Of(uint16_t var_idx, uint16_t plugin) const {
  if (const auto it = layers_.find({var_idx, plugin}); it != layers_.end()) return it->second;
  // A plug-in item not set on its own has what its variable was given.
  if (plugin != 0) return Of(var_idx, 0);
  return TLayer::Internal;
}

TLayer TAnswerLayers::OfTarget(uint16_t target) const {
  const auto it = layers_.find({0, target});
  return it == layers_.end() ? TLayer::Internal : it->second;
}

}  // namespace tsaw::explain
