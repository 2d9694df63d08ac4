#pragma once
// The first step of processing a text: every directive found once, in order, and every
// {$IFDEF}/{$IFNDEF} block matched with its {$ELSE} and {$ENDIF}, so that the later steps find
// them by index instead of reading the text again.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "preprocessor/defines.h"
#include "preprocessor/directive_scanner.h"

namespace tsaw {

// Offsets and indices are 32-bit, which halves the lists of a file made of directives;
// ListDirectives refuses a text too long for them.
inline constexpr std::uint32_t kNoIndex = 0xFFFFFFFF;

// Deeper nesting than any template needs; the limit bounds the blocks a text can leave open,
// which the processor keeps for its life.
inline constexpr std::size_t kMaxNesting = 4096;

// One directive, as 0-based offsets into the text. `Ref` is, for DEFINE and UNDEF, the index of
// the constant it sets (kNoIndex when the table has no such name); for the others the index of
// its block (kNoIndex for an ENDIF with no open block).
struct TListedDirective {
  TDirKind Kind = TDirKind::None;
  std::uint32_t Start = 0;  // the "{$"
  std::uint32_t End = 0;    // just after the "}", or just after the keyword without one
  std::uint32_t Ref = kNoIndex;
};

// One IFDEF/IFNDEF block; If, Else and Endif index TDirectiveList::Directives.
struct TListedBlock {
  std::uint32_t If = 0;
  std::uint32_t Else = kNoIndex;   // its last {$ELSE}
  std::uint32_t Endif = kNoIndex;  // kNoIndex for a block never closed
  std::uint32_t Entry = kNoIndex;  // the constant its name looks up
  std::uint32_t Depth = 1;         // 1 for an outermost block
  bool IsDd = false;               // the name begins with the lower-case letters "dd"
  bool IsDdTrue = false;           // the name is exactly "ddTrue"
  bool Cond = false;               // decided by DecideConditions
};

struct TDirectiveList {
  std::vector<TListedDirective> Directives;
  std::vector<TListedBlock> Blocks;
  std::vector<std::uint32_t> LeftOpen;  // blocks never closed, outermost first
  // Per constant of the table, the indices of the DEFINEs and UNDEFs that set it, in order.
  std::vector<std::vector<std::uint32_t>> SettersOf;
};

// The span of `dir`, a directive listed from `text`.
TDirSpan SpanOf(const TListedDirective& dir, std::string_view text);

// Lists the directives of `text` into `list` (replacing what it held, reusing its memory), looking
// names up in `defines`. Throws TPreprocessorError where the block-by-block resolution would
// stop: at an {$ELSE} with no open block; at the {$ENDIF} that closes an outermost block in which
// some block has a second {$ELSE} (naming the first such {$ELSE} in the text). Throws it also at a
// block nested deeper than kMaxNesting and for a text of 4 GB or more.
void ListDirectives(std::string_view text, const TDefines& defines, TDirectiveList& list);

// 1-based number of the line holding byte `offset` of `text` (CR, LF and CR LF end a line).
std::int64_t LineAt(std::string_view text, std::size_t offset);

}  // namespace tsaw
