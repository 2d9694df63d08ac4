#include "pages/validate_all.h"

#include <gtest/gtest.h>

#include "testing/wizard_builder.h"

namespace tsaw {
namespace {

TEST(ValidateAllAnswersTest, ListsEveryFailingPageInStepOrder) {
  TWizard wizard = testing::MakeWizard(1);
  bool notified = false;
  wizard.RefreshStepButtons = [&](bool) { notified = true; };
  testing::SetVar(wizard, viProjectsPrefix, "P");
  testing::SetVar(wizard, viHostProjectName, "Host");
  testing::SetPin(wizard, viPluginProjectName, 1, "Pin");
  testing::SetVar(wizard, viManagerVersion, "1.0");

  const std::vector<TPageFailure> failures = ValidateAllAnswers(wizard);
  EXPECT_EQ(FormatFailures(failures),
            "Platforms & Languages - 1 Error:\r\n"
            "1 - At least one target language/platform must be chosen.\r\n"
            "\r\n"
            "Plugin Properties - 1 Error:\r\n"
            "1 - Plugin[1] Version (expanded to \"\") cannot be blank.\r\n"
            "It will be used to generate the DCI of the plugin at creation stage.\r\n"
            "\r\n"
            "Output Settings - 1 Error:\r\n"
            "1 - Base Folder (expanded to \"\") cannot be blank.\r\n"
            "It will be the parent of the Project Set root folder.\r\n");
  EXPECT_FALSE(notified);

  wizard.Targets[3].Checked = true;
  testing::SetPin(wizard, viPluginVersion, 1, "1.0");
  testing::SetVar(wizard, viOutputBaseFolder, "out");
  EXPECT_TRUE(ValidateAllAnswers(wizard).empty());
}

TEST(ValidateAllAnswersTest, EmptyWizardStateFailsWithoutHarm) {
  TWizard wizard;
  const std::vector<TPageFailure> failures = ValidateAllAnswers(wizard);
  std::string titles;
  for (const TPageFailure& failure : failures) titles += failure.Title + "; ";
  EXPECT_EQ(titles, "Platforms & Languages; Common Properties; Manager Properties; Output Settings; ");
}

}  // namespace
}  // namespace tsaw
