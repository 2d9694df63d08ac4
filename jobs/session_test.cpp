#include "jobs/session.h"

#include <gtest/gtest.h>

#include <string>

#include "testing/fake_machine.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

TEST(SessionTest, FindsTheWizardFoldersBelowTheRootAndSetsTheFixedVariables) {
  testing::TempDir dir;
  dir.Write("TSA/Wizard/TSaW.ini", "[TSaW]\r\nConfig=Office\r\n");
  dir.Write("TSA/Wizard/TSaW.Office.ini", "[TSaW Config]\r\nShellBrowserPlugin=2\r\n");
  testing::FakeMachineFolders machine;
  machine.Root = (dir.path() / "").string();  // a trailing separator must not double up
  const testing::FixedClock clock(0);
  TWizard wizard;

  const TSessionStart start = Start_Session(wizard, clock, machine);

  EXPECT_TRUE(start.Ok);
  EXPECT_TRUE(start.Messages.empty());
  const std::string wizard_folder = dir.path().string() + "/TSA/Wizard/";
  EXPECT_EQ(wizard.WizardFolder, wizard_folder);
  EXPECT_EQ(wizard.JobsFolder, wizard_folder + "Jobs/");
  EXPECT_EQ(wizard.TemplatesFolder, wizard_folder + "Templates/");
  EXPECT_EQ(wizard.ConfigFile, wizard_folder + "TSaW.Office.ini");
  EXPECT_EQ(wizard.ShellBrowserMode, 2);
  EXPECT_EQ(wizard.Variables[viTsawDeepName].Value, "Tessera Wizard");
  EXPECT_EQ(wizard.Variables[viTsawVersion].Value, "6.01");
  EXPECT_EQ(wizard.Variables[viCreationYear].Value, "1970");
  EXPECT_EQ(clock.readings(), 1);
}

TEST(SessionTest, MissingWizardFolderIsReportedAndTheSessionGoesOn) {
  testing::TempDir dir;
  testing::FakeMachineFolders machine;
  machine.Root = dir.path().string();
  TWizard wizard;
  const TSessionStart start = Start_Session(wizard, testing::FixedClock(0), machine);
  EXPECT_TRUE(start.Ok);
  EXPECT_EQ(start.Messages,
            std::vector<std::string>{"Wizard folder \"" + wizard.WizardFolder +
                                     "\" does not exist; no configuration, Jobs or templates are found there."});
  EXPECT_EQ(wizard.ConfigFile, wizard.WizardFolder + "TSaW.Default.ini");
}

TEST(SessionTest, WithoutARootNothingIsSet) {
  testing::FakeMachineFolders machine;
  TWizard wizard;
  const TSessionStart start = Start_Session(wizard, testing::FixedClock(0), machine);
  EXPECT_FALSE(start.Ok);
  EXPECT_EQ(start.Messages, std::vector<std::string>{
                                "The framework root folder is unknown: give --root, or set TESSERA_ROOT or HOME."});
  EXPECT_EQ(wizard.WizardFolder, "");
  EXPECT_TRUE(wizard.Variables.empty());
}

}  // namespace
}  // namespace tsaw
