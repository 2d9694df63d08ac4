#pragma once
// The current target: which language, platform and target the variables `Target.Language`,
// `Target.Platform` and `Target` describe. Their values are the catalogue's codes ("D7", "W32",
// "D7W32"), so the run directives read ddTargetLanguage_D7, ddTargetPlatform_W32, ddTarget_D7W32.

#include <cstdint>

#include "model/wizard.h"

namespace tsaw {

// Makes `target` (1..18) current: its language, platform and target codes go into variables 16,
// 17 and 18 (value, stored copy, identifier form). A number out of range selects no target.
void Select_Target(TWizard& wizard, uint16_t target);

// Makes `language` (1..9) current without a platform: variable 16 gets its code, 17 and 18 are
// cleared. A number out of range selects no target.
void Select_Language(TWizard& wizard, uint16_t language);

// Clears variables 16, 17 and 18 and the current language and target.
void Select_No_Target(TWizard& wizard);

// The targets page's rule: the lowest-numbered selected target becomes current; when no target is
// selected nothing changes.
void Update_Target_Variables(TWizard& wizard);

}  // namespace tsaw
