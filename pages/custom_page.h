#pragma once
// The Custom page step: a placeholder without fields, rules or information area.

#include <string_view>

namespace tsaw {

// The centred text the step shows.
inline constexpr std::string_view kCustomPageText = "The selected template does not provide a custom page.";

}  // namespace tsaw
