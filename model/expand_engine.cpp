// ExpandVar: variables are expanded in number order, each to exhaustion, in passes repeated until
// no reference is left. The text is cut at its line feeds: no token holds one, so no replacement
// can ever join two lines, and each variable only needs to visit the lines that refer to it.

#include <algorithm>
#include <map>

#include "model/expand.h"
#include "model/expand_index.h"
#include "model/expand_scan.h"
#include "model/variables.h"
#include "platform/find_bytes.h"
#include "platform/debug_log.h"

namespace tsaw {

using platform::FindBytes;
namespace {

constexpr std::string_view kPairMarker = "[tEmP.sTr]";

struct Segment {
  std::string_view text;
  std::string own;  // the text once it has changed
  bool dirty = true;  // may hold references
};

class Expander {
 public:
  Expander(const TTokenIndex& index, const std::vector<std::string>& pairs, std::string_view s, size_t size_limit,
           uint16_t kept);
  TExpandOutcome Run(bool one_pass);
  std::string Result() const;

 private:
  struct PassResult {
    bool had_refs = false;
    bool changed = false;
  };
  PassResult RunPass(bool scan_only);
  void ExpandVariable(uint16_t v, const std::vector<uint32_t>& segments);
  TTokenHit FindBest(uint16_t v, TFindMode mode, const std::vector<uint32_t>& segments) const;
  std::string ReplacementFor(uint16_t v, int plugin, TFindMode mode) const;
  bool ReplaceIn(const std::vector<uint32_t>& segments, const std::string& token, const std::string& value);

