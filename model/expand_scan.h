#pragma once
// Inside the model: expansion in a single scan of the text. The passes replace each variable's
// references in number order; when no inserted value brings in a reference, and none can be
// made up from a value and the text around it, the order cannot show, and replacing every
// reference where it stands gives the same text in one go. The scan decides that for each
// text and declines the others, which then take the passes.

#include <string>
#include <string_view>
#include <vector>

#include "model/expand_index.h"

namespace tsaw {

// Writes the expansion of `s` to `res` and returns true when one scan gives exactly what the
// passes give; returns false, leaving `res` as it was, when the text needs the passes or the
// index has not been prepared for the scan. A result longer than `size_bound` is declined too.
bool ExpandInOneScan(const TTokenIndex& index, std::string_view s, const std::vector<std::string>& pairs,
                     size_t size_bound, std::string& res);

}  // namespace tsaw
