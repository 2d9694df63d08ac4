#pragma once
// Test helper: a wizard state as it stands after a template of a given plug-in count has been
// selected, and setters that store values the way answers are stored.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "model/variables.h"
#include "model/wizard.h"

namespace tsaw::testing {

// The variable table with every plug-in variable sized to `plugin_count`, and plug-in 1 current.
inline TWizard MakeWizard(uint16_t plugin_count) {
  TWizard wizard;
  Init_Variables(wizard);
  wizard.RunData = std::make_unique<TRunData>();
  wizard.RunData->PluginCount = plugin_count;
  for (TVariableItem& variable : wizard.Variables) {
    if (variable.IsPluginArray) ResizePinSubArray(variable, plugin_count);
  }
  wizard.PluginIndex = plugin_count > 0 ? 1 : 0;
  return wizard;
}

// Sets a value and an identifier value of the test's choosing.
inline void SetValue(TVariableItem& item, const std::string& value, const std::string& idf_value) {
  item.Value = value;
  item.IdfValue = idf_value;
}

inline void SetVar(TWizard& wizard, uint16_t var, std::string_view value) {
  Assign_Value(wizard.Variables[var], value);
}

// Plug-in `index`'s element of variable `var`.
inline void SetPin(TWizard& wizard, uint16_t var, uint16_t index, std::string_view value) {
  Assign_Value(*wizard.Variables[var].Pins[index], value);
}

// Gives variable `var_idx` a look-up variable titled `title` that offers `values` (CR LF lines).
inline void AddLookup(TWizard& wizard, uint16_t var_idx, const std::string& title, const std::string& hint,
                      const std::string& values) {
  TVariableItem lookup;
  lookup.Name = "Lookup." + wizard.Variables[var_idx].Name;
  lookup.Title = title;
  lookup.Hint = hint;
  lookup.Value = values;
  lookup.IsLookup = true;
  lookup.LookedUpVar = var_idx;
  wizard.Variables.push_back(std::move(lookup));
  wizard.VarCount = static_cast<uint16_t>(wizard.Variables.size() - 1);
  wizard.Variables[var_idx].LookupVar = wizard.VarCount;
}

}  // namespace tsaw::testing