  const TTokenIndex& index_;
  const TWizard& wizard_;
  const std::vector<std::string>& pairs_;
  std::vector<Segment> segments_;
  // Per variable referred to: the segments that refer to it. Sparse, so that an expansion costs
  // in proportion to the references it meets, not to the size of the table.
  std::map<uint16_t, std::vector<uint32_t>> pending_;
  std::vector<uint32_t> changed_;
  std::vector<uint16_t> present_;
  std::string buffer_;
  size_t size_ = 0;
  size_t size_bound_ = 0;
  bool bound_hit_ = false;
  bool too_large_ = false;
  uint16_t kept_ = 0;  // a variable whose references are left in place
};

Expander::Expander(const TTokenIndex& index, const std::vector<std::string>& pairs, std::string_view s,
                   size_t size_limit, uint16_t kept)
    : index_(index), wizard_(index.wizard()), pairs_(pairs), size_(s.size()), size_bound_(size_limit), kept_(kept) {
  size_t lines = 1;
  if (index_.lines_independent()) lines += std::count(s.begin(), s.end(), '\n');
  segments_.resize(lines);
  size_t start = 0;
  for (size_t i = 0; i + 1 < lines; ++i) {
    const size_t end = s.find('\n', start) + 1;
    segments_[i].text = s.substr(start, end - start);
    start = end;
  }
  segments_.back().text = s.substr(start);
}

TExpandOutcome Expander::Run(bool one_pass) {
  // An acyclic chain of references takes at most one pass per variable or sub-item.
  const uint32_t max_passes = index_.item_count() + 2;
  for (uint32_t pass = 1;; ++pass) {
    const PassResult result = RunPass(pass > max_passes);
    if (too_large_) return TExpandOutcome::TooLarge;
    if (!result.had_refs) return TExpandOutcome::Complete;
    if (bound_hit_ || pass > max_passes) return TExpandOutcome::TooManyPasses;
    if (one_pass) return TExpandOutcome::Complete;
    // References are left but nothing moved: another pass would do the same for ever.
    if (!result.changed) return TExpandOutcome::TooManyPasses;
  }
}

Expander::PassResult Expander::RunPass(bool scan_only) {
  PassResult result;
  pending_.clear();
  for (uint32_t i = 0; i < segments_.size(); ++i) {
    Segment& segment = segments_[i];
    if (!segment.dirty) continue;
    index_.Collect(segment.text, 0, true, true, present_);
    segment.dirty = !present_.empty();
    for (uint16_t v : present_) pending_[v].push_back(i);
    result.had_refs |= segment.dirty;
  }
  if (!result.had_refs || scan_only) return result;
  // Entries added on the way belong to higher numbers, so they lie ahead of the iterator.
  for (auto it = pending_.begin(); it != pending_.end(); ++it) {
    const uint16_t v = it->first;
    if (v == kept_) continue;
    std::vector<uint32_t>& list = it->second;
    std::sort(list.begin(), list.end());
    list.erase(std::unique(list.begin(), list.end()), list.end());
    changed_.clear();
    ExpandVariable(v, list);
    if (bound_hit_) return result;
    std::sort(changed_.begin(), changed_.end());
    changed_.erase(std::unique(changed_.begin(), changed_.end()), changed_.end());
    for (uint32_t i : changed_) {
      result.changed = true;
      index_.Collect(segments_[i].text, v, true, true, present_);
      for (uint16_t w : present_) pending_[w].push_back(i);
    }
  }
  return result;
}

// The per-variable step, over the segments that refer to `v`, repeated until nothing is replaced.
void Expander::ExpandVariable(uint16_t v, const std::vector<uint32_t>& segments) {
  const uint32_t max_rounds = 2 * (index_.pin_bound(v) + 1u) + 16;
  for (uint32_t round = 1;; ++round) {
    bool replaced = false;
    bool moved = false;
    for (TFindMode mode : {TFindMode::Name, TFindMode::Identifier}) {
      const TTokenHit hit = FindBest(v, mode, segments);
      if (!hit.found) continue;
      const std::string value = ReplacementFor(v, hit.plugin, mode);
      replaced = true;
      moved |= value != hit.token;
      if (!ReplaceIn(segments, hit.token, value)) return;
    }
    if (!replaced) return;
    // A token replaced by itself, or a value that keeps bringing its own token back.
    if (!moved || round == max_rounds) {
      bound_hit_ = true;
      return;
    }
  }
}

TTokenHit Expander::FindBest(uint16_t v, TFindMode mode, const std::vector<uint32_t>& segments) const {
  TTokenHit best;
  for (uint32_t i : segments) {
    TTokenHit hit = index_.FindFirst(segments_[i].text, v, mode);
    if (!hit.found) continue;
    if (hit.plugin == 0) return hit;
    if (!best.found || hit.plugin < best.plugin) best = std::move(hit);
  }
  return best;
}

std::string Expander::ReplacementFor(uint16_t v, int plugin, TFindMode mode) const {
  const TVariableItem& item = plugin > 0 ? *wizard_.Variables[v].Pins[plugin] : CurrentItem(wizard_, v);
  if (mode == TFindMode::Identifier) return item.IdfValue;
  std::string value = item.Value;
  if (pairs_.empty() || pairs_.size() % 2 != 0) return value;
  for (size_t i = 0; i < pairs_.size(); i += 2) {
    value = ReplaceAll(value, pairs_[i], kPairMarker);
    value = ReplaceAll(value, kPairMarker, pairs_[i + 1]);
  }
  return value;
}

// False when the text would outgrow its bound; the segment that would have is left as it was.
bool Expander::ReplaceIn(const std::vector<uint32_t>& segments, const std::string& token, const std::string& value) {
  for (uint32_t i : segments) {
    Segment& segment = segments_[i];
    const size_t room = size_bound_ - (size_ - segment.text.size());
    const size_t count = ReplaceAllInto(segment.text, token, value, buffer_, room);
    if (count == kReplacementTooLarge) {
      bound_hit_ = too_large_ = true;
      buffer_ = std::string();
      return false;
    }
    if (count == 0) continue;
    size_ = size_ - segment.text.size() + buffer_.size();
    segment.own.swap(buffer_);
    segment.text = segment.own;
    changed_.push_back(i);
  }
  return true;
}

std::string Expander::Result() const {
  std::string result;
  result.reserve(size_);
  for (const Segment& segment : segments_) result.append(segment.text);
  return result;
}

}  // namespace

size_t ExpansionGrowthBound(size_t input_size) {
  constexpr size_t kMegabyte = size_t{1} << 20;
  const size_t megabytes = (input_size * 1000 + kMegabyte - 1) / kMegabyte;
  return std::clamp<size_t>(megabytes, 1, 64) * kMegabyte;
}

size_t ExpansionLimitFor(std::string_view s) { return s.size() + ExpansionGrowthBound(s.size()); }

std::string ExpansionBoundMessage(std::string_view what, TExpandOutcome outcome, size_t input_size) {
  const std::string name(what);
  switch (outcome) {
    case TExpandOutcome::Complete:
      return {};
    case TExpandOutcome::TooLarge:
      return "The expansion of " + name + " exceeds " + std::to_string(ExpansionGrowthBound(input_size) >> 20) + " MB.";
    case TExpandOutcome::TooManyPasses:
      break;
  }
  return "The expansion of " + name + " still refers to variables after its last pass (a circular reference).";
}

TExpandOutcome ExpandWithIndex(const TTokenIndex& index, std::string_view s, bool one_pass, std::string& res,
                               const std::vector<std::string>& pairs, size_t size_limit, uint16_t kept) {
  // The one scan expands every variable, so it serves only when none is kept.
  if (kept == 0 && ExpandInOneScan(index, s, pairs, size_limit, res)) return TExpandOutcome::Complete;
  Expander expander(index, pairs, s, size_limit, kept);
  const TExpandOutcome outcome = expander.Run(one_pass);
  res = expander.Result();
  return outcome;
}

TExpandOutcome ExpandVar(const TWizard& wizard, std::string_view s, bool one_pass, std::string& res,
                         const std::vector<std::string>& pairs) {
  platform::ScopedRoutine routine("TSaW_Common.ExpandVar");
  if (!MayHoldReference(wizard, s)) {
    res.assign(s);
    return TExpandOutcome::Complete;
  }
  const TTokenIndex index(wizard);
  return ExpandWithIndex(index, s, one_pass, res, pairs, ExpansionLimitFor(s));
}

TExpansionTable::TExpansionTable(const TWizard& wizard)
    : wizard_(wizard), index_(std::make_unique<TTokenIndex>(wizard)) {
  index_->PrepareScan();
}
TExpansionTable::~TExpansionTable() = default;

TExpandOutcome ExpandVar(const TExpansionTable& table, std::string_view s, bool one_pass, std::string& res,
                         const std::vector<std::string>& pairs) {
  platform::ScopedRoutine routine("TSaW_Common.ExpandVar");
  const TTokenIndex& index = table.Index();
  if (index.plain_tokens() && s.find('#') == std::string_view::npos && FindBytes(s, "vr") == std::string_view::npos) {
    res.assign(s);
    return TExpandOutcome::Complete;
  }
  return ExpandWithIndex(index, s, one_pass, res, pairs, ExpansionLimitFor(s));
}

std::string ExpandVar(const TWizard& wizard, std::string_view s) {
  std::string res;
  ExpandVar(wizard, s, false, res);
  return res;
}

std::string ExpandVar(const TExpansionTable& table, std::string_view s) {
  std::string res;
  ExpandVar(table, s, false, res);
  return res;
}

}  // namespace tsaw
