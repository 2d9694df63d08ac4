#include "pages/variable_edit.h"

#include "model/expand.h"
#include "model/variables.h"

namespace tsaw {

std::string ExpandedValue(const TWizard& wizard, uint16_t var_idx) {
  if (var_idx >= wizard.Variables.size()) return {};
  return ExpandVar(wizard, CurrentItem(wizard, var_idx).Value);
}

std::string ExpandPinValue(const TExpansionTable& table, uint16_t var_idx, int index) {
  const TWizard& wizard = table.Wizard();
  if (var_idx >= wizard.Variables.size() || index < 1) return {};
  const auto& pins = wizard.Variables[var_idx].Pins;
  if (static_cast<std::size_t>(index) >= pins.size() || !pins[index]) return {};
  return ExpandVar(table, pins[index]->Value);
}

TPluginIndexGuard::TPluginIndexGuard(TWizard& wizard) : wizard_(wizard) {
  if (wizard_.Variables.size() <= viPluginIndex) return;
  BackupVar(wizard_, viPluginIndex, wizard_.Variables[viPluginIndex].Value);
}

TPluginIndexGuard::~TPluginIndexGuard() {
  if (wizard_.Variables.size() <= viPluginIndex) return;
  RestoreVar(wizard_, viPluginIndex);
  // Only the value is backed up; the stored copy and identifier form follow it back.
  Assign_Value(wizard_.Variables[viPluginIndex], wizard_.Variables[viPluginIndex].Value);
}

}  // namespace tsaw
