#include "creation/system_variables.h"

#include <cstdio>

#include "model/expand.h"
#include "model/target_selection.h"
#include "model/variables.h"
#include "platform/debug_log.h"

namespace tsaw::creation {
namespace {

constexpr uint16_t kBuiltFromOthers[] = {viPathTsaProjects, viCopyright,       viHostProjectName,
                                         viManagerAuthor,   viManagerCopyright, viOutputBaseFolder};
constexpr uint16_t kPluginTexts[] = {viPluginProjectName, viPluginVersion,   viPluginAuthor,
                                     viPluginDeepName,    viPluginCopyright, viPluginDescription};

// Folders and descriptions have no identifier form.
bool KeepsNoIdentifier(uint16_t var_idx) {
  return var_idx == viOutputBaseFolder || var_idx == viPluginDescription ||
         var_idx == viManagerPluginFolder || var_idx == viManagerServiceFolder;
}

void ExpandInPlace(TWizard& wizard, const TExpansionTable& table, uint16_t var_idx) {
  TVariableItem& item = CurrentItem(wizard, var_idx);
  item.Value = ExpandVar(table, item.Value);
  // Made afresh: one made when a default was applied may predate a later Projects.Prefix.
  item.IdfValue = KeepsNoIdentifier(var_idx) ? std::string() : Str2Idf(item.Value);
}

// Each plug-in's texts, expanded while that plug-in is the current one.
void ExpandPluginTexts(TWizard& wizard, const TExpansionTable& table) {
  const uint16_t saved = wizard.PluginIndex;
  TVariableItem& index = wizard.Variables[viPluginIndex];
  const std::string saved_index = index.Value;
  for (uint16_t plugin = 1; plugin <= PluginCountOf(wizard); ++plugin) {
    wizard.PluginIndex = plugin;
    index.Value = std::to_string(plugin);
    for (const uint16_t var_idx : kPluginTexts) ExpandInPlace(wizard, table, var_idx);
  }
  wizard.PluginIndex = saved;
  index.Value = saved_index;
}

void SetSourcePrefixes(TWizard& wizard) {
  TVariableItem& host = wizard.Variables[viHostSourcePrefix];
  const TVariableItem& projects = wizard.Variables[viProjectsPrefix];
  const std::string prefix = projects.IdfValue.empty() ? Str2Idf(projects.Value) : projects.IdfValue;
  if (host.Value.empty()) host.Value = host.DefaultValue = host.IdfValue = prefix;
  auto pin_prefix = [&prefix](int plugin) {
    char number[16];
    std::snprintf(number, sizeof number, "p%.2d", plugin);
    return prefix + number;
  };
  TVariableItem& plugins = wizard.Variables[viPluginSourcePrefix];
  plugins.Value = plugins.DefaultValue = plugins.IdfValue = pin_prefix(wizard.PluginIndex);
  for (std::size_t plugin = 1; plugin < plugins.Pins.size(); ++plugin) {
    if (!plugins.Pins[plugin]) continue;
    TVariableItem& item = *plugins.Pins[plugin];
    item.Value = item.DefaultValue = item.IdfValue = pin_prefix(static_cast<int>(plugin));
  }
}

}  // namespace

void Expand_System_Variables(TWizard& wizard) {
  platform::ScopedRoutine routine("TSaW_frmCreation.TfrmCreation.Expand_System_Variables");
  Select_No_Target(wizard);
  // Made once for all the values expanded here, which change no variable's name or token.
  const TExpansionTable table(wizard);
  for (const uint16_t var_idx : kBuiltFromOthers) ExpandInPlace(wizard, table, var_idx);
  ExpandPluginTexts(wizard, table);
  for (uint16_t var_idx = kInitialVariableCount; var_idx < wizard.Variables.size(); ++var_idx) {
    TVariableItem& item = wizard.Variables[var_idx];
    if (!item.UserDefined || item.IsLookup) continue;
    item.Value = ExpandVar(table, item.Value);
    item.IdfValue = Str2Idf(item.Value);
  }
  SetSourcePrefixes(wizard);
}

}  // namespace tsaw::creation
