#include "creation/run_directives.h"

#include "model/ini_file.h"
#include "model/variables.h"
#include "platform/debug_log.h"

namespace tsaw::creation {
namespace {

bool IsTrue(const TWizard& wizard, uint16_t var_idx) { return IniBool(CurrentItem(wizard, var_idx).Value); }

// Step 2: the kept items 3..8 become "dd" by these answers (not the logging directives 11..16).
void RenameKeptItems(TWizard& wizard) {
  const bool use_tlg = IsTrue(wizard, viLoggingUseTLG);
  if (!use_tlg) ResetDirective(wizard, 3, "");
  const uint16_t logging[] = {viLoggingLogComments, viLoggingLogInitFinit, viLoggingLogPinCreation,
                              viLoggingLogFunctionResults};
  for (uint16_t item = 4; item <= 7; ++item) {
    if (!use_tlg || !IsTrue(wizard, logging[item - 4])) ResetDirective(wizard, item, "");
  }
  if (!IsTrue(wizard, viCosmeticCommentedHeaders)) ResetDirective(wizard, 8, "");
}

}  // namespace

void Setup_Template_Directives(TWizard& wizard, const TProgramInfo& program) {
  platform::ScopedRoutine routine("TSaW_frmCreation.TfrmCreation.Setup_Template_Directives");
  Set_Fixed_Directives(wizard, program);
  RenameKeptItems(wizard);
  TRunDirectiveNumbers& run = wizard.RunDirectives;
  ResetDirective(wizard, run.PluginCount, "PluginCount_" + std::to_string(PluginCountOf(wizard)));
  run.TargetLanguage = MakeNewDirective(wizard, viTargetLanguage,
                                        "TargetLanguage_" + CurrentItem(wizard, viTargetLanguage).IdfValue);
  run.TargetPlatform = MakeNewDirective(wizard, viTargetPlatform,
                                        "TargetPlatform_" + CurrentItem(wizard, viTargetPlatform).IdfValue);
  run.Target = MakeNewDirective(wizard, viTarget, "Target_" + CurrentItem(wizard, viTarget).IdfValue);
  run.PluginIndex = MakeNewDirective(wizard, viPluginIndex, "PluginIndex_" + std::to_string(wizard.PluginIndex));
  const std::string& extension = CurrentItem(wizard, viManagerPluginExtension).Value;
  run.PluginExtension = MakeNewDirective(wizard, viManagerPluginExtension, "PluginExtension_" + extension);
  if (extension != "tsa") {
    run.PluginExtensionOther = MakeNewDirective(wizard, viManagerPluginExtension, "PluginExtension_Other");
  }
}

bool DirectiveValue(const TWizard& wizard, uint16_t var_idx) {
  if (var_idx == 0 || var_idx >= wizard.Variables.size()) return false;
  if (var_idx >= viLoggingUseTLG && var_idx <= viCosmeticCommentedHeaders) return IsTrue(wizard, var_idx);
  return !CurrentItem(wizard, var_idx).Value.empty();
}

TDefines ModelProcessorDefines(const TWizard& wizard) {
  TDefines defines;
  defines.Add("ddTemplate", "0");
  for (const TDirectiveItem& item : wizard.Directives) {
    if (!item.Name.empty()) defines.Add(item.Name, DirectiveValue(wizard, item.VarIdx) ? "1" : "0");
  }
  return defines;
}

void RenameRunDirective(TWizard& wizard, TDefines& defines, uint16_t dir_const, const std::string& name) {
  if (dir_const == ddUndef || dir_const >= wizard.Directives.size()) {
    ResetDirective(wizard, dir_const, name);
    return;
  }
  defines.SetExisting(wizard.Directives[dir_const].Name, "0");
  ResetDirective(wizard, dir_const, name);
  const std::string& renamed = wizard.Directives[dir_const].Name;
  const char* value = DirectiveValue(wizard, wizard.Directives[dir_const].VarIdx) ? "1" : "0";
  if (!defines.SetExisting(renamed, value)) defines.Add(renamed, value);
}

}  // namespace tsaw::creation
