#pragma once
// Reading and writing text files as the wizard does: bytes in, UTF-8 inside. A file that is not
// valid UTF-8 is taken as Windows-1252 and is written back in Windows-1252.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/file_bytes.h"
#include "platform/runtime_text.h"

namespace tsaw {

enum class TTextEncoding { Utf8, Windows1252 };

struct TTextFile {
  std::string Text;  // UTF-8
  TTextEncoding Encoding = TTextEncoding::Utf8;
};

// Decodes bytes: valid UTF-8 stays as it is (a byte-order mark included, so that writing the
// text back gives the same bytes), anything else is read as Windows-1252, whose 256 bytes all
// decode to distinct characters.
TTextFile DecodeText(std::string_view bytes);
// The same, taking over the bytes' memory when they are UTF-8.
TTextFile DecodeText(std::string&& bytes);
// Encodes UTF-8 text for writing; characters Windows-1252 lacks, and bytes that are not UTF-8,
// become '?'.
std::string EncodeText(std::string_view utf8, TTextEncoding encoding);

// Files are read and written as the runtime's line lists: a line ends at CR, LF or CR LF, and
// lines are written with CR LF.
using platform::JoinLines;
using platform::SplitLines;

}  // namespace tsaw
