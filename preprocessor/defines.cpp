#include "preprocessor/defines.h"

#include "platform/runtime_text.h"

namespace tsaw {

std::size_t TDefines::TFoldedHash::operator()(std::string_view name) const {
  std::size_t hash = 14695981039346656037u;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(platform::LowerAscii(c))) * 1099511628211u;
  return hash;
}

bool TDefines::TFoldedEqual::operator()(std::string_view a, std::string_view b) const {
  return platform::SameText(a, b);
}

void TDefines::Add(std::string_view name, std::string_view value) {
  first_.try_emplace(std::string(name), entries_.size());
  entries_.push_back(Entry{std::string(name), std::string(value)});
}

std::size_t TDefines::IndexOf(std::string_view name) const {
  const auto found = first_.find(name);
  return found == first_.end() ? entries_.size() : found->second;
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
