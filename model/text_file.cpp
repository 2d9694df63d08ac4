#include "model/text_file.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace tsaw {
namespace {

// Windows-1252 bytes 0x80..0x9F. The five bytes the code page leaves undefined map to the C1
// control of the same number, as Windows itself does, so every byte survives a round trip.
constexpr std::array<char16_t, 32> kCp1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80..87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88..8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90..97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98..9F
};

char32_t Cp1252ToCodePoint(unsigned char byte) {
  if (byte >= 0x80 && byte <= 0x9F) return kCp1252High[byte - 0x80];
  return byte;
}

// The Windows-1252 byte of a code point, or '?' when the code page lacks it.
char CodePointToCp1252(char32_t cp) {
  if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<char>(cp);
  for (size_t i = 0; i < kCp1252High.size(); ++i) {
    if (kCp1252High[i] == cp) return static_cast<char>(0x80 + i);
  }
  return '?';
}

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

// Decodes one UTF-8 sequence at `pos`. Returns its length, or 0 when the bytes there are not
// well-formed UTF-8 (overlong forms, surrogates and values above U+10FFFF included).
size_t DecodeUtf8At(std::string_view s, size_t pos, char32_t& cp) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(s[pos + i]); };
  const unsigned char lead = byte(0);
  size_t length = 0;
  char32_t min = 0;
  if (lead < 0x80) {
    cp = lead;
    return 1;
  } else if ((lead & 0xE0) == 0xC0) {
    length = 2, min = 0x80, cp = lead & 0x1F;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3, min = 0x800, cp = lead & 0x0F;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4, min = 0x10000, cp = lead & 0x07;
  } else {
    return 0;
  }
  if (pos + length > s.size()) return 0;
  for (size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    cp = (cp << 6) | (byte(i) & 0x3F);
  }
  if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
  return length;
}

// Eight bytes at a time while they are all ASCII, which source text nearly always is.
size_t AsciiPrefix(std::string_view s, size_t pos) {
  constexpr uint64_t kHighBits = 0x8080808080808080ull;
  for (uint64_t word = 0; pos + 8 <= s.size(); pos += 8) {
    std::memcpy(&word, s.data() + pos, 8);
    if (word & kHighBits) break;
  }
  return pos;
}

bool IsValidUtf8(std::string_view s) {
  char32_t cp = 0;
  for (size_t pos = AsciiPrefix(s, 0); pos < s.size();) {
    if (static_cast<unsigned char>(s[pos]) < 0x80) {
      pos = AsciiPrefix(s, pos + 1);
      continue;
    }
    const size_t length = DecodeUtf8At(s, pos, cp);
    if (length == 0) return false;
    pos += length;
  }
  return true;
}

std::string Cp1252ToUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) AppendUtf8(out, Cp1252ToCodePoint(static_cast<unsigned char>(c)));
  return out;
}

std::string Utf8ToCp1252(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  char32_t cp = 0;
  for (size_t pos = 0; pos < utf8.size();) {
    const size_t length = DecodeUtf8At(utf8, pos, cp);
    out += length == 0 ? '?' : CodePointToCp1252(cp);
    pos += length == 0 ? 1 : length;
  }
  return out;
}

}  // namespace

TTextFile DecodeText(std::string_view bytes) {
  if (IsValidUtf8(bytes)) return {std::string(bytes), TTextEncoding::Utf8};
  return {Cp1252ToUtf8(bytes), TTextEncoding::Windows1252};
}

TTextFile DecodeText(std::string&& bytes) {
  if (IsValidUtf8(bytes)) return {std::move(bytes), TTextEncoding::Utf8};
  return {Cp1252ToUtf8(bytes), TTextEncoding::Windows1252};
}

std::string EncodeText(std::string_view utf8, TTextEncoding encoding) {
  if (encoding == TTextEncoding::Windows1252) return Utf8ToCp1252(utf8);
  return std::string(utf8);
}

}  // namespace tsaw
