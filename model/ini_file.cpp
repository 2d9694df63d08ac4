#include "model/ini_file.h"

#include <algorithm>
#include <optional>
#include <unordered_set>

#include "model/text_file.h"
#include "platform/runtime_text.h"

namespace tsaw {
namespace {

constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";
constexpr size_t kNoSection = static_cast<size_t>(-1);

// The name of a "[name]" line, or nullopt when the line is no section header.
std::optional<std::string_view> SectionHeader(std::string_view line) {
  if (line.empty() || line.front() != '[') return std::nullopt;
  const size_t close = line.find(']');
  if (close == std::string_view::npos) return std::nullopt;
  return platform::Trim(line.substr(1, close - 1));
}

// Longer lines are cut in a warning, which quotes the line so that it can be found.
constexpr size_t kQuotedLength = 60;
// A file that is no INI file at all would give a warning per line; the rest are only counted.
constexpr size_t kMaxWarnings = 20;

std::string Quoted(std::string_view line) {
  return "\"" + std::string(line.substr(0, kQuotedLength)) + (line.size() > kQuotedLength ? "...\"" : "\"");
}

template <typename Sections>
size_t SectionIndex(const Sections& sections, std::string_view name) {
  for (size_t i = 0; i < sections.size(); ++i) {
    if (platform::SameText(sections[i].name, name)) return i;
  }
  return kNoSection;
}

}  // namespace

// A repeated section header continues the first section of that name; within a section the first
// of duplicate keys is kept and later ones are dropped, so ReadString and ReadSection agree.
TIniFile TIniFile::FromText(std::string_view text) {
  if (text.substr(0, kUtf8Bom.size()) == kUtf8Bom) text.remove_prefix(kUtf8Bom.size());
  TIniFile ini;
  std::vector<std::unordered_set<std::string>> keys_seen;  // lower-cased, one set per section
  size_t current = kNoSection;
  int number = 0;
  for (size_t start = 0; start < text.size();) {
    size_t end = std::min(text.find_first_of("\r\n", start), text.size());
    const std::string_view line = platform::Trim(text.substr(start, end - start));
    if (end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n') ++end;
    start = end + 1;
    ++number;
    if (line.empty() || line.front() == ';') continue;
    if (const auto name = SectionHeader(line)) {
      current = SectionIndex(ini.sections_, *name);
      if (current == kNoSection) {
        current = ini.sections_.size();
        ini.sections_.push_back(Section{std::string(*name), {}, {}});
        keys_seen.emplace_back();
      }
      continue;
    }
    const size_t equals = line.find('=');
    const std::string_view key = platform::Trim(line.substr(0, equals == std::string_view::npos ? 0 : equals));
    if (key.empty()) {
      if (ini.ignored_lines_.size() < kMaxWarnings) {
        ini.ignored_lines_.emplace_back(
            number, Quoted(line) + " is neither a [section], a ; comment nor a key=value line; it is ignored");
      } else {
        ++ini.more_ignored_lines_;
      }
      continue;
    }
    if (current == kNoSection || !keys_seen[current].insert(platform::LowerAscii(key)).second) continue;
    const std::string_view value = platform::Trim(line.substr(equals + 1));
    ini.sections_[current].entries.emplace_back(std::string(key), std::string(value));
    ini.sections_[current].lines.push_back(number);
  }
  return ini;
}

TIniFile TIniFile::Load(const std::filesystem::path& path) {
  std::string error;
  const auto bytes = ReadFileBytes(path, &error);
  if (!bytes) {
    TIniFile empty;
    empty.error_ = error;
    empty.path_ = path;
    return empty;
  }
  TIniFile ini = FromText(DecodeText(*bytes).Text);
  ini.path_ = path;
  return ini;
}

const TIniFile::Section* TIniFile::FindSection(std::string_view name) const {
  const size_t index = SectionIndex(sections_, name);
  return index == kNoSection ? nullptr : &sections_[index];
}

std::string TIniFile::ReadString(std::string_view section, std::string_view key,
                                 std::string_view default_value) const {
  if (const Section* found = FindSection(section)) {
    for (const auto& [name, value] : found->entries) {
      if (platform::SameText(name, key)) return value;
    }
  }
  return std::string(default_value);
}

std::vector<std::pair<std::string, std::string>> TIniFile::ReadSection(std::string_view section) const {
  const Section* found = FindSection(section);
  return found ? found->entries : std::vector<std::pair<std::string, std::string>>{};
}

bool TIniFile::SectionExists(std::string_view section) const { return FindSection(section) != nullptr; }

bool TIniFile::ValueExists(std::string_view section, std::string_view key) const {
  const Section* found = FindSection(section);
  return found && std::any_of(found->entries.begin(), found->entries.end(),
                              [&](const auto& entry) { return platform::SameText(entry.first, key); });
}

std::vector<std::string> TIniFile::Warnings() const {
  std::vector<std::string> warnings;
  for (const auto& [number, text] : ignored_lines_) {
    warnings.push_back((path_.empty() ? "line " : path_.string() + ":") + std::to_string(number) + ": " + text);
  }
  if (more_ignored_lines_ > 0) {
    warnings.push_back((path_.empty() ? "" : path_.string() + ": ") + std::to_string(more_ignored_lines_) +
                       " more such lines are ignored");
  }
  return warnings;
}

int TIniFile::KeyLine(std::string_view section, std::string_view key) const {
  if (const Section* found = FindSection(section)) {
    for (size_t i = 0; i < found->entries.size(); ++i) {
      if (platform::SameText(found->entries[i].first, key)) return found->lines[i];
    }
  }
  return 0;
}

bool IniBool(std::string_view value) {
  for (const std::string_view yes : {"yes", "y", "true", "t", "1"}) {
    if (platform::SameText(value, yes)) return true;
  }
  return false;
}

}  // namespace tsaw
