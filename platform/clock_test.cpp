#include "platform/clock.h"

#include <gtest/gtest.h>

namespace tsaw::platform {
namespace {

TEST(SystemClockTest, SourceDateEpochFixesEveryReadingInUtc) {
  const SystemClock clock("1700000000");
  EXPECT_EQ(clock.Now().Seconds, 1700000000);
  EXPECT_TRUE(clock.Now().Utc);
  EXPECT_EQ(clock.Warning(), "");
}

TEST(SystemClockTest, UnsetOrUnusableEpochReadsTheSystemClock) {
  struct Case {
    const char* name;
    const char* value;
    std::string warning;
  } const cases[] = {
      {"unset", nullptr, ""},
      {"empty", "", ""},
      {"letters", "abc", "SOURCE_DATE_EPOCH=\"abc\" is not a count of seconds; the system clock is used instead"},
      {"negative", "-5", "SOURCE_DATE_EPOCH=\"-5\" is not a count of seconds; the system clock is used instead"},
      {"trailing text", "12x", "SOURCE_DATE_EPOCH=\"12x\" is not a count of seconds; the system clock is used instead"},
  };
  for (const Case& c : cases) {
    const SystemClock clock(c.value);
    const std::time_t before = std::time(nullptr);
    const ClockReading reading = clock.Now();
    EXPECT_FALSE(reading.Utc) << c.name;
    EXPECT_GE(reading.Seconds, before) << c.name;
    EXPECT_LE(reading.Seconds, std::time(nullptr)) << c.name;
    EXPECT_EQ(clock.Warning(), c.warning) << c.name;
  }
}

}  // namespace
}  // namespace tsaw::platform
