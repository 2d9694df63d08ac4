#pragma once
// Recognising template directives ({$DEFINE}, {$UNDEF}, {$IFDEF}, {$IFNDEF}, {$ELSE}, {$ENDIF}) in
// the text of a source file. Positions are 1-based, as the template author counts them.

#include <cstdint>
#include <string>
#include <string_view>

namespace tsaw {

// The directive kinds, in the order the scanner tries their keywords.
enum class TDirKind : std::uint8_t { None = 0, Define, Undef, Ifdef, Ifndef, Else, Endif };

// One directive found by the scanner. Zero-filled (Kind None, StartPos 0) when none was found.
struct TNextDirResult {
  TDirKind Kind = TDirKind::None;
  std::int64_t StartPos = 0;  // position of "{$"
  std::int64_t NextPos = 0;   // just after the closing "}", or just after the keyword without one
  std::string Name;           // trimmed text between keyword and "}", as written; empty without "}"
  std::string Text;           // "{$" through "}" as written; empty without "}"
};

// Where one directive stands in a text, as 0-based offsets; what the processor needs of it without
// copying its name or text.
struct TDirSpan {
  static constexpr std::size_t kNoBrace = static_cast<std::size_t>(-1);
  TDirKind Kind = TDirKind::None;
  std::size_t Start = 0;       // the "{$"
  std::size_t KeywordEnd = 0;  // just after the keyword
  std::size_t Close = kNoBrace;  // the closing "}"

  // Just after the "}", or just after the keyword without one.
  std::size_t End() const { return Close == kNoBrace ? KeywordEnd : Close + 1; }
  // The trimmed name; empty without "}".
  std::string_view Name(std::string_view text) const;
  // "{$" through "}" as written; empty without "}".
  std::string_view Text(std::string_view text) const;
};

// The keyword of `kind` in upper case ("IFDEF"); empty for None.
std::string_view KeywordOf(TDirKind kind);

// Position of the first `Sub` in `S` at or after `From` (case-sensitive), or 0 when there is none
// or `From` lies past the last place `Sub` could start. A `From` below 1 searches from the start;
// an empty `Sub` is never found.
std::int64_t PosFrom(std::string_view Sub, std::string_view S, std::int64_t From);

// Scans one text for directives. Keywords match in any letter case ("{$ifdef" is IFDEF) and as a
// prefix ("{$IFDEFX}" is IFDEF with name "X", "{$ELSEIF}" is ELSE with name "IF"); any other "{$"
// directive is ordinary text. Remembers where the last "}" search ended, so scanning a whole text
// stays linear even when many directives lack their "}". The text must outlive the scanner.
class TDirScanner {
 public:
  explicit TDirScanner(std::string_view text) : text_(text) {}
  // The first directive whose "{$" lies at or after `FromPos`; Kind None when there is none.
  TNextDirResult Next(std::int64_t FromPos);
  // The same, from the 0-based offset `from`, without copying.
  TDirSpan NextSpan(std::size_t from);

 private:
  std::size_t FindCloseBrace(std::size_t from);

  std::string_view text_;
  std::size_t searched_from_ = std::string_view::npos;  // start of the last "}" search
  std::size_t found_at_ = std::string_view::npos;       // its result (npos: none)
};

// The first directive at or after `FromPos` in `InputText`; see TDirScanner.
TNextDirResult NextDir(std::string_view InputText, std::int64_t FromPos);

}  // namespace tsaw
