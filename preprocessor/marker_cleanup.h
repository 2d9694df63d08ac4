#pragma once
// The last step of preprocessing a file: resolved "dd" blocks leave the markers "{remove_me_a}"
// (where the block began) and "{remove_me_b}" (where it ended); a line that held nothing but
// directives disappears, while code sharing a line with them stays.

#include <string>
#include <string_view>
#include <vector>

namespace tsaw {

inline constexpr std::string_view kMarkerA = "{remove_me_a}";
inline constexpr std::string_view kMarkerB = "{remove_me_b}";

// Splits `text` into lines and, from the last line to the first, deletes a line that is blank
// once every "{remove_me_a}{remove_me_b}" pair is removed (and with it the blank line, if any, that
// now follows it), else one blank without its "{remove_me_b}"s, else one blank without its
// "{remove_me_a}"s. Returns the remaining lines with every marker stripped.
std::vector<std::string> CleanUpMarkers(std::string_view text);
// The same lines, each followed by CR LF.
std::string CleanUpMarkersToText(std::string_view text);

}  // namespace tsaw
