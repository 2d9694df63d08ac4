#pragma once
// Inside the model: an index of the variable table's tokens, built once per expansion, so that
// finding references costs in proportion to the references in a text rather than to the size of
// the table. It gives the same answers as searching every token of every variable in turn.
// Sub-items are recognised by their number: their names hold "Plugin[n]" and their tokens begin
// with "vrPlugin" + n or "vrPlugin[n]", as ResizePinSubArray makes them.

#include <array>
#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/expand.h"
#include "model/wizard.h"

namespace tsaw {

// One item whose name or token stands at a place of a text.
struct TItemMatch {
  uint16_t var = 0;
  int plugin = 0;  // 0 for the variable's own name or token
  size_t length = 0;
};

// One token of one variable found in a text.
struct TTokenHit {
  bool found = false;
  int plugin = 0;     // the sub-item whose token matched; 0 for the variable's own token
  std::string token;  // the text to replace
};

// A hash for the table's names and tokens, cheap enough to run at every candidate of a text:
// the length and the first and last eight bytes decide it; keys that share them only share a
// bucket, where the full comparison tells them apart.
struct TShortKeyHash {
  size_t operator()(std::string_view key) const;
};

class TTokenIndex {
 public:
  // The wizard must outlive the index; names and tokens must not change while it is in use.
  explicit TTokenIndex(const TWizard& wizard);

  const TWizard& wizard() const { return wizard_; }
  uint16_t last() const { return last_; }
  // The number of the variable's sub-items that are searched (0 when none are).
  uint16_t pin_bound(uint16_t v) const { return pin_bound_[v]; }
  // Variables plus searched sub-items: no chain of references without a cycle is longer.
  uint32_t item_count() const { return item_count_; }
  // True when no token holds a line feed, so no token can ever span one.
  bool lines_independent() const { return lines_independent_; }

  // The numbers above `above` of the variables with a token of the given forms in `text`,
  // ascending, each once.
  void Collect(std::string_view text, uint16_t above, bool names, bool idents,
               std::vector<uint16_t>& out) const;
  // The token of `v` that a search in number order finds first: its own, else the sub-item with
  // the lowest number.
  TTokenHit FindFirst(std::string_view text, uint16_t v, TFindMode mode) const;

  // Gathers what a scan of the whole text in one go needs (the bytes of every name and token,
  // sub-items' included); an index that is used for many texts does it once.
  void PrepareScan();
  bool scan_ready() const { return scan_ready_; }
  // What the scan relies on: every name free of '#', every token beginning with "vr" and free
  // of '#'. Meaningful once the scan is prepared.
  bool plain_tokens() const { return plain_tokens_; }
  size_t longest_name() const { return longest_name_; }
  size_t longest_token() const { return longest_token_; }
  // Whether some name, or some token, holds the byte.
  bool InSomeName(char c) const { return name_bytes_[static_cast<unsigned char>(c)]; }
  bool InSomeToken(char c) const { return token_bytes_[static_cast<unsigned char>(c)]; }
  // The item whose name is exactly `span` that the passes replace first (lowest variable, its
  // own name before its sub-items'); false when there is none.
  // Inline, because most spans between two '#' of a text are no name and the length and last
  // byte already tell.
  bool NameItem(std::string_view span, TItemMatch& match) const {
    return !span.empty() && span.size() <= longest_name_ &&
           name_ends_[span.size()][static_cast<unsigned char>(span.back())] && LookUpName(span, match);
  }
  // Every item whose token begins at `pos` (which holds "vr"), into `out`.
  void TokenItemsAt(std::string_view text, size_t pos, std::vector<TItemMatch>& out) const;

 private:
  void AddVariable(uint16_t v);
  void AddBytes(const TVariableItem& item);
  bool LookUpName(std::string_view span, TItemMatch& match) const;
  void CollectNames(std::string_view text, uint16_t above, std::vector<uint16_t>& out) const;
  void CollectIdents(std::string_view text, uint16_t above, std::vector<uint16_t>& out) const;
  const TVariableItem* PinItem(uint16_t v, int n) const;
  const std::vector<size_t>& TokenLengthsAt(std::string_view text, size_t pos) const;
  TTokenHit FindFirstName(std::string_view text, uint16_t v) const;
  TTokenHit FindFirstIdent(std::string_view text, uint16_t v) const;

  const TWizard& wizard_;
  uint16_t last_ = 0;
  uint32_t item_count_ = 0;
  bool lines_independent_ = true;
  bool scan_ready_ = false;
  bool plain_tokens_ = true;
  size_t longest_name_ = 0;
  size_t longest_token_ = 0;
  std::array<bool, 256> name_bytes_{};
  std::array<bool, 256> token_bytes_{};
  std::vector<uint16_t> pin_bound_;
  std::vector<uint16_t> pin_vars_;     // variables with searched sub-items
  std::vector<uint16_t> slow_names_;   // names holding '#': searched directly
  std::vector<uint16_t> slow_tokens_;  // tokens not beginning with "vr": searched directly
  std::vector<uint8_t> slow_;          // per variable: 1 name searched directly, 2 token
  std::unordered_map<std::string_view, uint16_t, TShortKeyHash> first_by_name_;
  std::unordered_map<std::string_view, uint16_t, TShortKeyHash> first_by_token_;
  std::vector<uint16_t> next_same_name_;
  std::vector<uint16_t> next_same_token_;
  std::vector<size_t> token_lengths_;
  // Per byte: the lengths of the tokens whose third byte it is (and of a token "vr"), ascending,
  // so that a "vr" of a text is tried only against the lengths that can match there.
  std::array<std::vector<size_t>, 256> token_lengths_by_third_;
  std::vector<std::bitset<256>> token_ends_;  // per length: the last bytes of the tokens that long
  std::vector<std::bitset<256>> name_ends_;   // the same for every name, sub-items' included
};

// False only when `s` surely holds no reference: no '#', no "vr", and every token begins with "vr".
bool MayHoldReference(const TWizard& wizard, std::string_view s);

// What ReplaceAllInto returns when the result would have been longer than its limit.
inline constexpr size_t kReplacementTooLarge = static_cast<size_t>(-1);

// Replaces every occurrence of `from` (non-empty) in `text` by `to`, writing the result to `out`
// only when there was one; returns the number of occurrences. When the result would be longer
// than `limit` it stops before growing `out` past it and returns kReplacementTooLarge (`out` then
// holds no useful text).
size_t ReplaceAllInto(std::string_view text, std::string_view from, std::string_view to, std::string& out,
                      size_t limit = kReplacementTooLarge);

// ExpandVar with a ready index; the result is never longer than `size_limit` (TooLarge instead).
// References to variable `kept` (0: none) are left as they stand.
TExpandOutcome ExpandWithIndex(const TTokenIndex& index, std::string_view s, bool one_pass, std::string& res,
                               const std::vector<std::string>& pairs, size_t size_limit, uint16_t kept = 0);


}  // namespace tsaw
