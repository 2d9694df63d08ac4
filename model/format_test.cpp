#include "model/format.h"

#include <gtest/gtest.h>

#include <limits>

namespace tsaw {
namespace {

// "C" groups nothing and an unknown locale cannot be loaded: both fall back to "," in threes.
TEST(FormatTest, CountsAreGroupedInThousands) {
  struct Case {
    int64_t count;
    std::string expected;
  } const cases[] = {
      {0, "0"},
      {999, "999"},
      {1000, "1,000"},
      {1234567, "1,234,567"},
      {-1234, "-1,234"},
      {-999, "-999"},
      {std::numeric_limits<int64_t>::max(), "9,223,372,036,854,775,807"},
      {std::numeric_limits<int64_t>::min(), "-9,223,372,036,854,775,808"},
  };
  for (const char* locale : {"C", "C.UTF-8", "xx_NOWHERE.UTF-8"}) {
    for (const Case& c : cases) EXPECT_EQ(FormatCount(c.count, locale), c.expected) << locale << " " << c.count;
  }
}

TEST(FormatTest, DateTimeAndYearOfAUtcReading) {
  const platform::ClockReading reading{1700000000, true};  // 2023-11-14 22:13:20 UTC
  for (const char* locale : {"C", "xx_NOWHERE.UTF-8"}) {
    EXPECT_EQ(FormatShortDate(reading, locale), "11/14/23") << locale;
    EXPECT_EQ(FormatTime(reading, locale), "22:13:20") << locale;
  }
  EXPECT_EQ(FormatYear(reading), "2023");
}

TEST(FormatTest, UnrepresentableMomentGivesEmptyTexts) {
  const platform::ClockReading reading{std::numeric_limits<std::time_t>::max(), true};
  EXPECT_EQ(FormatShortDate(reading, "C"), "");
  EXPECT_EQ(FormatTime(reading, "C"), "");
  EXPECT_EQ(FormatYear(reading), "");
}

}  // namespace
}  // namespace tsaw
