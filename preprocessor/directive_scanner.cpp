#include "preprocessor/directive_scanner.h"

#include <array>

#include "platform/runtime_text.h"
#include "platform/find_bytes.h"

namespace tsaw {
namespace {

using platform::Trim;

// Indexed by TDirKind; index 0 is never tried.
constexpr std::array<std::string_view, 7> kKeywords = {"",       "DEFINE", "UNDEF", "IFDEF",
                                                       "IFNDEF", "ELSE",   "ENDIF"};

char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// True when `keyword` (upper case) stands at `pos` in `text`, in any letter case.
bool KeywordAt(std::string_view text, std::size_t pos, std::string_view keyword) {
  if (text.size() - pos < keyword.size()) return false;
  for (std::size_t i = 0; i < keyword.size(); ++i) {
    if (AsciiUpper(text[pos + i]) != keyword[i]) return false;
  }
  return true;
}

// The kind whose keyword follows the "{$" at `open`, or None.
TDirKind KindAt(std::string_view text, std::size_t open) {
  for (std::size_t kind = 1; kind < kKeywords.size(); ++kind) {
    if (KeywordAt(text, open + 2, kKeywords[kind])) return static_cast<TDirKind>(kind);
  }
  return TDirKind::None;
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
    found_at_ = text_.find('}', from);
  }
  return found_at_;
}

TNextDirResult TDirScanner::Next(std::int64_t FromPos) {
  TNextDirResult result;
  std::size_t search = FromPos < 1 ? 0 : static_cast<std::size_t>(FromPos - 1);
  std::size_t open = std::string_view::npos;
  while (search < text_.size()) {
    open = platform::FindBytes(text_, "{$", search);
    if (open == std::string_view::npos) return result;
    result.Kind = KindAt(text_, open);
    if (result.Kind != TDirKind::None) break;
    search = open + 2;
  }
  if (result.Kind == TDirKind::None) return result;

  const std::size_t after_keyword =
      open + 2 + kKeywords[static_cast<std::size_t>(result.Kind)].size();
  result.StartPos = static_cast<std::int64_t>(open) + 1;
  result.NextPos = static_cast<std::int64_t>(after_keyword) + 1;
  const std::size_t close = FindCloseBrace(after_keyword);
  if (close != std::string_view::npos) {
    result.Name = Trim(text_.substr(after_keyword, close - after_keyword));
    result.Text = text_.substr(open, close - open + 1);
    result.NextPos = static_cast<std::int64_t>(close) + 2;
  }
  return result;
}

TNextDirResult NextDir(std::string_view InputText, std::int64_t FromPos) {
  return TDirScanner(InputText).Next(FromPos);
}

}  // namespace tsaw
