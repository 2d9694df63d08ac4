#include "platform/runtime_text.h"

#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tsaw::platform {
namespace {

// Calls `line(view)` for each line of `text`. The next CR and the next LF are each found by
// memchr and looked for again only once passed, so the scan runs at memory speed.
template <typename OnLine>
void ForEachLine(std::string_view text, OnLine&& line) {
  const auto find = [text](char byte, std::size_t from) {
    if (from >= text.size()) return text.size();
    const void* found = std::memchr(text.data() + from, byte, text.size() - from);
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) : text.size();
  };
  std::size_t next_cr = find('\r', 0);
  std::size_t next_lf = find('\n', 0);
  std::size_t start = 0;
  while (start < text.size()) {
    if (next_cr < start) next_cr = find('\r', start);
    if (next_lf < start) next_lf = find('\n', start);
    const std::size_t end = std::min(next_cr, next_lf);
    line(text.substr(start, end - start));
    start = end;
    if (start < text.size() && text[start] == '\r') ++start;
    if (start < text.size() && text[start] == '\n') ++start;
  }
}

}  // namespace

std::vector<std::string_view> SplitLineViews(std::string_view text) {
  std::vector<std::string_view> lines;
  ForEachLine(text, [&lines](std::string_view line) { lines.push_back(line); });
  return lines;
}

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  ForEachLine(text, [&lines](std::string_view line) { lines.emplace_back(line); });
  return lines;
}

std::string JoinLines(const std::vector<std::string>& lines) {
  std::size_t size = 0;
  for (const std::string& line : lines) size += line.size() + 2;
  std::string text;
  text.reserve(size);
  for (const std::string& line : lines) text.append(line).append("\r\n");
  return text;
}

std::string WithCrLfLines(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 32 + 2);
  ForEachLine(text, [&out](std::string_view line) { out.append(line).append("\r\n"); });
  return out;
}

bool HasCrLfLines(std::string_view text) {
  if (text.empty()) return true;
  if (!text.ends_with("\r\n") || text.front() == '\n') return false;
  // Every CR is followed by an LF and every LF follows a CR: at each position, "a CR here" and
  // "an LF next" are the same answer. Sixteen positions are compared at once where the
  // processor can, since lines are short and a search per line costs more than the bytes.
  const std::size_t pairs = text.size() - 1;
  std::size_t at = 0;
#if defined(__SSE2__)
  const __m128i cr = _mm_set1_epi8('\r');
  const __m128i lf = _mm_set1_epi8('\n');
  for (; at + 16 <= pairs; at += 16) {
    const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at));
    const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at + 1));
    if (_mm_movemask_epi8(_mm_xor_si128(_mm_cmpeq_epi8(here, cr), _mm_cmpeq_epi8(next, lf))) != 0) return false;
  }
#endif
  for (; at < pairs; ++at) {
    if ((text[at] == '\r') != (text[at + 1] == '\n')) return false;
  }
  return true;
}

void MakeCrLfLines(std::string& text) {
  if (!HasCrLfLines(text)) text = WithCrLfLines(text);
}

}  // namespace tsaw::platform
