// ExpandVar: variables are expanded in number order, each to exhaustion, in passes repeated until
// no reference is left. The text is cut at its line feeds: no token holds one, so no replacement
// can ever join two lines, and each variable only needs to visit the lines that refer to it.

#include <algorithm>

#include "model/expand.h"
#include "model/expand_index.h"
#include "model/expand_scan.h"
#include "model/variables.h"
#include "platform/debug_log.h"

namespace tsaw {
namespace {

constexpr std::string_view kPairMarker = "[tEmP.sTr]";
// Room for every sensible expansion; beyond it a value must be feeding on itself.
constexpr size_t kMinSizeBound = size_t{16} << 20;
constexpr size_t kSizeBoundFactor = 64;

struct Segment {
  std::string_view text;
  std::string own;  // the text once it has changed
  bool dirty = true;  // may hold references
};

class Expander {
 public:
  Expander(const TTokenIndex& index, const std::vector<std::string>& pairs, std::string_view s);
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
  std::vector<std::vector<uint32_t>> pending_;  // per variable: the segments that refer to it
  std::vector<uint32_t> changed_;
  std::vector<uint16_t> present_;
  std::string buffer_;
  size_t size_ = 0;
  size_t size_bound_ = 0;
  bool bound_hit_ = false;
};

Expander::Expander(const TTokenIndex& index, const std::vector<std::string>& pairs, std::string_view s)
    : index_(index), wizard_(index.wizard()), pairs_(pairs), pending_(index.last() + 1), size_(s.size()),
      size_bound_(kMinSizeBound + kSizeBoundFactor * s.size()) {
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
    if (!result.had_refs) return TExpandOutcome::Complete;
    if (bound_hit_ || pass > max_passes) return TExpandOutcome::StoppedAtBound;
    if (one_pass) return TExpandOutcome::Complete;
    // References are left but nothing moved: another pass would do the same for ever.
    if (!result.changed) return TExpandOutcome::StoppedAtBound;
  }
}

Expander::PassResult Expander::RunPass(bool scan_only) {
  PassResult result;
  for (auto& list : pending_) list.clear();
  for (uint32_t i = 0; i < segments_.size(); ++i) {
    Segment& segment = segments_[i];
    if (!segment.dirty) continue;
    index_.Collect(segment.text, 0, true, true, present_);
    segment.dirty = !present_.empty();
    for (uint16_t v : present_) pending_[v].push_back(i);
    result.had_refs |= segment.dirty;
  }
  if (!result.had_refs || scan_only) return result;
  for (uint16_t v = 1; v < pending_.size(); ++v) {
    std::vector<uint32_t>& list = pending_[v];
    if (list.empty()) continue;
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

// False when the text has outgrown its bound.
bool Expander::ReplaceIn(const std::vector<uint32_t>& segments, const std::string& token, const std::string& value) {
  for (uint32_t i : segments) {
    Segment& segment = segments_[i];
    const size_t count = ReplaceAllInto(segment.text, token, value, buffer_);
    if (count == 0) continue;
    size_ = size_ - segment.text.size() + buffer_.size();
    segment.own.swap(buffer_);
    segment.text = segment.own;
    changed_.push_back(i);
  }
  if (size_ > size_bound_) bound_hit_ = true;
  return !bound_hit_;
}

std::string Expander::Result() const {
  std::string result;
  result.reserve(size_);
  for (const Segment& segment : segments_) result.append(segment.text);
  return result;
}

}  // namespace

TExpandOutcome ExpandWithIndex(const TTokenIndex& index, std::string_view s, bool one_pass, std::string& res,
                               const std::vector<std::string>& pairs) {
  if (ExpandInOneScan(index, s, pairs, kMinSizeBound + kSizeBoundFactor * s.size(), res)) {
    return TExpandOutcome::Complete;
  }
  Expander expander(index, pairs, s);
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
  return ExpandWithIndex(index, s, one_pass, res, pairs);
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
  if (index.plain_tokens() && s.find('#') == std::string_view::npos && s.find("vr") == std::string_view::npos) {
    res.assign(s);
    return TExpandOutcome::Complete;
  }
  return ExpandWithIndex(index, s, one_pass, res, pairs);
}

std::string ExpandVar(const TWizard& wizard, std::string_view s) {
  std::string res;
  ExpandVar(wizard, s, false, res);
  return res;
}

}  // namespace tsaw
