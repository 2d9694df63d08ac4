#pragma once
// Finding a short run of bytes in text at memory speed. The standard library's string_view
// search tests every position in turn; these look for the first byte with memchr, which scans
// many bytes at a time, and compare the rest only where it stands.

#include <cstddef>
#include <cstring>
#include <string_view>

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

}  // namespace tsaw::platform
