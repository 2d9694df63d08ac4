#include "preprocessor/defines.h"

#include "platform/runtime_text.h"

namespace tsaw {

void TDefines::Add(std::string_view name, std::string_view value) {
  entries_.push_back(Entry{std::string(name), std::string(value)});
}

std::size_t TDefines::IndexOf(std::string_view name) const {
  std::size_t index = 0;
  while (index < entries_.size() && !platform::SameText(entries_[index].Name, name)) ++index;
  return index;
}

std::string_view TDefines::Value(std::string_view name) const {
  const std::size_t index = IndexOf(name);
  return index < entries_.size() ? std::string_view(entries_[index].Value) : std::string_view();
}

bool TDefines::SetExisting(std::string_view name, std::string_view value) {
  const std::size_t index = IndexOf(name);
  if (index == entries_.size()) return false;
  entries_[index].Value = value;
  return true;
}

}  // namespace tsaw
