#include "model/answer_check.h"

#include "model/expand.h"
#include "model/expand_index.h"

namespace tsaw {
namespace {

std::string CheckItem(const TTokenIndex& index, const TVariableItem& item) {
  for (const std::string* text : {&item.Value, &item.IdfValue}) {
    std::string expanded;
    const TExpandOutcome outcome = ExpandWithIndex(index, *text, false, expanded, {}, ExpansionLimitFor(*text));
    if (outcome != TExpandOutcome::Complete) return ExpansionBoundMessage(item.Name, outcome, text->size());
  }
  return {};
}

}  // namespace

std::string FirstAnswerBeyondBounds(const TWizard& wizard) {
  // One index for the whole table: building one per answer would cost the table's size each time.
  const TTokenIndex index(wizard);
  for (uint16_t v = 1; v <= index.last(); ++v) {
    const TVariableItem& variable = wizard.Variables[v];
    if (std::string message = CheckItem(index, variable); !message.empty()) return message;
    for (uint16_t k = 1; k <= index.pin_bound(v); ++k) {
      if (!variable.Pins[k]) continue;
      if (std::string message = CheckItem(index, *variable.Pins[k]); !message.empty()) return message;
    }
  }
  return {};
}

}  // namespace tsaw
