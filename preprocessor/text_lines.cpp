#include "preprocessor/text_lines.h"

#include <algorithm>
#include <cstring>

namespace tsaw::preprocessor {
namespace {

// Position of the first `byte` at or after `from`, or text.size() when there is none.
std::size_t FindByte(std::string_view text, char byte, std::size_t from) {
  if (from >= text.size()) return text.size();
  const void* found = std::memchr(text.data() + from, byte, text.size() - from);
  return found ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data())
               : text.size();
}

}  // namespace

std::vector<std::string_view> SplitLineViews(std::string_view text) {
  std::vector<std::string_view> lines;
  // The next CR and the next LF, each found by memchr and looked for again only once passed.
  std::size_t next_cr = FindByte(text, '\r', 0);
  std::size_t next_lf = FindByte(text, '\n', 0);
  std::size_t start = 0;
  while (start < text.size()) {
    if (next_cr < start) next_cr = FindByte(text, '\r', start);
    if (next_lf < start) next_lf = FindByte(text, '\n', start);
    const std::size_t end = std::min(next_cr, next_lf);
    lines.push_back(text.substr(start, end - start));
    start = end;
    if (start < text.size() && text[start] == '\r') ++start;
    if (start < text.size() && text[start] == '\n') ++start;
  }
  return lines;
}

std::vector<std::string> SplitLines(std::string_view text) {
  const std::vector<std::string_view> views = SplitLineViews(text);
  return std::vector<std::string>(views.begin(), views.end());
}

std::string JoinLines(const std::vector<std::string>& lines) {
  std::size_t size = 0;
  for (const std::string& line : lines) size += line.size() + 2;
  std::string text;
  text.reserve(size);
  for (const std::string& line : lines) {
    text += line;
    text += "\r\n";
  }
  return text;
}

std::string_view TrimBlanks(std::string_view text) {
  auto blank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
  std::size_t first = 0;
  while (first < text.size() && blank(text[first])) ++first;
  std::size_t last = text.size();
  while (last > first && blank(text[last - 1])) --last;
  return text.substr(first, last - first);
}

}  // namespace tsaw::preprocessor
