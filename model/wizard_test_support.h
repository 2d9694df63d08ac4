#pragma once
// Test helper for the model's tests: a wizard with the fixed variables and `plugin_count` plug-ins.

#include <memory>
#include <string>

#include "model/variables.h"
#include "model/wizard.h"

namespace tsaw::testing {

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

// Sets a value and its identifier value the way the pages do.
inline void SetValue(TVariableItem& item, const std::string& value, const std::string& idf_value) {
  item.Value = value;
  item.IdfValue = idf_value;
}

}  // namespace tsaw::testing
