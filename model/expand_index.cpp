#include "model/expand_index.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "model/variables.h"
#include "platform/find_bytes.h"

namespace tsaw {

using platform::FindBytes;
namespace {

constexpr uint8_t kSlowName = 1;
constexpr uint8_t kSlowToken = 2;
constexpr std::string_view kPinTokenStart = "vrPlugin";
constexpr size_t kMaxPinDigits = 5;  // plug-in numbers are 16-bit

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Calls `visit(span)` for the text between each two consecutive '#' marks.
template <typename Visit>
void ForEachSpan(std::string_view text, Visit visit) {
  size_t open = text.find('#');
  while (open != std::string_view::npos) {
    const size_t close = text.find('#', open + 1);
    if (close == std::string_view::npos) return;
    visit(text.substr(open + 1, close - open - 1));
    open = close;
  }
}

// Calls `visit(pos)` for each position where "vr" begins.
template <typename Visit>
void ForEachVr(std::string_view text, Visit visit) {
  for (size_t at = FindBytes(text, "vr"); at != std::string_view::npos; at = FindBytes(text, "vr", at + 1)) visit(at);
}

// The n of "Plugin[n]" in a name, 0 when there is none.
int PinNumberInName(std::string_view span) {
  const size_t at = span.find("Plugin[");
  if (at == std::string_view::npos) return 0;
  size_t i = at + 7;
  int n = 0;
  const size_t first = i;
  while (i < span.size() && IsDigit(span[i]) && i - first < kMaxPinDigits) n = n * 10 + (span[i++] - '0');
  if (i == first || span[first] == '0' || i >= span.size() || span[i] != ']') return 0;
  return n;
}

// Calls `visit(n)` for every plug-in number that a token beginning at `pos` may carry.
template <typename Visit>
void ForEachPinNumberAt(std::string_view text, size_t pos, Visit visit) {
  if (text.compare(pos, kPinTokenStart.size(), kPinTokenStart) != 0) return;
  size_t i = pos + kPinTokenStart.size();
  if (i < text.size() && text[i] == '[') ++i;
  if (i >= text.size() || text[i] < '1' || text[i] > '9') return;
  int n = 0;
  for (size_t len = 0; len < kMaxPinDigits && i < text.size() && IsDigit(text[i]); ++len) {
    n = n * 10 + (text[i++] - '0');
    visit(n);
  }
}

bool TokenAt(std::string_view text, size_t pos, std::string_view token) {
  return !token.empty() && text.compare(pos, token.size(), token) == 0;
}

uint64_t Load8(const char* bytes) {
  uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

void PushChain(const std::unordered_map<std::string_view, uint16_t, TShortKeyHash>& first,
               const std::vector<uint16_t>& next, std::string_view key, uint16_t above, std::vector<uint16_t>& out) {
  const auto it = first.find(key);
  if (it == first.end()) return;
  for (uint16_t v = it->second; v != 0; v = next[v]) {
    if (v > above) out.push_back(v);
  }
}

void SortUnique(std::vector<size_t>& values) {
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
}

TTokenHit NameHit(const std::string& name, int plugin) { return TTokenHit{true, plugin, "#" + name + "#"}; }

}  // namespace

size_t TShortKeyHash::operator()(std::string_view key) const {
  constexpr uint64_t kMultiplier = 0x9E3779B97F4A7C15u;
  uint64_t hash = key.size() * kMultiplier;
  if (key.size() >= 8) {
    hash = (hash ^ Load8(key.data())) * kMultiplier;
    hash = (hash ^ Load8(key.data() + key.size() - 8)) * kMultiplier;
  } else {
    for (const char c : key) hash = (hash ^ static_cast<unsigned char>(c)) * kMultiplier;
  }
  return static_cast<size_t>(hash ^ (hash >> 32));
}

TTokenIndex::TTokenIndex(const TWizard& wizard) : wizard_(wizard), last_(LastSearchedVar(wizard)) {
  pin_bound_.assign(last_ + 1, 0);
  slow_.assign(last_ + 1, 0);
  next_same_name_.assign(last_ + 1, 0);
  next_same_token_.assign(last_ + 1, 0);
  first_by_name_.reserve(2 * last_);
  first_by_token_.reserve(2 * last_);
  // Highest first, so that each chain of equal names runs in ascending number order.
  for (uint16_t v = last_; v >= 1; --v) AddVariable(v);
  std::reverse(pin_vars_.begin(), pin_vars_.end());
  std::reverse(slow_names_.begin(), slow_names_.end());
  std::reverse(slow_tokens_.begin(), slow_tokens_.end());
  SortUnique(token_lengths_);
  for (std::vector<size_t>& lengths : token_lengths_by_third_) SortUnique(lengths);
}

void TTokenIndex::AddVariable(uint16_t v) {
  const TVariableItem& variable = wizard_.Variables[v];
  const std::string_view name = variable.Name;
  const std::string_view token = variable.Token;
  ++item_count_;
  if (name.find('\n') != std::string_view::npos || token.find('\n') != std::string_view::npos) {
    lines_independent_ = false;
  }
  if (name.find('#') != std::string_view::npos) {
    slow_[v] |= kSlowName;
    slow_names_.push_back(v);
  } else if (!name.empty()) {
    auto [it, added] = first_by_name_.try_emplace(name, v);
    if (!added) next_same_name_[v] = std::exchange(it->second, v);
  }
  if (!token.empty() && !token.starts_with("vr")) {
    slow_[v] |= kSlowToken;
    slow_tokens_.push_back(v);
  } else if (!token.empty()) {
    auto [it, added] = first_by_token_.try_emplace(token, v);
    if (!added) next_same_token_[v] = std::exchange(it->second, v);
    token_lengths_.push_back(token.size());
    if (token.size() == 2) {
      for (std::vector<size_t>& lengths : token_lengths_by_third_) lengths.push_back(2);
    } else {
      token_lengths_by_third_[static_cast<unsigned char>(token[2])].push_back(token.size());
    }
    if (token_ends_.size() <= token.size()) token_ends_.resize(token.size() + 1);
    token_ends_[token.size()].set(static_cast<unsigned char>(token.back()));
  }
  const uint16_t plugin_count = wizard_.RunData ? wizard_.RunData->PluginCount : 0;
  if (variable.IsPluginArray && plugin_count > 0 && variable.Pins.size() > 1) {
    pin_bound_[v] = static_cast<uint16_t>(std::min<size_t>(plugin_count, variable.Pins.size() - 1));
    item_count_ += pin_bound_[v];
    pin_vars_.push_back(v);
  }
}

void TTokenIndex::PrepareScan() {
  if (scan_ready_) return;
  for (uint16_t v = 1; v <= last_; ++v) {
    AddBytes(wizard_.Variables[v]);
    for (int n = 1; n <= pin_bound_[v]; ++n) {
      if (const TVariableItem* item = PinItem(v, n)) AddBytes(*item);
    }
  }
  scan_ready_ = true;
}

void TTokenIndex::AddBytes(const TVariableItem& item) {
  if (item.Name.find('#') != std::string::npos || item.Token.find('#') != std::string::npos ||
      (!item.Token.empty() && !item.Token.starts_with("vr"))) {
    plain_tokens_ = false;
  }
  longest_name_ = std::max(longest_name_, item.Name.size());
  longest_token_ = std::max(longest_token_, item.Token.size());
  if (!item.Name.empty()) {
    if (name_ends_.size() <= item.Name.size()) name_ends_.resize(item.Name.size() + 1);
    name_ends_[item.Name.size()].set(static_cast<unsigned char>(item.Name.back()));
  }
  for (const char c : item.Name) name_bytes_[static_cast<unsigned char>(c)] = true;
  for (const char c : item.Token) token_bytes_[static_cast<unsigned char>(c)] = true;
}

// At the end of the text no third byte tells; every length is tried, and the lengths that
// overrun the text stop the loop.
const std::vector<size_t>& TTokenIndex::TokenLengthsAt(std::string_view text, size_t pos) const {
  if (pos + 2 >= text.size()) return token_lengths_;
  return token_lengths_by_third_[static_cast<unsigned char>(text[pos + 2])];
}

const TVariableItem* TTokenIndex::PinItem(uint16_t v, int n) const {
  if (n < 1 || n > pin_bound_[v]) return nullptr;
  return wizard_.Variables[v].Pins[n].get();
}

void TTokenIndex::Collect(std::string_view text, uint16_t above, bool names, bool idents,
                          std::vector<uint16_t>& out) const {
  out.clear();
  if (names) CollectNames(text, above, out);
  if (idents) CollectIdents(text, above, out);
  std::sort(out.begin(), out.end());
  out.erase(std::unique(out.begin(), out.end()), out.end());
}

void TTokenIndex::CollectNames(std::string_view text, uint16_t above, std::vector<uint16_t>& out) const {
  if (text.find('#') == std::string_view::npos) return;
  ForEachSpan(text, [&](std::string_view span) {
    PushChain(first_by_name_, next_same_name_, span, above, out);
    const int n = PinNumberInName(span);
    if (n == 0) return;
    for (uint16_t v : pin_vars_) {
      const TVariableItem* item = v > above ? PinItem(v, n) : nullptr;
      if (item && item->Name == span) out.push_back(v);
    }
  });
  for (uint16_t v : slow_names_) {
    if (v > above && FindVar(wizard_, text, TFindMode::Name, v).Found) out.push_back(v);
  }
}

void TTokenIndex::CollectIdents(std::string_view text, uint16_t above, std::vector<uint16_t>& out) const {
  ForEachVr(text, [&](size_t pos) {
    for (size_t length : TokenLengthsAt(text, pos)) {
      if (pos + length > text.size()) break;
      PushChain(first_by_token_, next_same_token_, text.substr(pos, length), above, out);
    }
    ForEachPinNumberAt(text, pos, [&](int n) {
      for (uint16_t v : pin_vars_) {
        const TVariableItem* item = v > above ? PinItem(v, n) : nullptr;
        if (item && TokenAt(text, pos, item->Token)) out.push_back(v);
      }
    });
  });
  for (uint16_t v : slow_tokens_) {
    if (v > above && FindVar(wizard_, text, TFindMode::Identifier, v).Found) out.push_back(v);
  }
}

TTokenHit TTokenIndex::FindFirst(std::string_view text, uint16_t v, TFindMode mode) const {
  const uint8_t slow_bit = mode == TFindMode::Name ? kSlowName : kSlowToken;
  if (slow_[v] & slow_bit) {
    TFindVarResult found = FindVar(wizard_, text, mode, v);
    return TTokenHit{found.Found, found.PluginIndex, std::move(found.Token)};
  }
  return mode == TFindMode::Name ? FindFirstName(text, v) : FindFirstIdent(text, v);
}

TTokenHit TTokenIndex::FindFirstName(std::string_view text, uint16_t v) const {
  const std::string& own = wizard_.Variables[v].Name;
  int best = 0;
  bool own_found = false;
  ForEachSpan(text, [&](std::string_view span) {
    if (own_found) return;
    if (!own.empty() && span == own) {
      own_found = true;
      return;
    }
    const int n = pin_bound_[v] > 0 ? PinNumberInName(span) : 0;
    const TVariableItem* item = (n > 0 && (best == 0 || n < best)) ? PinItem(v, n) : nullptr;
    if (item && item->Name == span) best = n;
  });
  if (own_found) return NameHit(own, 0);
  if (best > 0) return NameHit(PinItem(v, best)->Name, best);
  return {};
}

TTokenHit TTokenIndex::FindFirstIdent(std::string_view text, uint16_t v) const {
  const std::string& own = wizard_.Variables[v].Token;
  int best = 0;
  for (size_t pos = FindBytes(text, "vr"); pos != std::string_view::npos; pos = FindBytes(text, "vr", pos + 1)) {
    if (TokenAt(text, pos, own)) return TTokenHit{true, 0, own};
    if (pin_bound_[v] == 0) continue;
    ForEachPinNumberAt(text, pos, [&](int n) {
      const TVariableItem* item = (best == 0 || n < best) ? PinItem(v, n) : nullptr;
      if (item && TokenAt(text, pos, item->Token)) best = n;
    });
  }
  if (best > 0) return TTokenHit{true, best, PinItem(v, best)->Token};
  return {};
}

bool TTokenIndex::LookUpName(std::string_view span, TItemMatch& match) const {
  match = TItemMatch{};
  if (const auto it = first_by_name_.find(span); it != first_by_name_.end()) match.var = it->second;
  if (const int n = PinNumberInName(span); n > 0) {
    for (uint16_t v : pin_vars_) {
      if (match.var != 0 && v >= match.var) break;
      const TVariableItem* item = PinItem(v, n);
      if (item && item->Name == span) match = TItemMatch{v, n, 0};
    }
  }
  match.length = span.size() + 2;
  return match.var != 0;
}

void TTokenIndex::TokenItemsAt(std::string_view text, size_t pos, std::vector<TItemMatch>& out) const {
  out.clear();
  for (size_t length : TokenLengthsAt(text, pos)) {
    if (pos + length > text.size()) break;
    if (!token_ends_[length][static_cast<unsigned char>(text[pos + length - 1])]) continue;
    if (const auto it = first_by_token_.find(text.substr(pos, length)); it != first_by_token_.end()) {
      out.push_back({it->second, 0, length});
    }
  }
  ForEachPinNumberAt(text, pos, [&](int n) {
    for (uint16_t v : pin_vars_) {
      const TVariableItem* item = PinItem(v, n);
      if (item && TokenAt(text, pos, item->Token)) out.push_back({v, n, item->Token.size()});
    }
  });
}

bool MayHoldReference(const TWizard& wizard, std::string_view s) {
  if (s.find('#') != std::string_view::npos || FindBytes(s, "vr") != std::string_view::npos) return true;
  const uint16_t last = LastSearchedVar(wizard);
  for (uint16_t v = 1; v <= last; ++v) {
    const std::string& token = wizard.Variables[v].Token;
    if (!token.empty() && !token.starts_with("vr")) return true;
  }
  return false;
}

size_t ReplaceAllInto(std::string_view text, std::string_view from, std::string_view to, std::string& out,
                      size_t limit) {
  size_t at = FindBytes(text, from);
  if (from.empty() || at == std::string_view::npos) return 0;
  out.clear();
  size_t count = 0;
  size_t start = 0;
  for (; at != std::string_view::npos; at = FindBytes(text, from, start), ++count) {
    // What is left of the text after this occurrence still has to fit as well.
    if (out.size() + (at - start) + to.size() + (text.size() - at - from.size()) > limit) {
      return kReplacementTooLarge;
    }
    out.append(text.substr(start, at - start)).append(to);
    start = at + from.size();
  }
  out.append(text.substr(start));
  return count;
}

}  // namespace tsaw
