#include "pages/manager_page.h"

#include <gtest/gtest.h>

#include "testing/wizard_builder.h"

namespace tsaw {
namespace {

TEST(ManagerPageTest, VersionMustNotExpandToBlank) {
  const struct {
    const char* version;
    const char* errors;
  } cases[] = {
      {"#Author#",
       "1 - Version (expanded to \"\") cannot be blank.\r\n"
       "It will be used to generate the DCI of the manager at creation stage."},
      {"1.0", ""},
  };
  for (const auto& c : cases) {
    TWizard wizard = testing::MakeWizard(0);
    testing::SetVar(wizard, viManagerVersion, c.version);
    TPageMemory memory;
    TManagerPage page(wizard, memory.For(TPageKind::Manager));
    page.Open();
    EXPECT_EQ(page.Errors().Text(), c.errors) << c.version;
  }
}

TEST(ManagerPageTest, ServiceFolderAdviceIsThePluginFolderTextForServiceFolder) {
  TWizard wizard = testing::MakeWizard(0);
  TPageMemory memory;
  TManagerPage page(wizard, memory.For(TPageKind::Manager));
  ASSERT_TRUE(page.Controls_OnEnter("ediServiceFolder"));
  EXPECT_EQ(
      page.AdviceText(),
      "\"ServiceFolder\" will be used as the value for the Manager's ServiceFolder property. Although it "
      "would "
      "not make much sense the use of Wizard Variables here, you are free to do that.\r\n\r\n"
      "Normally, IEVs (Internal Environment Variables) are used, so they are expanded by the Tessera Engine "
      "upon the load of plugins.\r\n"
      "Do not confuse IEVs with Wizard Variables. IEVs are embraced with \"%\" chars and will be expanded by "
      "the Engine at runtime, while Wizard Variables use \"#\" chars and are expanded during the Projects "
      "creation process.");
}

}  // namespace
}  // namespace tsaw
