#include "platform/wine_registry.h"

#include <algorithm>
#include <cctype>
#include <fstream>

#include "platform/runtime_text.h"

namespace tsaw::platform {
namespace {

// Keys are compared without their outer backslashes: "\Software\X\" is "Software\X".
std::string NormalKey(std::string_view key) {
  while (!key.empty() && key.front() == '\\') key.remove_prefix(1);
  while (!key.empty() && key.back() == '\\') key.remove_suffix(1);
  return LowerAscii(key);
}

void AppendUtf8(std::string& out, unsigned cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

// Reads "\xHHHH" digits at `pos` (after the 'x'); characters outside ASCII are written so.
unsigned ReadHex(std::string_view s, size_t& pos) {
  unsigned value = 0;
  for (int digits = 0; digits < 4 && pos < s.size() && std::isxdigit(static_cast<unsigned char>(s[pos]));
       ++digits, ++pos) {
    const char c = static_cast<char>(std::tolower(static_cast<unsigned char>(s[pos])));
    value = value * 16 + static_cast<unsigned>(c <= '9' ? c - '0' : c - 'a' + 10);
  }
  return value;
}

// Undoes the escapes from `pos` up to the first unescaped `end` character (or the end of `s`)
// into `out`, leaving `pos` just past it. False when `end` is never met.
bool Unescape(std::string_view s, size_t& pos, char end, std::string& out) {
  while (pos < s.size()) {
    const char c = s[pos++];
    if (c == end) return true;
    if (c != '\\' || pos >= s.size()) {
      out += c;
      continue;
    }
    const char escaped = s[pos++];
    switch (escaped) {
      case 'n': out += '\n'; break;
      case 'r': out += '\r'; break;
      case 't': out += '\t'; break;
      case '0': out += '\0'; break;
      case 'x': AppendUtf8(out, ReadHex(s, pos)); break;
      default: out += escaped;
    }
  }
  return false;
}

// The normalised key of a "[key] stamp" line.
std::string KeyOfLine(std::string_view line) {
  const size_t close = line.rfind(']');
  const std::string_view escaped = line.substr(1, close == std::string_view::npos ? line.npos : close - 1);
  size_t pos = 0;
  std::string key;
  Unescape(escaped, pos, '\0', key);
  return NormalKey(key);
}

// The lower-cased name of a value line ("@" for the default value), leaving `pos` after the '='.
std::optional<std::string> ValueName(std::string_view line, size_t& pos) {
  std::string name = "@";
  pos = 1;
  if (line.front() == '"') {
    name.clear();
    if (!Unescape(line, pos, '"', name)) return std::nullopt;
  }
  if (pos >= line.size() || line[pos] != '=') return std::nullopt;
  ++pos;
  return LowerAscii(name);
}

// The text of a string value after its '=' at `pos`; nullopt for values of other types.
std::optional<std::string> StringValue(std::string_view line, size_t pos) {
  const std::string_view rest = line.substr(pos);
  for (const std::string_view opening : {"\"", "str(2):\""}) {
    if (rest.substr(0, opening.size()) == opening) {
      size_t from = pos + opening.size();
      std::string text;
      if (Unescape(line, from, '"', text)) return text;
      return std::nullopt;
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> ReadWineRegistryString(const std::filesystem::path& reg_file,
                                                  const std::vector<std::string>& keys, std::string_view name) {
  std::ifstream in(reg_file, std::ios::binary);
  if (!in) return std::nullopt;
  std::vector<std::string> wanted;
  for (const auto& key : keys) wanted.push_back(NormalKey(key));
  const std::string wanted_name = name.empty() ? "@" : LowerAscii(name);
  std::vector<std::optional<std::string>> found(wanted.size());
  size_t current = wanted.size();  // the priority of the open key; wanted.size() when unwanted
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty()) continue;
    if (line.front() == '[') {
      current = std::find(wanted.begin(), wanted.end(), KeyOfLine(line)) - wanted.begin();
      continue;
    }
    if (current == wanted.size() || found[current] || (line.front() != '"' && line.front() != '@')) continue;
    size_t pos = 0;
    if (ValueName(line, pos) == wanted_name) found[current] = StringValue(line, pos);
    if (current == 0 && found[0]) break;
  }
  for (auto& value : found) {
    if (value) return value;
  }
  return std::nullopt;
}

}  // namespace tsaw::platform
