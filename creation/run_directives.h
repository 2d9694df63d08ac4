#pragma once
// The run directives: the directive table rebuilt for one creation run, and the preprocessor
// defines made from it.

#include <cstdint>
#include <string>

#include "model/startup.h"
#include "model/wizard.h"
#include "preprocessor/defines.h"

namespace tsaw::creation {

// Setup_Template_Directives: the fixed directives, then the run's own. Items 3..8 (the kept
// items, not the logging directives) are renamed "dd" by the logging and cosmetic answers, and the
// plug-in count rename is refused (its number is still 0): both on purpose. Appends the target
// language, platform, target, plug-in index and plug-in extension directives, and
// "PluginExtension_Other" when the extension is not exactly "tsa".
void Setup_Template_Directives(TWizard& wizard, const TProgramInfo& program);

// Whether a directive bound to `var_idx` is defined: for the boolean answers (Logging.*,
// Cosmetic.CommentedHeaders) their truth; for every other variable a non-empty value of the item
// meant now (a run directive is named after that value, so it is defined while its target,
// language or plug-in is the current one).
bool DirectiveValue(const TWizard& wizard, uint16_t var_idx);

// Init_Model_Processor's defines: "ddTemplate=0", then each named directive in table order with
// 1 or 0 from DirectiveValue.
TDefines ModelProcessorDefines(const TWizard& wizard);

// Renames run directive `dir_const` to "dd" + `name` and carries the change into `defines`: the
// old name becomes 0 there, the new one 1 (added when new). Number 0 changes nothing.
void RenameRunDirective(TWizard& wizard, TDefines& defines, uint16_t dir_const, const std::string& name);

}  // namespace tsaw::creation
