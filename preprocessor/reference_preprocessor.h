#pragma once
// The template preprocessor as it was before its single forward scan, kept for the tests only, to
// compare the processor against on many texts: each outermost block's parts are processed again by
// nested passes (so the cost grows with the square of the nesting) and the marker clean-up goes
// through every line.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "preprocessor/model_processor.h"

namespace tsaw::reference {

// What TqrxModelProcessor::ProcessText(text, defines, remove_markers) gives, with blocks left open
// added to `blocks`, nesting refused beyond `max_nesting` levels where a block closes.
std::string ProcessText(std::string_view text, TDefines& defines, bool remove_markers,
                        std::vector<std::unique_ptr<TDirBlock>>& blocks, int max_nesting);

}  // namespace tsaw::reference
