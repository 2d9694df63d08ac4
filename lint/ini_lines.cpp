#include "lint/ini_lines.h"

#include "platform/runtime_text.h"

namespace tsaw::lint {

TIniLines::TIniLines(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  std::string section;
  bool in_section = false;
  int number = 0;
  for (std::string_view line : platform::SplitLineViews(text)) {
    ++number;
    const std::string_view trimmed = platform::Trim(line);
    if (trimmed.empty() || trimmed.front() == ';') continue;
    if (const auto close = trimmed.find(']'); trimmed.front() == '[' && close != std::string_view::npos) {
      section = std::string(platform::Trim(trimmed.substr(1, close - 1)));
      in_section = true;
      headers_.push_back({number, section, {}, {}});
      continue;
    }
    const auto equals = trimmed.find('=');
    if (!in_section || equals == std::string_view::npos) continue;
    entries_.push_back({number, section, std::string(platform::Trim(trimmed.substr(0, equals))),
                        std::string(platform::Trim(trimmed.substr(equals + 1)))});
  }
}

std::vector<TIniLine> TIniLines::Section(std::string_view section) const {
  std::vector<TIniLine> lines;
  for (const TIniLine& entry : entries_) {
    if (platform::SameText(entry.Section, section)) lines.push_back(entry);
  }
  return lines;
}

int TIniLines::LineOf(std::string_view section, std::string_view key) const {
  for (const TIniLine& entry : entries_) {
    if (!key.empty() && platform::SameText(entry.Section, section) && platform::SameText(entry.Key, key)) {
      return entry.Line;
    }
  }
  for (const TIniLine& header : headers_) {
    if (platform::SameText(header.Section, section)) return header.Line;
  }
  return 0;
}

}  // namespace tsaw::lint
