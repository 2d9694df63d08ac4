#include "pages/lookup_list.h"

#include <algorithm>

#include "model/expand.h"
#include "platform/runtime_text.h"

namespace tsaw {

std::vector<std::string> LookupValues(std::string_view list_text) {
  std::vector<std::string> values;
  while (!list_text.empty()) {
    const std::size_t end = list_text.find('\n');
    std::string_view line = list_text.substr(0, end);
    list_text = end == std::string_view::npos ? std::string_view{} : list_text.substr(end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (!line.empty()) values.emplace_back(line);
  }
  // A stable sort keeps the first of values that differ only in letter case.
  const auto less = [](const std::string& a, const std::string& b) { return platform::LessText(a, b); };
  const auto same = [](const std::string& a, const std::string& b) { return platform::SameText(a, b); };
  std::stable_sort(values.begin(), values.end(), less);
  values.erase(std::unique(values.begin(), values.end(), same), values.end());
  return values;
}

std::optional<TLookupRequest> LookupFor(const TWizard& wizard, uint16_t var_idx) {
  const auto& vars = wizard.Variables;
  if (var_idx == 0 || var_idx >= vars.size()) return std::nullopt;
  const uint16_t lookup = vars[var_idx].LookupVar;
  if (lookup == 0 || lookup >= vars.size()) return std::nullopt;
  TLookupRequest request{vars[lookup].Title, LookupValues(ExpandVar(wizard, "#" + vars[lookup].Name + "#"))};
  if (request.Values.empty()) return std::nullopt;
  return request;
}

}  // namespace tsaw
