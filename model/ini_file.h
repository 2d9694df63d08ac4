#pragma once
// The INI reading the whole system shares: sections in brackets, key=value lines. Section and key
// names match without regard to the case of ASCII letters; a value runs to the end of its line and
// is trimmed; the first of duplicate keys wins, and a repeated section header continues the first
// section of that name. Lines starting with ';', lines without '=', and lines before the first
// section are ignored; a line that is neither a section, a comment nor key=value is noted as a
// warning with its line number. Lines end in CR LF, LF or CR; a UTF-8 byte-order mark is skipped.
// Files may be UTF-8 or Windows-1252 ("¶" and "¦" in either); the text is UTF-8 once read.

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tsaw {

class TIniFile {
 public:
  // An empty file.
  TIniFile() = default;
  // Parses `text` (UTF-8).
  static TIniFile FromText(std::string_view text);
  // Reads and parses a file. A missing or unreadable file reads as empty; Error() says why.
  static TIniFile Load(const std::filesystem::path& path);

  // The trimmed value of section/key, or `default_value` when the key is absent.
  std::string ReadString(std::string_view section, std::string_view key,
                         std::string_view default_value = {}) const;
  // The key=value lines of a section in file order, keys as written, values trimmed.
  std::vector<std::pair<std::string, std::string>> ReadSection(std::string_view section) const;
  bool SectionExists(std::string_view section) const;
  bool ValueExists(std::string_view section, std::string_view key) const;
  // The line number (from 1) of section/key as read, or 0 when the key is absent.
  int KeyLine(std::string_view section, std::string_view key) const;

  // One text per line that is neither a section, a comment nor key=value, in file order:
  // "<file>:<line>: ..." (just "line <n>: ..." for a text not read from a file).
  std::vector<std::string> Warnings() const;

  // Empty when the file was read; otherwise what went wrong and where.
  const std::string& Error() const { return error_; }
  // The file it was loaded from; empty for a parsed text.
  const std::filesystem::path& Path() const { return path_; }

 private:
  struct Section {
    std::string name;
    std::vector<std::pair<std::string, std::string>> entries;
    std::vector<int> lines;  // the line number of each entry
  };
  const Section* FindSection(std::string_view name) const;

  std::vector<Section> sections_;
  std::vector<std::pair<int, std::string>> ignored_lines_;  // line number, what is wrong
  size_t more_ignored_lines_ = 0;                            // past the ones kept
  std::string error_;
  std::filesystem::path path_;
};

// True for "yes", "y", "true", "t" and "1" in any letter case.
bool IniBool(std::string_view value);

}  // namespace tsaw
