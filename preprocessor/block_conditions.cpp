#include "preprocessor/block_conditions.h"

#include <algorithm>

namespace tsaw {
namespace {

// The last of the sorted `setters` below `index`, or kNoIndex.
std::size_t LastBefore(const std::vector<std::uint32_t>& setters, std::size_t index) {
  const auto found = std::lower_bound(setters.begin(), setters.end(), index);
  return found == setters.begin() ? kNoIndex : *std::prev(found);
}

// The value DEFINE or UNDEF directive `setter` gives its constant.
std::string_view SetterValue(const TDirectiveList& list, std::size_t setter) {
  return list.Directives[setter].Kind == TDirKind::Define ? "1" : "0";
}

// True when constant value `value` makes a block of `kind` true.
bool Holds(TDirKind kind, std::string_view value) {
  return value == (kind == TDirKind::Ifdef ? "1" : "0");
}

// What one block sees, found with binary searches so that the cost does not grow with the depth.
class ConditionFinder {
 public:
  ConditionFinder(TDirectiveList& list, const TDefines& defines) : list_(list), defines_(defines) {}

  void Run() {
    if (NoConstantSet()) {
      DecideInOrder();
      return;
    }
    std::vector<std::uint32_t> open;  // the blocks around the current directive, outermost first
    for (const TListedDirective& dir : list_.Directives) {
      if (dir.Kind == TDirKind::Endif && dir.Ref != kNoIndex) open.pop_back();
      if (dir.Kind != TDirKind::Ifdef && dir.Kind != TDirKind::Ifndef) continue;
      TListedBlock& block = list_.Blocks[dir.Ref];
      // Everything after an outermost block never closed lies inside it and is never resolved.
      if (open.empty() && block.Endif == kNoIndex) return;
      if (block.IsDd) block.Cond = Decide(block, dir.Kind, open);
      open.push_back(dir.Ref);
    }
  }

 private:
  bool NoConstantSet() const {
    return std::all_of(list_.SettersOf.begin(), list_.SettersOf.end(),
                       [](const std::vector<std::uint32_t>& setters) { return setters.empty(); });
  }

  // With no constant set, a block's place does not matter: the blocks are decided in turn, up to
  // the first outermost block never closed, without following the nesting.
  void DecideInOrder() {
    for (TListedBlock& block : list_.Blocks) {
      if (block.Depth == 1 && block.Endif == kNoIndex) return;
      if (block.IsDd) block.Cond = Decide(block, list_.Directives[block.If].Kind, {});
    }
  }

  bool Decide(const TListedBlock& block, TDirKind kind,
              const std::vector<std::uint32_t>& open) const {
    if (block.IsDdTrue) return true;
    if (block.Entry == kNoIndex) return false;
    // A constant the text never sets is seen as the table holds it, wherever the block stands.
    if (list_.SettersOf[block.Entry].empty()) {
      return Holds(kind, defines_.Entries()[block.Entry].Value);
    }
    return Holds(kind, Seen(block.Entry, block.If, open));
  }

  // The value of constant `entry` as the block whose IF is directive `at` sees it.
  std::string_view Seen(std::size_t entry, std::size_t at,
                        const std::vector<std::uint32_t>& open) const {
    const std::vector<std::uint32_t>& setters = list_.SettersOf[entry];
    const auto next = std::lower_bound(setters.begin(), setters.end(), at);
    const std::size_t before = next == setters.begin() ? kNoIndex : *std::prev(next);
    const std::size_t after = next == setters.end() ? kNoIndex : *next;
    const std::size_t holder = InnermostHolding(open, before, after);
    if (holder == kNoIndex) return ValueBefore(list_, defines_, entry, at);

    const TListedBlock& around = list_.Blocks[open[holder]];
    const bool in_else = around.Else != kNoIndex && at > around.Else;
    const std::size_t part_start = in_else ? around.Else : around.If;
    if (before != kNoIndex && before > part_start) return SetBy(before);
    if (in_else) {
      const std::size_t in_then = LastBefore(setters, around.Else);
      if (in_then != kNoIndex && in_then > around.If) return SetBy(in_then);
    }
    return SetBy(LastBefore(setters, around.Endif));
  }

  // Position in `open` of the innermost block holding directive `before` or `after`, or kNoIndex.
  // Going inwards the blocks open later and close earlier.
  std::size_t InnermostHolding(const std::vector<std::uint32_t>& open, std::size_t before,
                               std::size_t after) const {
    std::size_t holding = 0;
    if (before != kNoIndex) {
      holding = static_cast<std::size_t>(
          std::partition_point(open.begin(), open.end(),
                               [&](std::uint32_t b) { return list_.Blocks[b].If < before; }) -
          open.begin());
    }
    if (after != kNoIndex) {
      const auto outside = std::partition_point(
          open.begin(), open.end(), [&](std::uint32_t b) { return list_.Blocks[b].Endif > after; });
      holding = std::max(holding, static_cast<std::size_t>(outside - open.begin()));
    }
    return holding == 0 ? kNoIndex : holding - 1;
  }

  std::string_view SetBy(std::size_t setter) const { return SetterValue(list_, setter); }

  TDirectiveList& list_;
  const TDefines& defines_;
};

}  // namespace

void DecideConditions(TDirectiveList& list, const TDefines& defines) {
  ConditionFinder(list, defines).Run();
}

std::string_view ValueBefore(const TDirectiveList& list, const TDefines& defines, std::size_t entry,
                             std::size_t index) {
  const std::size_t setter = LastBefore(list.SettersOf[entry], index);
  return setter == kNoIndex ? std::string_view(defines.Entries()[entry].Value)
                            : SetterValue(list, setter);
}

bool ConditionInOrder(const TDirectiveList& list, const TDefines& defines,
                      const TListedBlock& block) {
  if (block.IsDdTrue) return true;
  if (block.Entry == kNoIndex) return false;
  return Holds(list.Directives[block.If].Kind, ValueBefore(list, defines, block.Entry, block.If));
}

}  // namespace tsaw
