#include "pages/plugin_page.h"

#include <gtest/gtest.h>

#include "testing/wizard_builder.h"

namespace tsaw {
namespace {

TEST(PluginPageTest, EveryPluginsVersionIsCheckedWhicheverIsShown) {
  for (uint16_t shown = 1; shown <= 3; ++shown) {
    TWizard wizard = testing::MakeWizard(3);
    wizard.PluginIndex = shown;
    testing::SetPin(wizard, viPluginVersion, 1, "1.0");
    testing::SetPin(wizard, viPluginVersion, 3, "#Plugin.Index#.0");
    TPageMemory memory;
    TPluginPage page(wizard, memory.For(TPageKind::Plugin));
    page.Open();
    EXPECT_EQ(page.Errors().Text(),
              "1 - Plugin[2] Version (expanded to \"\") cannot be blank.\r\n"
              "It will be used to generate the DCI of the plugin at creation stage.")
        << shown;
  }
}

TEST(PluginPageTest, NoPluginsNoErrors) {
  TWizard wizard = testing::MakeWizard(0);
  TPageMemory memory;
  TPluginPage page(wizard, memory.For(TPageKind::Plugin));
  page.Open();
  EXPECT_EQ(page.Caption(), "Page is ok");
  EXPECT_FALSE(page.PluginSelectorEnabled());
}

}  // namespace
}  // namespace tsaw
