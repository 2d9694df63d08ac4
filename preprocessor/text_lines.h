#pragma once
// Line and blank handling shared by the preprocessor: texts are bytes, lines end at CR, LF or CR
// LF.

#include <string>
#include <string_view>
#include <vector>

namespace tsaw::preprocessor {

// Splits `text` into lines; a line ends at CR, LF or CR LF, and a final line break adds no empty
// line ("" gives no lines, "\r\n" one empty line).
std::vector<std::string> SplitLines(std::string_view text);
// The same lines as views into `text`.
std::vector<std::string_view> SplitLineViews(std::string_view text);

// Joins `lines`, each followed by CR LF.
std::string JoinLines(const std::vector<std::string>& lines);

// `text` without leading and trailing blanks and control characters (bytes up to 0x20).
std::string_view TrimBlanks(std::string_view text);

}  // namespace tsaw::preprocessor
