#pragma once
// What the wizard frame keeps of each page type while the page itself comes and goes: the control
// that last had the focus and the information tab last shown.

#include <array>
#include <cstddef>
#include <string>

namespace tsaw {

// The data-entry page types, in step order.
enum class TPageKind { Languages, Common, Manager, Plugin, Logging, Cosmetics, Output };
inline constexpr std::size_t kPageKindCount = 7;

// Information tabs; the numbers are the tab labels' tags.
inline constexpr int kInfoTabNone = 0;
inline constexpr int kInfoTabValidation = 1;
inline constexpr int kInfoTabAdvice = 2;

struct TPageRecall {
  std::string LastEnteredControl;  // control name; empty until a control is entered
  int LastInfoTab = kInfoTabNone;
};

// One TPageRecall per page type; the frame owns this object for its whole life.
class TPageMemory {
 public:
  TPageRecall& For(TPageKind kind) { return recall_[static_cast<std::size_t>(kind)]; }

 private:
  std::array<TPageRecall, kPageKindCount> recall_{};
};

}  // namespace tsaw
