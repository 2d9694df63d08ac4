#pragma once
// Test helper: the "Default Values" lines that leave a template with only the targets a test names,
// every other target not allowed, so that the template needs no folders for them.

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>

#include "model/targets.h"

namespace tsaw::testing {

// "KEY=D" lines (CR LF) for every target whose key is not in `kept`.
inline std::string OtherTargetsNotAllowed(std::initializer_list<std::string_view> kept) {
  std::string lines;
  for (uint16_t t = 1; t <= kTargetCount; ++t) {
    const std::string_view key = TargetInfo(t).DefaultsKey;
    if (std::find(kept.begin(), kept.end(), key) == kept.end()) lines += std::string(key) + "=D\r\n";
  }
  return lines;
}

}  // namespace tsaw::testing
