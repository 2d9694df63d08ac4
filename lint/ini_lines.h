#pragma once
// The key=value lines of an INI text with their line numbers, read by the same rules as the
// system's INI reading (sections and keys in any case, ';' comments, values trimmed), so that a
// finding about a key can name its line.

#include <string>
#include <string_view>
#include <vector>

namespace tsaw::lint {

struct TIniLine {
  int Line = 0;         // 1-based
  std::string Section;  // as written
  std::string Key;      // as written, trimmed
  std::string Value;    // trimmed
};

class TIniLines {
 public:
  explicit TIniLines(std::string_view text);
  // The entries of `section` (any case) in file order.
  std::vector<TIniLine> Section(std::string_view section) const;
  // The line of `key` in `section` (the first, as the reading keeps the first), else the line of
  // the section's header, else 0.
  int LineOf(std::string_view section, std::string_view key = {}) const;

 private:
  std::vector<TIniLine> entries_;
  std::vector<TIniLine> headers_;  // one per section header: Line and Section
};

}  // namespace tsaw::lint
