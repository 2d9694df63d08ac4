#pragma once
// Text as the host runtime treats it, which the wizard's files and rules assume:
// - letter case as CompareText and LowerCase see it: only the ASCII letters A-Z fold, every other
//   byte stands as it is, so UTF-8 and Windows-1252 text compare exactly;
// - Trim: blanks are the space and every control character;
// - string lists: a line ends at CR, LF or CR LF, and lines are written with CR LF.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace tsaw::platform {

inline char LowerAscii(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

inline std::string LowerAscii(std::string_view s) {
  std::string lowered(s);
  for (char& c : lowered) c = LowerAscii(c);
  return lowered;
}

// True when `a` and `b` differ at most in the case of ASCII letters.
inline bool SameText(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

// True when `a` sorts before `b` with the case of ASCII letters ignored.
inline bool LessText(std::string_view a, std::string_view b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char x, char y) { return LowerAscii(x) < LowerAscii(y); });
}

// `s` without leading and trailing bytes up to the space (blanks and control characters).
inline std::string_view Trim(std::string_view s) {
  while (!s.empty() && static_cast<unsigned char>(s.front()) <= ' ') s.remove_prefix(1);
  while (!s.empty() && static_cast<unsigned char>(s.back()) <= ' ') s.remove_suffix(1);
  return s;
}

// The lines of `text` as views into it; a final line break adds no empty line ("" gives no
// lines, "\r\n" one empty line).
std::vector<std::string_view> SplitLineViews(std::string_view text);
// The same lines as strings.
std::vector<std::string> SplitLines(std::string_view text);
// `lines`, each followed by CR LF.
std::string JoinLines(const std::vector<std::string>& lines);
// `text` with every line ending in CR LF: JoinLines(SplitLines(text)) without a string per line.
std::string WithCrLfLines(std::string_view text);
// True when WithCrLfLines(text) would give `text` back: every line already ends in CR LF.
bool HasCrLfLines(std::string_view text);
// Makes `text` WithCrLfLines(text), copying it only when some line does not end in CR LF yet.
void MakeCrLfLines(std::string& text);

}  // namespace tsaw::platform
