#pragma once
// Routines over the wizard state's variable and directive tables.

#include <string>
#include <string_view>

#include "model/wizard.h"

namespace tsaw {

// Builds the variable table: the 48 entries (0 empty, 1..47 the fixed names with their identifier
// tokens and plug-in-array flags), no plug-in sub-items yet; VarCount becomes 48. Keeps nothing
// of an earlier table.
void Init_Variables(TWizard& wizard);

// The identifier token of a variable name: "vr" + `name` with every '.' turned into '_'.
std::string IdentifierToken(std::string_view name);

// The highest variable number a search over the table visits: the variable count, bounded by the
// table's size (the count starts one above the last fixed variable).
uint16_t LastSearchedVar(const TWizard& wizard);

// Gives a plug-in-array variable the sub-items 1..`plugin_count` (element 0 stays empty): item n is
// named after the variable with every "Plugin." turned into "Plugin[n]." and its token is the
// variable's with every "vrPlugin" turned into "vrPlugin" + n. Earlier sub-items are dropped.
// The expansion recognises sub-items by these names.
void ResizePinSubArray(TVariableItem& variable, uint16_t plugin_count);

// Frees the run data, clears the plug-in sub-arrays, then resets the whole state to empty.
void Clear_Wizard(TWizard& wizard);

// For each plug-in-array variable: frees its sub-items and leaves only the empty element 0.
void Clear_Pin_SubArrays(TWizard& wizard);

// The plug-in count of the run data, 0 when there is none.
uint16_t PluginCountOf(const TWizard& wizard);

// Appends a directive mirroring `var_idx`, named "dd" + `name`; returns its number.
uint16_t MakeNewDirective(TWizard& wizard, uint16_t var_idx, std::string_view name);

// Renames directive `dir_const` to "dd" + `name`. 0 or out of range: nothing changes and a debug
// line says why; the caller is not told.
void ResetDirective(TWizard& wizard, uint16_t dir_const, std::string_view name);

// Puts `new_value` into the variable (the current plug-in's item for a plug-in array) after
// saving the old value; RestoreVar puts it back. One level only.
void BackupVar(TWizard& wizard, uint16_t var_idx, std::string_view new_value);
void RestoreVar(TWizard& wizard, uint16_t var_idx);

// `value` becomes the item's value and default value, and its identifier value is Str2Idf(value).
void Assign_Value(TVariableItem& item, std::string_view value);

// `Plugin.Index` takes `index` in decimal (value, default value and identifier value); the
// current plug-in itself is the caller's to set.
void Set_Plugin_Index_Var(TWizard& wizard, int index);

// The item a plain read of `var_idx` means: the current plug-in's sub-item for a plug-in array
// (when it exists), else the variable itself.
TVariableItem& CurrentItem(TWizard& wizard, uint16_t var_idx);
const TVariableItem& CurrentItem(const TWizard& wizard, uint16_t var_idx);

}  // namespace tsaw
