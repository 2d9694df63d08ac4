#pragma once
// The check a run makes before it writes anything: every answer expands within the bounds.

#include <string>

#include "model/wizard.h"

namespace tsaw {

// Expands the value and the identifier value of every variable and plug-in sub-item once, in
// number order, with the expansion's bounds. Empty when every one completes; otherwise the
// message naming the first variable that broke a bound ("The expansion of Author exceeds 64 MB.").
std::string FirstAnswerBeyondBounds(const TWizard& wizard);

}  // namespace tsaw
