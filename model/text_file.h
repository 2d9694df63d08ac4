#pragma once
// Reading and writing text files as the wizard does: bytes in, UTF-8 inside. A file that is not
// valid UTF-8 is taken as Windows-1252 and is written back in Windows-1252.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tsaw {

enum class TTextEncoding { Utf8, Windows1252 };

struct TTextFile {
  std::string Text;  // UTF-8
  TTextEncoding Encoding = TTextEncoding::Utf8;
};

// Decodes bytes: valid UTF-8 stays as it is, anything else is read as Windows-1252.
TTextFile DecodeText(std::string_view bytes);
// Encodes UTF-8 text for writing; characters Windows-1252 lacks become '?'.
std::string EncodeText(std::string_view utf8, TTextEncoding encoding);

// Reads a whole file as bytes; nullopt (with `error` set, when given) when it cannot be read.
std::optional<std::string> ReadFileBytes(const std::filesystem::path& path, std::string* error = nullptr);
// Writes bytes, replacing the file; false (with `error` set, when given) on failure.
bool WriteFileBytes(const std::filesystem::path& path, std::string_view bytes, std::string* error = nullptr);

// Splits text into lines: a line ends at CR, LF or CR LF; a final line break makes no empty line.
std::vector<std::string> SplitLines(std::string_view text);
// Joins lines, each followed by CR LF.
std::string JoinLines(const std::vector<std::string>& lines);

}  // namespace tsaw
