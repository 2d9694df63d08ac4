#pragma once
// The last step of resolving a text's blocks: the output written in one walk over the listed
// directives, skipping an excluded part by jumping to its end.

#include <string>
#include <string_view>

#include "preprocessor/directive_list.h"

namespace tsaw {

// Appends `text` with its blocks resolved to `out`: a "dd" block becomes "{remove_me_a}", the
// part its condition chooses and "{remove_me_b}"; any other block stays whole, its parts
// resolved. An {$ENDIF} with no open block is dropped with the text since the previous directive;
// a block never closed loses all but the text after the last directive. Returns true when an
// outermost "dd" block left its markers. `list` must come from ListDirectives(text, ...) with
// its conditions decided.
bool AppendResolvedText(std::string_view text, const TDirectiveList& list, std::string& out);

}  // namespace tsaw
