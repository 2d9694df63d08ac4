#include "preprocessor/marker_cleanup.h"

#include <gtest/gtest.h>

namespace tsaw {
namespace {

struct CleanupCase {
  const char* name;
  std::string_view text;
  std::string_view expected;
};

TEST(MarkerCleanupTest, RemovesLinesThatHeldOnlyDirectives) {
  const CleanupCase cases[] = {
      {"no markers: lines split at every kind of break", "a\nb\rc\r\nd", "a\r\nb\r\nc\r\nd\r\n"},
      {"empty pair line takes one following blank line",
       "a\r\n  {remove_me_a}{remove_me_b}\r\n\r\n \t\r\nb", "a\r\n \t\r\nb\r\n"},
      {"blank line after a kept line stays", "{remove_me_a}{remove_me_b}\r\nx\r\n\r\n",
       "x\r\n\r\n"},
      {"stacked pair lines each take the blank below them",
       "{remove_me_a}{remove_me_b}\r\n\r\n{remove_me_a}{remove_me_b}\r\n\r\nz", "z\r\n"},
      {"lone end and start marker lines go, blank lines after them stay",
       "{remove_me_a}\r\n\r\nkept\r\n {remove_me_b} {remove_me_b}\r\n\r\n", "\r\nkept\r\n\r\n"},
      {"markers inside code leave the code",
       "x := 1;{remove_me_a}{remove_me_b}\r\n"
       "{remove_me_a}// c{remove_me_b}",
       "x := 1;\r\n// c\r\n"},
      {"a line with both kinds but no pair is kept, markers stripped",
       "{remove_me_b}{remove_me_a}\r\nend.", "\r\nend.\r\n"},
      {"markers are not rescanned after removal", "{remove_me_{remove_me_a}a}{remove_me_b}x",
       "{remove_me_a}x\r\n"},
      {"an end marker joined by removing a start marker goes too", "{remove_me_{remove_me_a}b}x",
       "x\r\n"},
      {"two pair lines in a row take the two blank lines below them",
       "{remove_me_a}{remove_me_b}\r\n{remove_me_a}{remove_me_b}\r\n\r\n\r\nz",
       "z\r\n"},
  };
  // One clean-up reused for every case must keep nothing of the texts before.
  TMarkerCleanup reused;
  for (const CleanupCase& c : cases) {
    EXPECT_EQ(TMarkerCleanup().ToText(c.text), c.expected) << c.name;
    EXPECT_EQ(reused.ToText(c.text), c.expected) << c.name;
  }
}

}  // namespace
}  // namespace tsaw
