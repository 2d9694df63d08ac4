#pragma once
// How the pages write answers into wizard variables, and the plug-in index that the rules about
// per-plug-in variables step through.

#include <cstdint>
#include <string>
#include <string_view>

#include "model/expand.h"
#include "model/variables.h"
#include "model/wizard.h"

namespace tsaw {

// The expanded value of variable `var_idx` (the current plug-in's element for a per-plug-in
// variable); empty when the table has no such variable.
std::string ExpandedValue(const TWizard& wizard, uint16_t var_idx);

// The expanded value of plug-in `index`'s element of variable `var_idx`; empty when the variable
// has no such element. `table` is made for the wizard's variables, once for a rule that expands
// every plug-in's element.
std::string ExpandPinValue(const TExpansionTable& table, uint16_t var_idx, int index);

// Saves `Plugin.Index` on construction and puts it back on destruction, so that a rule may set it
// to each plug-in in turn (a value embedding #Plugin.Index# then expands as it will at creation).
class TPluginIndexGuard {
 public:
  explicit TPluginIndexGuard(TWizard& wizard);
  ~TPluginIndexGuard();
  TPluginIndexGuard(const TPluginIndexGuard&) = delete;
  TPluginIndexGuard& operator=(const TPluginIndexGuard&) = delete;

 private:
  TWizard& wizard_;
};

}  // namespace tsaw
