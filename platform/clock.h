#pragma once
// The clock: one reading of the current time. Reproducible runs fix it through SOURCE_DATE_EPOCH.

#include <ctime>
#include <string>

namespace tsaw::platform {

// One reading. `Utc` marks a reading that is to be shown in UTC rather than local time.
struct ClockReading {
  std::time_t Seconds = 0;
  bool Utc = false;
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual ClockReading Now() const = 0;
};

// The system clock, unless SOURCE_DATE_EPOCH holds a count of seconds: then every reading is that
// moment, in UTC, as reproducible-build tools expect.
class SystemClock final : public Clock {
 public:
  // `source_date_epoch` is the variable's text, nullptr when unset. A text that is not a
  // non-negative whole number is ignored, and Warning() says so.
  explicit SystemClock(const char* source_date_epoch);
  // Reads SOURCE_DATE_EPOCH from the environment.
  static SystemClock FromEnvironment();

  ClockReading Now() const override;
  // Empty, or why SOURCE_DATE_EPOCH was ignored.
  const std::string& Warning() const { return warning_; }

 private:
  bool fixed_ = false;
  std::time_t fixed_seconds_ = 0;
  std::string warning_;
};

}  // namespace tsaw::platform
