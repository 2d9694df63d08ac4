#include "preprocessor/directive_list.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>

#include "preprocessor/preprocessor_error.h"

namespace tsaw {
namespace {

TPreprocessorError NoOpenBlock(std::string_view text, const TListedDirective& dir) {
  const std::string_view written = text.substr(dir.Start, dir.End - dir.Start);
  return TPreprocessorError(
      LineAt(text, dir.Start),
      "\"" + std::string(written) + "\" has no open {$IFDEF} or {$IFNDEF} block");
}

// Matches blocks while the directives are listed.
class Lister {
 public:
  Lister(std::string_view text, const TDefines& defines, TDirectiveList& list)
      : text_(text), defines_(defines), list_(list) {
    list_.Directives.clear();
    list_.Blocks.clear();
    list_.LeftOpen.clear();
    list_.SettersOf.resize(defines.Entries().size());
    for (std::vector<std::uint32_t>& setters : list_.SettersOf) setters.clear();
  }

  void Run() {
    if (text_.size() >= kNoIndex) throw TPreprocessorError(1, "the text is 4 GB or larger");
    TDirScanner scanner(text_);
    // Each span is made in place and each directive filled field by field into the list: a
    // record built aside and copied in whole costs a stall per directive on reading back what was
    // just written.
    for (std::size_t from = 0;;) {
      const TDirSpan span = scanner.NextSpan(from);
      if (span.Kind == TDirKind::None) break;
      from = span.End();
      TListedDirective& dir = list_.Directives.emplace_back();
      dir.Kind = span.Kind;
      dir.Start = static_cast<std::uint32_t>(span.Start);
      dir.End = static_cast<std::uint32_t>(span.End());
      switch (span.Kind) {
        case TDirKind::Define:
        case TDirKind::Undef:
          dir.Ref = OnSetter(span.Name(text_));
          break;
        case TDirKind::Ifdef:
        case TDirKind::Ifndef:
          dir.Ref = OnIf(span);
          break;
        case TDirKind::Else:
          dir.Ref = OnElse(dir);
          break;
        case TDirKind::Endif:
          dir.Ref = OnEndif();
          break;
        case TDirKind::None:
          break;
      }
    }
    list_.LeftOpen = open_;
  }

 private:
  // The index of the directive being listed, the last one in the list.
  std::uint32_t Index() const { return static_cast<std::uint32_t>(list_.Directives.size() - 1); }

  // The constant `name` looks up, or kNoIndex. A run's table holds many constants and a text
  // repeats few names, so each name as written is looked up once.
  std::uint32_t EntryOf(std::string_view name) {
    const unsigned char last = name.empty() ? 0 : static_cast<unsigned char>(name.back());
    RecentName& recent = recent_[(name.size() ^ last) % recent_.size()];
    if (recent.Known && recent.Name == name) return recent.Entry;
    const auto [known, added] = entries_.try_emplace(name, kNoIndex);
    if (added) {
      const std::size_t entry = defines_.IndexOf(name);
      if (entry < defines_.Entries().size()) known->second = static_cast<std::uint32_t>(entry);
    }
    recent = RecentName{name, known->second, true};
    return known->second;
  }

  std::uint32_t OnSetter(std::string_view name) {
    const std::uint32_t entry = EntryOf(name);
    if (entry == kNoIndex) return kNoIndex;
    list_.SettersOf[entry].push_back(Index());
    return entry;
  }

  std::uint32_t OnIf(const TDirSpan& span) {
    if (open_.size() >= kMaxNesting) {
      throw TPreprocessorError(
          LineAt(text_, span.Start),
          "blocks are nested deeper than " + std::to_string(kMaxNesting) + " levels");
    }
    const std::string_view name = span.Name(text_);
    TListedBlock& block = list_.Blocks.emplace_back();  // filled in place, as directives are
    block.If = Index();
    block.Depth = static_cast<std::uint32_t>(open_.size() + 1);
    block.IsDd = name.starts_with("dd");
    block.IsDdTrue = name == "ddTrue";
    block.Entry = EntryOf(name);
    open_.push_back(static_cast<std::uint32_t>(list_.Blocks.size() - 1));
    return open_.back();
  }

  // A second ELSE makes the first one part of the block's then part, where the resolution meets
  // it with no block open; that happens when the outermost block closes.
  std::uint32_t OnElse(const TListedDirective& dir) {
    if (open_.empty()) throw NoOpenBlock(text_, dir);
    TListedBlock& block = list_.Blocks[open_.back()];
    if (block.Else != kNoIndex) first_extra_else_ = std::min(first_extra_else_, block.Else);
    block.Else = Index();
    return open_.back();
  }

  std::uint32_t OnEndif() {
    if (open_.empty()) return kNoIndex;
    const std::uint32_t closed = open_.back();
    list_.Blocks[closed].Endif = Index();
    open_.pop_back();
    if (open_.empty() && first_extra_else_ != kNoIndex) {
      throw NoOpenBlock(text_, list_.Directives[first_extra_else_]);
    }
    return closed;
  }

  std::string_view text_;
  const TDefines& defines_;
  TDirectiveList& list_;
  std::vector<std::uint32_t> open_;
  std::unordered_map<std::string_view, std::uint32_t> entries_;
  // The names met last, by length and last letter: most directives repeat one of a few names,
  // found here without hashing them.
  struct RecentName {
    std::string_view Name;
    std::uint32_t Entry = kNoIndex;
    bool Known = false;
  };
  std::array<RecentName, 16> recent_{};
  std::uint32_t first_extra_else_ = kNoIndex;
};

}  // namespace

void ListDirectives(std::string_view text, const TDefines& defines, TDirectiveList& list) {
  Lister(text, defines, list).Run();
}

TDirSpan SpanOf(const TListedDirective& dir, std::string_view text) {
  TDirSpan span;
  span.Kind = dir.Kind;
  span.Start = dir.Start;
  span.KeywordEnd = dir.Start + 2 + KeywordOf(dir.Kind).size();
  // Without its "}" a directive ends just after its keyword, whose last byte is a letter.
  if (text[dir.End - 1] == '}') span.Close = dir.End - 1;
  return span;
}

std::int64_t LineAt(std::string_view text, std::size_t offset) {
  std::int64_t line = 1;
  for (std::size_t i = 0; i < offset && i < text.size(); ++i) {
    if (text[i] == '\n' || (text[i] == '\r' && (i + 1 >= text.size() || text[i + 1] != '\n'))) {
      ++line;
    }
  }
  return line;
}

}  // namespace tsaw
