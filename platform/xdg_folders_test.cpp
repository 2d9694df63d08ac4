#include "platform/xdg_folders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace tsaw::platform {
namespace {

// Sets or clears one environment variable for the life of the object.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) saved_ = old;
    if (value) setenv(name, value, 1); else unsetenv(name);
  }
  ~ScopedVariable() {
    if (saved_) setenv(name_, saved_->c_str(), 1); else unsetenv(name_);
  }

 private:
  const char* name_;
  std::optional<std::string> saved_;
};

TEST(XdgFoldersTest, AbsoluteVariablesWin) {
  ScopedVariable home("HOME", "/home/u");
  ScopedVariable data("XDG_DATA_HOME", "/x/data");
  ScopedVariable state("XDG_STATE_HOME", "/x/state");
  ScopedVariable config("XDG_CONFIG_HOME", "/x/config");
  EXPECT_EQ(XdgDataHome(), std::filesystem::path("/x/data"));
  EXPECT_EQ(XdgStateHome(), std::filesystem::path("/x/state"));
  EXPECT_EQ(XdgConfigHome(), std::filesystem::path("/x/config"));
}

TEST(XdgFoldersTest, RelativeOrEmptyVariablesFallBackToHome) {
  ScopedVariable home("HOME", "/home/u");
  ScopedVariable data("XDG_DATA_HOME", "relative/data");
  ScopedVariable state("XDG_STATE_HOME", "");
  ScopedVariable config("XDG_CONFIG_HOME", nullptr);
  EXPECT_EQ(XdgDataHome(), std::filesystem::path("/home/u/.local/share"));
  EXPECT_EQ(XdgStateHome(), std::filesystem::path("/home/u/.local/state"));
  EXPECT_EQ(XdgConfigHome(), std::filesystem::path("/home/u/.config"));
}

TEST(XdgFoldersTest, TheDataRuleAlsoTakesGivenTexts) {
  EXPECT_EQ(XdgDataHomeFrom("/x/data", "/home/u"), std::filesystem::path("/x/data"));
  EXPECT_EQ(XdgDataHomeFrom("x/data", "/home/u"), std::filesystem::path("/home/u/.local/share"));
  EXPECT_EQ(XdgDataHomeFrom("", "home/u"), std::nullopt);
}

TEST(XdgFoldersTest, NoUsableHomeGivesNothing) {
  ScopedVariable home("HOME", "not-absolute");
  ScopedVariable state("XDG_STATE_HOME", nullptr);
  EXPECT_EQ(XdgStateHome(), std::nullopt);
}

}  // namespace
}  // namespace tsaw::platform
