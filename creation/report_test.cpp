#include "creation/report.h"

#include <gtest/gtest.h>

namespace tsaw::creation {
namespace {

TEST(StatisticsBlockTest, UsesThePluralExceptForOne) {
  const std::string rule(96, '=');
  const TCounters counters{1, 0, 2, 1, 1234, 1, 0, 2};
  EXPECT_EQ(StatisticsBlock(counters),
            (std::vector<std::string>{"", rule, std::string(42, ' ') + "REPORT STATISTICS", rule, "",
                                      " SCANNED:    1,234 files in 1 folder", " SKIPPED:    1 file in 0 folders",
                                      " FAILED:     2 files and 1 folder", " PROCESSED:  0 files in 2 folders", "",
                                      rule, ""}));
}

}  // namespace
}  // namespace tsaw::creation
