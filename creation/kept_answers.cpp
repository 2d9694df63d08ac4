#include "creation/kept_answers.h"

#include <algorithm>

namespace tsaw::creation {

TKeptAnswers::TKeptAnswers(TWizard& wizard) : wizard_(wizard), plugin_index_(wizard.PluginIndex) {
  variables_.reserve(wizard.Variables.size());
  for (const TVariableItem& item : wizard.Variables) variables_.push_back(Take(item));
}

TKeptAnswers::~TKeptAnswers() {
  const std::size_t count = std::min(variables_.size(), wizard_.Variables.size());
  for (std::size_t i = 0; i < count; ++i) Put(variables_[i], wizard_.Variables[i]);
  wizard_.PluginIndex = plugin_index_;
}

TKeptAnswers::TValues TKeptAnswers::Take(const TVariableItem& item) {
  TValues values{item.Value, item.DefaultValue, item.IdfValue, {}};
  values.Pins.reserve(item.Pins.size());
  for (const auto& pin : item.Pins) {
    values.Pins.push_back(pin ? std::optional<TValues>(Take(*pin)) : std::nullopt);
  }
  return values;
}

void TKeptAnswers::Put(const TValues& values, TVariableItem& item) {
  item.Value = values.Value;
  item.DefaultValue = values.DefaultValue;
  item.IdfValue = values.IdfValue;
  const std::size_t count = std::min(values.Pins.size(), item.Pins.size());
  for (std::size_t i = 0; i < count; ++i) {
    if (values.Pins[i] && item.Pins[i]) Put(*values.Pins[i], *item.Pins[i]);
  }
}

}  // namespace tsaw::creation
