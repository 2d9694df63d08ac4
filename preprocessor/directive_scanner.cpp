#include "preprocessor/directive_scanner.h"

#include <array>

#include "platform/find_bytes.h"
#include "platform/runtime_text.h"

namespace tsaw {
namespace {

using platform::Trim;

// Indexed by TDirKind; index 0 is never tried.
constexpr std::array<std::string_view, 7> kKeywords = {"",       "DEFINE", "UNDEF", "IFDEF",
                                                       "IFNDEF", "ELSE",   "ENDIF"};

char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// True when `keyword` (upper case letters) stands at `pos` in `text`, in any letter case. Setting
// bit 0x20 turns only the two cases of a letter into its lower case, so one OR per byte folds the
// case, and the differences are gathered without a branch per byte.
bool KeywordAt(std::string_view text, std::size_t pos, std::string_view keyword) {
  if (text.size() - pos < keyword.size()) return false;
  unsigned char folded = 0;
  for (std::size_t i = 0; i < keyword.size(); ++i) {
    folded |= static_cast<unsigned char>((text[pos + i] | 0x20) ^ (keyword[i] | 0x20));
  }
  return folded == 0;
}

// The kind whose keyword follows the "{$" at `open`, or None. No keyword begins another, so the
// first letter picks the one or two to try.
TDirKind KindAt(std::string_view text, std::size_t open) {
  if (text.size() - open < 3) return TDirKind::None;
  auto try_kind = [&](TDirKind kind) {
    return KeywordAt(text, open + 2, kKeywords[static_cast<std::size_t>(kind)]);
  };
  switch (AsciiUpper(text[open + 2])) {
    case 'D':
      return try_kind(TDirKind::Define) ? TDirKind::Define : TDirKind::None;
    case 'U':
      return try_kind(TDirKind::Undef) ? TDirKind::Undef : TDirKind::None;
    case 'I':
      if (try_kind(TDirKind::Ifdef)) return TDirKind::Ifdef;
      return try_kind(TDirKind::Ifndef) ? TDirKind::Ifndef : TDirKind::None;
    case 'E':
      if (try_kind(TDirKind::Else)) return TDirKind::Else;
      return try_kind(TDirKind::Endif) ? TDirKind::Endif : TDirKind::None;
    default:
      return TDirKind::None;
  }
}

// The first "{$" at or after `from`, or npos: FindByte finds each "{", one comparison the "$".
std::size_t FindDirectiveStart(std::string_view text, std::size_t from) {
  const std::string_view searched = text.substr(0, text.empty() ? 0 : text.size() - 1);
  for (std::size_t at = platform::FindByte(searched, '{', from); at != std::string_view::npos;
       at = platform::FindByte(searched, '{', at + 1)) {
    if (text[at + 1] == '$') return at;
  }
  return std::string_view::npos;
}

}  // namespace

std::int64_t PosFrom(std::string_view Sub, std::string_view S, std::int64_t From) {
  if (Sub.empty()) return 0;
  const std::size_t from = From < 1 ? 0 : static_cast<std::size_t>(From - 1);
  if (from > S.size()) return 0;
  const std::size_t found = S.find(Sub, from);
  return found == std::string_view::npos ? 0 : static_cast<std::int64_t>(found) + 1;
}

std::size_t TDirScanner::FindCloseBrace(std::size_t from) {
  // Once a search from `searched_from_` found its "}" at or after `from`, it is also the first one
  // at or after `from`; a search that found nothing holds for every later start.
  const bool cached = searched_from_ != std::string_view::npos && from >= searched_from_ &&
                      (found_at_ == std::string_view::npos || found_at_ >= from);
  if (!cached) {
    searched_from_ = from;
    found_at_ = platform::FindByte(text_, '}', from);
  }
  return found_at_;
}

std::string_view KeywordOf(TDirKind kind) { return kKeywords[static_cast<std::size_t>(kind)]; }

std::string_view TDirSpan::Name(std::string_view text) const {
  if (Close == kNoBrace) return {};
  return Trim(text.substr(KeywordEnd, Close - KeywordEnd));
}

std::string_view TDirSpan::Text(std::string_view text) const {
  if (Close == kNoBrace) return {};
  return text.substr(Start, Close + 1 - Start);
}

TDirSpan TDirScanner::NextSpan(std::size_t from) {
  TDirSpan span;
  while (from < text_.size()) {
    const std::size_t open = FindDirectiveStart(text_, from);
    if (open == std::string_view::npos) return span;
    span.Kind = KindAt(text_, open);
    if (span.Kind != TDirKind::None) {
      span.Start = open;
      span.KeywordEnd = open + 2 + KeywordOf(span.Kind).size();
      const std::size_t close = FindCloseBrace(span.KeywordEnd);
      if (close != std::string_view::npos) span.Close = close;
      return span;
    }
    from = open + 2;
  }
  return span;
}

TNextDirResult TDirScanner::Next(std::int64_t FromPos) {
  const TDirSpan span = NextSpan(FromPos < 1 ? 0 : static_cast<std::size_t>(FromPos - 1));
  TNextDirResult result;
  if (span.Kind == TDirKind::None) return result;
  result.Kind = span.Kind;
  result.StartPos = static_cast<std::int64_t>(span.Start) + 1;
  result.NextPos = static_cast<std::int64_t>(span.End()) + 1;
  result.Name = span.Name(text_);
  result.Text = span.Text(text_);
  return result;
}

TNextDirResult NextDir(std::string_view InputText, std::int64_t FromPos) {
  return TDirScanner(InputText).Next(FromPos);
}

}  // namespace tsaw
