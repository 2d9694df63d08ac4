#pragma once
// The conditions of the blocks, decided with the constants as a block-by-block resolution sees
// them. That resolution reads an outermost block through once (every DEFINE and UNDEF in it
// counts), then processes its then part and its else part again in the same way, so a block sees
// the constants as set by: the text before its outermost block; all of each enclosing block;
// and, inside the innermost enclosing block that sets the constant, what its own part sets before
// the block (after the then part, when the block lies in the else part).

#include <string_view>

#include "preprocessor/defines.h"
#include "preprocessor/directive_list.h"

namespace tsaw {

// Sets Cond of every "dd" block whose outermost block is closed. `defines` holds the constants as
// they were before the text.
void DecideConditions(TDirectiveList& list, const TDefines& defines);

// The value of constant `entry` after the text's directives before directive `index`, each
// applied once in order.
std::string_view ValueBefore(const TDirectiveList& list, const TDefines& defines, std::size_t entry,
                             std::size_t index);

// The condition of `block` with the constants as the directives before it left them, each applied
// once: what a block never closed records.
bool ConditionInOrder(const TDirectiveList& list, const TDefines& defines,
                      const TListedBlock& block);

}  // namespace tsaw
