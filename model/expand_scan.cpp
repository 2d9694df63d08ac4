// The single scan and the conditions under which it gives what the passes give:
// 1. Every name is free of '#' and every token begins with "vr" and is free of '#', so '#' and
//    "vr" mark every place where a reference can stand.
// 2. No two references in the text overlap; each is then replaced whatever the order.
// 3. No inserted value holds a '#' or a "vr", and no "vr" can arise where a value meets its
//    neighbours, so every "#" and "vr" of every intermediate text stands in the original text.
// 4. No reference can be made up around a value: a name needs a '#' before and after a replaced
//    reference with only bytes of names between them; a token needs a "vr" followed, up to the
//    next reference, by bytes of tokens only. Either declines the scan.
// Then no text between the passes' steps holds a reference that the original text did not hold,
// each step replaces exactly the original references of its token, and one pass ends it all.

#include "model/expand_scan.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "model/variables.h"
#include "platform/find_bytes.h"

namespace tsaw {

using platform::FindBytes;
namespace {

constexpr std::string_view kPairMarker = "[tEmP.sTr]";

struct Occurrence {
  size_t start = 0;
  size_t end = 0;
  const TVariableItem* item = nullptr;
  bool ident = false;
  uint16_t own_var = 0;  // the variable when the item is its own, not a sub-item
};

// What a text's scan knows about a value it inserts: whether it holds a '#' or a "vr".
enum class MarkCheck : uint8_t { NotYet, Clean, Marked };

bool Overlaps(std::string_view text, const std::string& res) {
  const auto text_at = reinterpret_cast<uintptr_t>(text.data());
  const auto res_at = reinterpret_cast<uintptr_t>(res.data());
  return text_at < res_at + res.capacity() && res_at < text_at + text.size();
}

bool HoldsMark(std::string_view value) {
  return value.find('#') != std::string_view::npos || FindBytes(value, "vr") != std::string_view::npos;
}

// The match a search in number order reaches first: the lowest variable, its own name or
// token before its sub-items', then the lowest sub-item.
bool Before(const TItemMatch& a, const TItemMatch& b) {
  if (a.var != b.var) return a.var < b.var;
  return a.plugin < b.plugin;
}

class OneScan {
 public:
  OneScan(const TTokenIndex& index, std::string_view text, const std::vector<std::string>& pairs)
      : index_(index), wizard_(index.wizard()), text_(text), pairs_(pairs) {}

  bool Run(size_t size_bound, std::string& res) {
    if (!index_.scan_ready() || !index_.plain_tokens()) return false;
    FindMarks();
    if (!CollectNames() || !CollectTokens() || !Merge()) return false;
    FindGapReferences();
    if (!NoNameCanForm() || !NoTokenCanForm()) return false;
    size_t size = 0;
    if (!Plan(size_bound, size)) return false;
    // Writing into `res` keeps its memory from text to text, unless the text is `res` itself.
    std::string fresh;
    std::string& out = Overlaps(text_, res) ? fresh : res;
    out.clear();
    out.reserve(size);
    Write(out);
    if (&out == &fresh) res = std::move(fresh);
    return true;
  }

 private:
  const TVariableItem* ItemOf(const TItemMatch& match) const {
    if (match.plugin > 0) return wizard_.Variables[match.var].Pins[match.plugin].get();
    return &CurrentItem(wizard_, match.var);
  }

  static uint16_t OwnVar(const TItemMatch& match) { return match.plugin > 0 ? 0 : match.var; }

  // Every '#' and every "vr" of the text, in one pass.
  void FindMarks() {
    platform::ForEachOfTwoBytes(text_, '#', 'v', [this](size_t at) {
      if (text_[at] == '#') {
        hashes_.push_back(at);
      } else if (at + 1 < text_.size() && text_[at + 1] == 'r') {
        vrs_.push_back(at);
      }
    });
  }

  bool CollectNames() {
    name_gap_.assign(hashes_.empty() ? 0 : hashes_.size() - 1, false);
    TItemMatch match;
    for (size_t i = 0; i < name_gap_.size(); ++i) {
      const size_t open = hashes_[i];
      if (!index_.NameItem(text_.substr(open + 1, hashes_[i + 1] - open - 1), match)) continue;
      name_gap_[i] = true;
      names_.push_back({open, hashes_[i + 1] + 1, ItemOf(match), false, OwnVar(match)});
    }
    return true;
  }

  bool CollectTokens() {
    std::vector<TItemMatch> matches;
    for (const size_t at : vrs_) {
      index_.TokenItemsAt(text_, at, matches);
      if (matches.empty()) continue;
      const TItemMatch* first = &matches.front();
      for (const TItemMatch& match : matches) {
        if (match.length != first->length) return false;  // two tokens overlap
        if (Before(match, *first)) first = &match;
      }
      idents_.push_back({at, at + first->length, ItemOf(*first), true, OwnVar(*first)});
    }
    return true;
  }

  bool Merge() {
    all_.resize(names_.size() + idents_.size());
    std::merge(names_.begin(), names_.end(), idents_.begin(), idents_.end(), all_.begin(),
               [](const Occurrence& a, const Occurrence& b) { return a.start < b.start; });
    for (size_t i = 1; i < all_.size(); ++i) {
      if (all_[i].start < all_[i - 1].end) return false;
    }
    return true;
  }

  // Per gap between neighbouring '#' marks: the first reference at or after its first byte.
  void FindGapReferences() {
    gap_reference_.resize(name_gap_.size());
    size_t next = 0;
    for (size_t gap = 0; gap < name_gap_.size(); ++gap) {
      while (next < all_.size() && all_[next].start <= hashes_[gap]) ++next;
      gap_reference_[gap] = next;
    }
  }

