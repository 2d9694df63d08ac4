#include "shell/qt_dialogs.h"

#include <gtest/gtest.h>

namespace tsaw {
namespace {

TEST(QtDialogsTest, FilterPairsBecomeQtNameFilters) {
  struct Case {
    const char* pairs;
    QStringList filters;
  } cases[] = {
      {"Job files (Job*.ini)|Job*.ini|All Configuration files (*.ini)|*.ini|All files (*.*)|*.*",
       {"Job files (Job*.ini)", "All Configuration files (*.ini)", "All files (*)"}},
      {"TSaW Configuration files|TSaW.*.ini|All Configuration files|*.ini|All files|*.*",
       {"TSaW Configuration files (TSaW.*.ini)", "All Configuration files (*.ini)", "All files (*)"}},
      {"Sources|*.pas;*.dpr", {"Sources (*.pas *.dpr)"}},
      {"Dangling description", {}},
      {"", {}},
  };
  for (const Case& c : cases) EXPECT_EQ(QtNameFilters(c.pairs), c.filters) << c.pairs;
}

}  // namespace
}  // namespace tsaw
