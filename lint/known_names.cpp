// The names a template may use: the directives some run defines and the variables the template or
// the configuration declares.

#include "creation/run_directives.h"
#include "lint/checks.h"
#include "model/target_selection.h"
#include "model/targets.h"
#include "model/variables.h"
#include "platform/runtime_text.h"

namespace tsaw::lint {
namespace {

void AddDirectiveNames(TLintContext& context) {
  for (const TDirectiveItem& item : context.wizard.Directives) {
    if (!item.Name.empty()) context.directives.insert(platform::LowerAscii(item.Name));
  }
}

}  // namespace

// The run directives depend on the target, the plug-in and the answers. Each target's set-up is
// made here; the plug-in index directive is renamed by the walk, so its names are added for every
// plug-in. The logging and cosmetic answers only rename kept items, never the names themselves.
void CollectKnownNames(TLintContext& context, const TProgramInfo& program) {
  TWizard& wizard = context.wizard;
  const uint16_t current_target = wizard.CurrentTarget;
  for (uint16_t target = 0; target <= kTargetCount; ++target) {
    if (target == 0) {
      Select_No_Target(wizard);
    } else {
      Select_Target(wizard, target);
    }
    creation::Setup_Template_Directives(wizard, program);
    AddDirectiveNames(context);
  }
  for (uint16_t language = 1; language <= kLanguageCount; ++language) {
    Select_Language(wizard, language);
    creation::Setup_Template_Directives(wizard, program);
    AddDirectiveNames(context);
  }
  if (current_target == 0) {
    Select_No_Target(wizard);
  } else {
    Select_Target(wizard, current_target);
  }
  context.directives.insert("ddtemplate");
  context.directives.insert("ddtrue");
  for (uint16_t n = 1; n <= PluginCountOf(wizard); ++n) {
    context.directives.insert("ddpluginindex_" + std::to_string(n));
  }
  for (uint16_t v = 1; v <= LastSearchedVar(wizard); ++v) {
    const TVariableItem& variable = wizard.Variables[v];
    context.names.insert(variable.Name);
    context.tokens.insert(variable.Token);
    for (const auto& pin : variable.Pins) {
      if (!pin) continue;
      context.names.insert(pin->Name);
      context.tokens.insert(pin->Token);
    }
  }
}

}  // namespace tsaw::lint
