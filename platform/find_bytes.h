#pragma once
// Finding a short run of bytes in text at memory speed. The standard library's string_view
// search tests every position in turn; these look for the first byte with memchr, which scans
// many bytes at a time, and compare the rest only where it stands.

#include <bit>
#include <cstddef>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tsaw::platform {

// As `text.find(needle, from)`: the first position at or after `from` where `needle` begins,
// `from` itself (up to the end) for an empty needle, npos when there is none.
inline std::size_t FindBytes(std::string_view text, std::string_view needle, std::size_t from = 0) {
  if (needle.empty()) return from <= text.size() ? from : std::string_view::npos;
  if (needle.size() > text.size()) return std::string_view::npos;
  const std::size_t last = text.size() - needle.size();
  while (from <= last) {
    const void* hit = std::memchr(text.data() + from, needle[0], last - from + 1);
    if (hit == nullptr) return std::string_view::npos;
    from = static_cast<std::size_t>(static_cast<const char*>(hit) - text.data());
    if (std::memcmp(text.data() + from + 1, needle.data() + 1, needle.size() - 1) == 0) return from;
    ++from;
  }
  return std::string_view::npos;
}

#if defined(__SSE2__)
// One bit per byte of the sixteen at `bytes` that equals one of the bytes repeated in `want_a`
// and `want_b`.
inline unsigned EitherByteMask(const char* bytes, __m128i want_a, __m128i want_b) {
  const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
  return static_cast<unsigned>(
      _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(block, want_a), _mm_cmpeq_epi8(block, want_b))));
}
#endif

// Calls `visit(pos)` for each position of `text` that holds byte `a` or byte `b`, in order. One
// pass for both, sixteen bytes at a time where the processor compares that many in one step,
// so that frequent hits cost no more than a bit each.
template <typename Visit>
void ForEachOfTwoBytes(std::string_view text, char a, char b, Visit visit) {
  std::size_t at = 0;
#if defined(__SSE2__)
  const __m128i want_a = _mm_set1_epi8(a);
  const __m128i want_b = _mm_set1_epi8(b);
  for (; at + 16 <= text.size(); at += 16) {
    for (unsigned hits = EitherByteMask(text.data() + at, want_a, want_b); hits != 0; hits &= hits - 1) {
      visit(at + static_cast<std::size_t>(std::countr_zero(hits)));
    }
  }
#endif
  for (; at < text.size(); ++at) {
    if (text[at] == a || text[at] == b) visit(at);
  }
}

// The first position at or after `from` of `text` holding byte `a` or byte `b`, or npos. Inline
// and sixteen bytes a step, so that a near hit costs no call and a far one little.
inline std::size_t FindEitherByte(std::string_view text, char a, char b, std::size_t from = 0) {
  std::size_t at = from;
#if defined(__SSE2__)
  const __m128i want_a = _mm_set1_epi8(a);
  const __m128i want_b = _mm_set1_epi8(b);
  for (; text.size() >= 16 && at <= text.size() - 16; at += 16) {
    const unsigned hits = EitherByteMask(text.data() + at, want_a, want_b);
    if (hits != 0) return at + static_cast<std::size_t>(std::countr_zero(hits));
  }
#endif
  for (; at < text.size(); ++at) {
    if (text[at] == a || text[at] == b) return at;
  }
  return std::string_view::npos;
}

// As `text.find(byte, from)`. The sixteen bytes at `from` are looked at inline, as in a text dense
// with directives the next hit mostly lies that near; farther on memchr takes over.
inline std::size_t FindByte(std::string_view text, char byte, std::size_t from = 0) {
#if defined(__SSE2__)
  if (text.size() >= 16 && from <= text.size() - 16) {
    const __m128i want = _mm_set1_epi8(byte);
    const unsigned hits = EitherByteMask(text.data() + from, want, want);
    if (hits != 0) return from + static_cast<std::size_t>(std::countr_zero(hits));
    from += 16;
  }
#endif
  if (from >= text.size()) return std::string_view::npos;
  const void* hit = std::memchr(text.data() + from, byte, text.size() - from);
  return hit == nullptr ? std::string_view::npos
                        : static_cast<std::size_t>(static_cast<const char*>(hit) - text.data());
}

}  // namespace tsaw::platform
