#pragma once
// Letter case as the host runtime compares names (CompareText, LowerCase): only the ASCII letters
// A-Z fold; every other byte stands as it is, so UTF-8 and Windows-1252 text compare exactly.

#include <algorithm>
#include <string>
#include <string_view>

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

}  // namespace tsaw::platform
