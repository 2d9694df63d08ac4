#include "platform/clock.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace tsaw::platform {

SystemClock::SystemClock(const char* source_date_epoch) {
  if (!source_date_epoch || !*source_date_epoch) return;
  const std::string_view text = source_date_epoch;
  long long seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (error != std::errc() || end != text.data() + text.size() || seconds < 0) {
    warning_ = "SOURCE_DATE_EPOCH=\"" + std::string(text) +
               "\" is not a count of seconds; the system clock is used instead";
    return;
  }
  fixed_ = true;
  fixed_seconds_ = static_cast<std::time_t>(seconds);
}

SystemClock SystemClock::FromEnvironment() { return SystemClock(std::getenv("SOURCE_DATE_EPOCH")); }

ClockReading SystemClock::Now() const {
  if (fixed_) return {fixed_seconds_, true};
  return {std::time(nullptr), false};
}

}  // namespace tsaw::platform
