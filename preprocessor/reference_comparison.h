#pragma once
// Comparing the processor with the reference preprocessor on one text (tests and fuzzing only).

#include <string>
#include <string_view>

#include "preprocessor/defines.h"

namespace tsaw::reference {

// Runs TqrxModelProcessor::ProcessText and the reference on `text`, each with its own copy of
// `defines` and a processor of its own, and returns how they differ, or "" when they agree: the
// same text or the same error; after success, the same constants and the same blocks left open.
// A text the processor refuses for its nesting is not compared (the reference refuses nesting
// only where a block closes).
std::string DifferenceFromReference(std::string_view text, const TDefines& defines,
                                    bool remove_markers);

}  // namespace tsaw::reference
