// AnyCvrError: the circular-reference check that must run before any full expansion.

#include <functional>
#include <string>
#include <unordered_set>

#include "model/expand.h"
#include "model/expand_index.h"
#include "platform/debug_log.h"

namespace tsaw {
namespace {

// True when expanding `start` pass by pass brings back a reference to variable `v` in `mode`.
// Stops without a verdict when the text holds no reference any more, repeats itself (a cycle
// elsewhere), hits the expansion's bounds, or after one pass more than the longest acyclic chain.
// The size bound is that of the start text, not of each pass's input, so a cycle elsewhere that
// makes the text grow stops the check once, not after growing by the bound in every pass. After
// the first pass, references to `v` are left in place: a reference that other values splice
// together ("#Prod#X#uct.Name#" with X empty) would otherwise be expanded within the pass that
// forms it and never be seen at a pass's end.
bool CheckIt(const TTokenIndex& index, uint16_t v, TFindMode mode, const std::string& start) {
  const bool names = mode == TFindMode::Name;
  const size_t size_limit = ExpansionLimitFor(start);
  std::unordered_set<size_t> seen;
  std::vector<uint16_t> present;
  std::string text = start;
  for (uint32_t pass = 0; pass <= index.item_count(); ++pass) {
    std::string expanded;
    const TExpandOutcome outcome = ExpandWithIndex(index, text, true, expanded, {}, size_limit, pass == 0 ? 0 : v);
    if (platform::DebugEnabled()) platform::DebugLine("  AnyCvrError.CheckIt.2:  S: '" + expanded + "' (expanded)");
    index.Collect(expanded, 0, names, !names, present);
    if (present.empty()) return false;
    if (index.FindFirst(expanded, v, mode).found) return true;
    if (outcome != TExpandOutcome::Complete) return false;
    if (!seen.insert(std::hash<std::string>{}(expanded)).second) return false;
    text = std::move(expanded);
  }
  return false;
}

void MakeHarmless(std::string& value) {
  value = ReplaceAll(value, "#", "*");
  value = ReplaceAll(value, "vr", "vr*");
  value = ReplaceAll(value, "vr**", "vr*");
}

}  // namespace

uint16_t AnyCvrError(TWizard& wizard, const TCvrNotifier& notify) {
  platform::ScopedRoutine routine("TSaW_Common.AnyCvrError");
  const TTokenIndex index(wizard);
  for (uint16_t i = 1; i <= index.last(); ++i) {
    TVariableItem& variable = wizard.Variables[i];
    if (variable.Name.empty() || variable.Token.empty()) continue;
    const std::string name_token = "#" + variable.Name + "#";
    if (variable.Value.find(name_token) != std::string::npos) {
      variable.Value = ReplaceAll(variable.Value, "#", "*");
      return i;
    }
    if (CheckIt(index, i, TFindMode::Name, name_token) || CheckIt(index, i, TFindMode::Identifier, variable.Token)) {
      if (notify) notify("2 - CVR (Circular Variable Reference) Error:  " + variable.Name);
      MakeHarmless(variable.Value);
      return i;
    }
  }
  return 0;
}

}  // namespace tsaw
