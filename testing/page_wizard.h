#pragma once
// Test helper: a wizard state as the pages find it after a template of a given plug-in count has
// been selected, with setters that write a value the way an answer is stored.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "model/expand.h"
#include "model/variables.h"
#include "model/wizard.h"

namespace tsaw::testing {

// The variable table with every plug-in variable sized to `plugins`, and plug-in 1 current.
inline TWizard PageWizard(uint16_t plugins) {
  TWizard wizard;
  Init_Variables(wizard);
  wizard.RunData = std::make_unique<TRunData>();
  wizard.RunData->PluginCount = plugins;
  for (TVariableItem& variable : wizard.Variables) {
    if (variable.IsPluginArray) ResizePinSubArray(variable, plugins);
  }
  wizard.PluginIndex = plugins > 0 ? 1 : 0;
  return wizard;
}

inline void Store(TVariableItem& item, std::string_view value) {
  item.Value = std::string(value);
  item.DefaultValue = item.Value;
  item.IdfValue = Str2Idf(value);
}

inline void SetVar(TWizard& wizard, uint16_t var, std::string_view value) {
  Store(wizard.Variables[var], value);
}

// Plug-in `index`'s element of variable `var`.
inline void SetPin(TWizard& wizard, uint16_t var, uint16_t index, std::string_view value) {
  Store(*wizard.Variables[var].Pins[index], value);
}

}  // namespace tsaw::testing
