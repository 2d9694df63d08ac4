#include "model/target_selection.h"

#include <string_view>

#include "model/targets.h"
#include "model/variables.h"
#include "platform/debug_log.h"

namespace tsaw {

namespace {

void Assign(TWizard& wizard, uint16_t var_idx, std::string_view value) {
  if (var_idx >= wizard.Variables.size()) return;
  Assign_Value(wizard.Variables[var_idx], value);
}

void Assign_Target_Vars(TWizard& wizard, const TTarget& target) {
  Assign(wizard, viTargetLanguage, target.LanguageCode);
  Assign(wizard, viTargetPlatform, target.PlatformCode);
  Assign(wizard, viTarget, target.Code);
  wizard.CurrentLanguage = target.Language;
  wizard.CurrentTarget = target.Number;
}

}  // namespace

void Select_Target(TWizard& wizard, uint16_t target) {
  platform::ScopedRoutine log("TSaW_Common.Select_Target");
  const TTargetInfo& info = TargetInfo(target);
  Assign_Target_Vars(wizard, Make_Target(info.Language, info.Platform));
}

void Select_Language(TWizard& wizard, uint16_t language) {
  platform::ScopedRoutine log("TSaW_Common.Select_Language");
  Assign_Target_Vars(wizard, Make_Target(language));
}

void Select_No_Target(TWizard& wizard) { Assign_Target_Vars(wizard, TTarget{}); }

void Update_Target_Variables(TWizard& wizard) {
  platform::ScopedRoutine log("TSaW_frmLanguages.Update_Wizard_Variables");
  for (uint16_t t = 1; t <= kTargetCount; ++t) {
    if (wizard.Targets[t].Checked) {
      Select_Target(wizard, t);
      return;
    }
  }
}

}  // namespace tsaw