  bool HasReference(size_t gap) const {
    const size_t next = gap_reference_[gap];
    return next < all_.size() && all_[next].start < hashes_[gap + 1];
  }

  // True when every byte of the gap outside the references is one that some name holds.
  bool OnlyNameBytes(size_t gap) const {
    const size_t to = hashes_[gap + 1];
    size_t next = gap_reference_[gap];
    for (size_t at = hashes_[gap] + 1; at < to;) {
      if (next < all_.size() && all_[next].start == at) {
        at = all_[next++].end;
      } else if (!index_.InSomeName(text_[at++])) {
        return false;
      }
    }
    return true;
  }

  // The text between two '#' marks can turn into a name only around a replaced reference.
  bool NoNameCanForm() const {
    for (size_t gap = 0; gap < name_gap_.size(); ++gap) {
      if (name_gap_[gap]) {
        if (gap > 0 && gap + 1 < name_gap_.size() && OnlyNameBytes(gap - 1) && OnlyNameBytes(gap + 1)) return false;
      } else if (HasReference(gap) && OnlyNameBytes(gap)) {
        return false;
      }
    }
    return true;
  }

  // A token beginning at a "vr" of the text can take in a replaced value only when the bytes up
  // to the next reference could all belong to it.
  bool NoTokenCanForm() const {
    auto next = all_.begin();
    for (const size_t at : vrs_) {
      while (next != all_.end() && next->start <= at) ++next;
      if (next == all_.end()) return true;
      if (next->start - at >= index_.longest_token()) continue;
      const std::string_view between = text_.substr(at, next->start - at);
      if (std::all_of(between.begin(), between.end(), [this](char c) { return index_.InSomeToken(c); })) {
        return false;
      }
    }
    return true;
  }

  std::string_view ValueOf(const Occurrence& occurrence) {
    if (occurrence.ident) return occurrence.item->IdfValue;
    if (pairs_.empty() || pairs_.size() % 2 != 0) return occurrence.item->Value;
    for (const auto& [item, value] : paired_) {
      if (item == occurrence.item) return value;
    }
    std::string value = occurrence.item->Value;
    for (size_t i = 0; i < pairs_.size(); i += 2) {
      value = ReplaceAll(ReplaceAll(value, pairs_[i], kPairMarker), kPairMarker, pairs_[i + 1]);
    }
    return paired_.emplace_back(occurrence.item, std::move(value)).second;
  }

  // A variable's own values are looked at once a text, since most references repeat a few.
  bool ValueHoldsMark(const Occurrence& occurrence, std::string_view value) {
    if (occurrence.own_var == 0) return HoldsMark(value);
    if (marks_.empty()) marks_.resize(2 * (index_.last() + 1), MarkCheck::NotYet);
    MarkCheck& known = marks_[2 * occurrence.own_var + (occurrence.ident ? 1 : 0)];
    if (known == MarkCheck::NotYet) known = HoldsMark(value) ? MarkCheck::Marked : MarkCheck::Clean;
    return known == MarkCheck::Marked;
  }

  // False when the value could bring in a "#" or a "vr", or join its neighbours into a "vr".
  bool Insertable(const Occurrence& occurrence, std::string_view value) {
    if (ValueHoldsMark(occurrence, value)) return false;
    const char before = occurrence.start > 0 ? text_[occurrence.start - 1] : '\0';
    const char after = occurrence.end < text_.size() ? text_[occurrence.end] : '\0';
    if (value.empty()) return before != 'v' && after != 'r';
    return !(value.front() == 'r' && before == 'v') && !(value.back() == 'v' && after == 'r');
  }

  // Checks the result before any of it is written: every value insertable, no "vr" formed where
  // two pieces meet, no more than `size_bound` bytes. On success `size` is its exact size.
  bool Plan(size_t size_bound, size_t& size) {
    size = 0;
    char last = '\0';
    const auto add = [&](std::string_view piece) {
      if (piece.empty()) return true;
      if (last == 'v' && piece.front() == 'r') return false;
      size += piece.size();
      last = piece.back();
      return size <= size_bound;
    };
    size_t pos = 0;
    for (const Occurrence& occurrence : all_) {
      const std::string_view value = ValueOf(occurrence);
      if (!Insertable(occurrence, value) || !add(text_.substr(pos, occurrence.start - pos)) || !add(value)) {
        return false;
      }
      pos = occurrence.end;
    }
    return add(text_.substr(pos));
  }

  void Write(std::string& out) {
    size_t pos = 0;
    for (const Occurrence& occurrence : all_) {
      out.append(text_.substr(pos, occurrence.start - pos)).append(ValueOf(occurrence));
      pos = occurrence.end;
    }
    out.append(text_.substr(pos));
  }

  const TTokenIndex& index_;
  const TWizard& wizard_;
  std::string_view text_;
  const std::vector<std::string>& pairs_;
  std::vector<size_t> hashes_;
  std::vector<bool> name_gap_;  // per pair of neighbouring '#': the text between is a reference
  std::vector<size_t> gap_reference_;
  std::vector<size_t> vrs_;
  std::vector<Occurrence> names_, idents_, all_;
  std::vector<std::pair<const TVariableItem*, std::string>> paired_;
  std::vector<MarkCheck> marks_;  // per variable and form (name, token)
};

}  // namespace

bool ExpandInOneScan(const TTokenIndex& index, std::string_view s, const std::vector<std::string>& pairs,
                     size_t size_bound, std::string& res) {
  return OneScan(index, s, pairs).Run(size_bound, res);
}

}  // namespace tsaw
