#pragma once
// Shared by the harnesses: the fuzzer's bytes taken apart into the pieces a harness needs.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tsaw::fuzz {

// The input as text.
inline std::string_view AsText(const uint8_t* data, size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// The input cut at each occurrence of `separator` (a byte that rarely occurs in real files), so
// that one input can carry several texts, for instance a table and a text to expand with it.
inline std::vector<std::string> Pieces(std::string_view text, char separator = '\x1e') {
  std::vector<std::string> pieces;
  size_t start = 0;
  for (size_t at = text.find(separator); at != std::string_view::npos; at = text.find(separator, start)) {
    pieces.emplace_back(text.substr(start, at - start));
    start = at + 1;
  }
  pieces.emplace_back(text.substr(start));
  return pieces;
}

}  // namespace tsaw::fuzz
