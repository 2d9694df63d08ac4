#include "pages/page_errors.h"

#include <gtest/gtest.h>

namespace tsaw {
namespace {

TEST(PageErrorsTest, NumbersErrorsOneBlankLineApartKeepingTheirOwnLineBreaks) {
  TPageErrors errors;
  errors.Add_Error("first");
  errors.Add_Error("second line one\r\nsecond line two");
  errors.Add_Error("third");
  EXPECT_EQ(errors.Count(), 3);
  EXPECT_EQ(errors.Text(), "1 - first\r\n\r\n2 - second line one\r\nsecond line two\r\n\r\n3 - third");

  errors.Clear();
  errors.Add_Error("again");
  EXPECT_EQ(errors.Text(), "1 - again");
}

TEST(PageErrorsTest, CaptionCountsErrors) {
  const struct {
    int count;
    const char* caption;
  } cases[] = {{0, "Page is ok"}, {1, "1 Error:"}, {2, "2 Errors:"}, {12, "12 Errors:"}};
  for (const auto& c : cases) EXPECT_EQ(ValidationCaption(c.count), c.caption) << c.count;
}

}  // namespace
}  // namespace tsaw
