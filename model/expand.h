#pragma once
// Variable references in text: the name form #Name# and the identifier form vrName. Matching is
// case-sensitive; every replacement replaces all occurrences, left to right.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/wizard.h"

namespace tsaw {

enum class TFindMode { Name = 0, Identifier = 1 };

// Looks for a reference to a variable in `s` (from 1-based `start_pos` on when it is above 0).
// `var_idx` 0 searches every variable in number order; the lowest number wins.
TFindVarResult FindVar(const TWizard& wizard, std::string_view s, TFindMode mode, uint16_t var_idx = 0,
                       int start_pos = 0);

// How a full expansion ended: completely, or stopped at one of its two bounds.
enum class TExpandOutcome {
  Complete,
  TooManyPasses,  // references were still left after the pass bound (a cycle)
  TooLarge,       // the text would have outgrown ExpansionGrowthBound
};

// The most one expansion may add to a text of `input_size` bytes: 1,000 times its size in whole
// MB, rounded up, at least 1 MB and at most 64 MB. No sensible template or answer comes near it;
// a value that feeds on itself reaches it after a few passes. It is checked before each
// replacement is built, so memory never holds more than this beyond the input.
size_t ExpansionGrowthBound(size_t input_size);
// The longest result an expansion of `s` may have: its size plus its growth bound.
size_t ExpansionLimitFor(std::string_view s);

// Expands `s` into `res` (which may be the text `s` views). `one_pass` makes a single pass over
// the table; otherwise passes repeat until no reference is left. A cycle that the
// circular-reference check did not neutralise (or a value that brings its own token back, or
// makes the text grow without end) stops the expansion at a bound: `res` then holds the text as
// far as it got and the outcome names the bound. Passes are bounded by one more than the
// longest chain of references the table can hold without a cycle; the size by
// ExpansionLimitFor(s). `pairs` is taken two by two as (from, to) replacements applied to each
// value before it is inserted; an odd count is ignored. Sub-items are found by the names and
// tokens that ResizePinSubArray gives them.
TExpandOutcome ExpandVar(const TWizard& wizard, std::string_view s, bool one_pass, std::string& res,
                         const std::vector<std::string>& pairs = {});
class TTokenIndex;

// The variable table's names and tokens made ready for many expansions, such as those of a
// creation run's files. Values may change between expansions; names, tokens, the plug-in count
// and the table itself must not while it is in use. The wizard must outlive it.
class TExpansionTable {
 public:
  explicit TExpansionTable(const TWizard& wizard);
  ~TExpansionTable();
  TExpansionTable(const TExpansionTable&) = delete;
  TExpansionTable& operator=(const TExpansionTable&) = delete;
  const TTokenIndex& Index() const { return *index_; }
  const TWizard& Wizard() const { return wizard_; }

 private:
  const TWizard& wizard_;
  std::unique_ptr<TTokenIndex> index_;
};

// ExpandVar over a prepared table: the same result, without preparing the table each time.
TExpandOutcome ExpandVar(const TExpansionTable& table, std::string_view s, bool one_pass, std::string& res,
                         const std::vector<std::string>& pairs = {});
// The message for an expansion of `what`, a text of `input_size` bytes, that stopped at a bound,
// for instance "The expansion of Copyright exceeds 1 MB."; empty for a complete one.
std::string ExpansionBoundMessage(std::string_view what, TExpandOutcome outcome, size_t input_size);
// Convenience: the full expansion of `s`.
std::string ExpandVar(const TWizard& wizard, std::string_view s);
std::string ExpandVar(const TExpansionTable& table, std::string_view s);

// The number of the variable named exactly `name` among 1..count (0 = the variable count); 0 when none.
uint16_t FindVarByName(const TWizard& wizard, std::string_view name, uint16_t count = 0);
// As FindVarByName, after dropping the first 7 characters ("Lookup.").
uint16_t FindLookupVar(const TWizard& wizard, std::string_view name, uint16_t count = 0);

// Reports a circular reference to the user; the check calls it with the variable's name.
using TCvrNotifier = std::function<void(const std::string& message)>;
// The circular-reference check: the number of the first variable found in a cycle, whose value
// it has then made harmless, or 0. Cycles among other variables do not hang it.
uint16_t AnyCvrError(TWizard& wizard, const TCvrNotifier& notify);

// The identifier form of a text: 'Product Name 2' -> 'Product_Name_2', '2.2.05' -> '_2_2_05'.
std::string Str2Idf(std::string_view s);

// `text` with every occurrence of `from` replaced by `to`, left to right, without re-scanning
// replaced text; an empty `from` changes nothing.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

// Turns a one-line text with separator `pipe` (one UTF-8 character) into CR LF separated lines.
std::string Piped2Text(std::string_view s, std::string_view pipe);

}  // namespace tsaw
