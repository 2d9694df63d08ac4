#include "model/expand.h"

#include <algorithm>

#include "model/expand_index.h"
#include "model/variables.h"
#include "platform/debug_log.h"

namespace tsaw {
namespace {

std::string TokenOf(const TVariableItem& item, TFindMode mode) {
  if (mode == TFindMode::Identifier) return item.Token;
  return item.Name.empty() ? std::string() : "#" + item.Name + "#";
}

bool TryItem(const TVariableItem& item, TFindMode mode, std::string_view text, int offset, uint16_t v, int plugin,
             TFindVarResult& result) {
  std::string token = TokenOf(item, mode);
  if (token.empty()) return false;
  const size_t at = text.find(token);
  if (at == std::string_view::npos) return false;
  result = TFindVarResult{true, v, std::move(token), static_cast<int>(at) + 1 + offset, plugin};
  return true;
}

bool IsIdentifierChar(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

}  // namespace

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string out;
  if (ReplaceAllInto(text, from, to, out) == 0) return std::string(text);
  return out;
}

TFindVarResult FindVar(const TWizard& wizard, std::string_view s, TFindMode mode, uint16_t var_idx, int start_pos) {
  platform::ScopedRoutine routine("TSaW_Common.FindVar");
  TFindVarResult result;
  const int offset = start_pos > 0 ? start_pos - 1 : 0;
  const std::string_view text = static_cast<size_t>(offset) < s.size() ? s.substr(offset) : std::string_view();
  if (mode == TFindMode::Name && text.find('#') == std::string_view::npos) return result;
  const uint16_t first = var_idx != 0 ? var_idx : 1;
  const uint16_t last = var_idx != 0 ? var_idx : LastSearchedVar(wizard);
  if (last >= wizard.Variables.size()) return result;
  const uint16_t plugin_count = PluginCountOf(wizard);
  for (uint16_t v = first; v <= last && v != 0; ++v) {
    const TVariableItem& variable = wizard.Variables[v];
    if (TryItem(variable, mode, text, offset, v, 0, result)) return result;
    if (!variable.IsPluginArray || plugin_count == 0) continue;
    const size_t bound = std::min<size_t>(plugin_count, variable.Pins.empty() ? 0 : variable.Pins.size() - 1);
    for (size_t k = 1; k <= bound; ++k) {
      const auto& item = variable.Pins[k];
      if (item && TryItem(*item, mode, text, offset, v, static_cast<int>(k), result)) return result;
    }
  }
  return result;
}

uint16_t FindVarByName(const TWizard& wizard, std::string_view name, uint16_t count) {
  platform::ScopedRoutine routine("TSaW_Common.FindVarByName");
  const uint16_t last = std::min(count != 0 ? count : wizard.VarCount, LastSearchedVar(wizard));
  for (uint16_t v = 1; v <= last; ++v) {
    if (wizard.Variables[v].Name == name) return v;
  }
  return 0;
}

uint16_t FindLookupVar(const TWizard& wizard, std::string_view name, uint16_t count) {
  platform::ScopedRoutine routine("TSaW_Common.FindLookupVar");
  return FindVarByName(wizard, name.substr(std::min<size_t>(7, name.size())), count);
}

std::string Str2Idf(std::string_view s) {
  std::string text(s);
  for (char blank : {' ', '.', ':', '/'}) std::replace(text.begin(), text.end(), blank, '_');
  std::erase_if(text, [](char c) { return !IsIdentifierChar(c); });
  if (!text.empty() && text[0] >= '0' && text[0] <= '9') text.insert(text.begin(), '_');
  return ReplaceAll(text, "__", "_");
}

std::string Piped2Text(std::string_view s, std::string_view pipe) {
  if (s.empty() || pipe.empty() || s.find(pipe) == std::string_view::npos) return std::string(s);
  const std::string single(pipe);
  std::string text = ReplaceAll(s, " " + single, single);
  text = ReplaceAll(text, single + " ", single);
  text = ReplaceAll(text, single + single, single);
  size_t lead = 0;
  while (text.compare(lead, single.size(), single) == 0) lead += single.size();
  return ReplaceAll(std::string_view(text).substr(lead), single, "\r\n");
}

}  // namespace tsaw
