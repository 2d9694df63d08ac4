#include "pages/common_page.h"

#include <gtest/gtest.h>

#include "testing/wizard_builder.h"

namespace tsaw {
namespace {

using testing::MakeWizard;
using testing::SetPin;
using testing::SetVar;

class CommonPageTest : public ::testing::Test {
 protected:
  // The error list of the page opened on `wizard`.
  std::string Errors(TWizard& wizard) {
    TCommonPage page(wizard, memory_.For(TPageKind::Common));
    page.Open();
    return page.Errors().Text();
  }

  TPageMemory memory_;
};

TEST_F(CommonPageTest, ProjectsPrefixRules) {
  const struct {
    const char* prefix;
    const char* errors;
  } cases[] = {
      {"",
       "1 - Projects Prefix (expanded to \"\") cannot be blank.\r\n"
       "It will be used to replace the Template Prefix at creation stage."},
      {"1abc",
       "1 - Projects Prefix (expanded to \"1abc\") cannot start with a number.\r\n"
       "It may contains numbers, but the first character must be a letter."},
      {"1a-b",
       "1 - Projects Prefix (expanded to \"1a-b\") cannot start with a number.\r\n"
       "It may contains numbers, but the first character must be a letter.\r\n\r\n"
       "2 - Projects Prefix (expanded to \"1a-b\") should contain only letters, numbers and underscore "
       "chars."},
      {"My_Prefix", ""},
      {"#Company.Name#",
       "1 - Projects Prefix (expanded to \"My Co\") should contain only letters, numbers and "
       "underscore chars."},
  };
  for (const auto& c : cases) {
    TWizard wizard = MakeWizard(0);
    SetVar(wizard, viCompanyName, "My Co");
    SetVar(wizard, viHostProjectName, "MyHost");
    SetVar(wizard, viProjectsPrefix, c.prefix);
    EXPECT_EQ(Errors(wizard), c.errors) << c.prefix;
  }
}

TEST_F(CommonPageTest, HostNameRulesAndBlankPluginName) {
  TWizard wizard = MakeWizard(1);
  SetVar(wizard, viProjectsPrefix, "P");
  SetVar(wizard, viHostProjectName, "2 Host");
  EXPECT_EQ(
      Errors(wizard),
      "1 - Host Project Name (expanded to \"2 Host\") cannot start with a number.\r\n"
      "It may contains numbers, but the first character must be a letter.\r\n\r\n"
      "2 - Host Project Name (expanded to \"2 Host\") should contain only letters, numbers and underscore "
      "chars.\r\n\r\n"
      "3 - Plugin[1] Project Name (expanded to \"\") cannot be blank.\r\n"
      "It will be used to replace the name the plugin project(s) at creation stage.");
}

TEST_F(CommonPageTest, PluginNameEqualToHostIgnoringCase) {
  TWizard wizard = MakeWizard(1);
  SetVar(wizard, viProjectsPrefix, "P");
  SetVar(wizard, viHostProjectName, "MyHost");
  SetPin(wizard, viPluginProjectName, 1, "myhost");
  EXPECT_EQ(Errors(wizard),
            "1 - Plugin[1] Project Name (expanded to \"myhost\") must be unique in the Project Set.\r\n"
            "It's currently equal to the Host Project Name.");
}

TEST_F(CommonPageTest, EachClashReportedOnceAtTheLowerIndex) {
  TWizard wizard = MakeWizard(3);
  SetVar(wizard, viProjectsPrefix, "P");
  SetVar(wizard, viHostProjectName, "A");
  for (uint16_t i = 1; i <= 3; ++i) SetPin(wizard, viPluginProjectName, i, "A");
  const std::string host =
      " must be unique in the Project Set.\r\nIt's currently equal to the Host Project Name.";
  const std::string pin = " must be unique in the Project Set.\r\nIt's currently equal to the Plugin[";
  EXPECT_EQ(Errors(wizard),
            "1 - Plugin[1] Project Name (expanded to \"A\")" + host + "\r\n\r\n" +
                "2 - Plugin[1] Project Name (expanded to \"A\")" + pin + "2] Project Name.\r\n\r\n" +
                "3 - Plugin[1] Project Name (expanded to \"A\")" + pin + "3] Project Name.\r\n\r\n" +
                "4 - Plugin[2] Project Name (expanded to \"A\")" + host + "\r\n\r\n" +
                "5 - Plugin[2] Project Name (expanded to \"A\")" + pin + "3] Project Name.\r\n\r\n" +
                "6 - Plugin[3] Project Name (expanded to \"A\")" + host);
}

TEST_F(CommonPageTest, PluginNamesExpandWithTheirOwnIndexAndPluginIndexIsRestored) {
  TWizard wizard = MakeWizard(2);
  wizard.PluginIndex = 2;
  SetVar(wizard, viPluginIndex, "2");
  SetVar(wizard, viProjectsPrefix, "Px");
  SetVar(wizard, viHostProjectName, "Host");
  for (uint16_t i = 1; i <= 2; ++i)
    SetPin(wizard, viPluginProjectName, i, "#Projects.Prefix#-#Plugin.Index#");
  EXPECT_EQ(
      Errors(wizard),
      "1 - Plugin[1]  Project Name (expanded to \"Px-1\") should contain only letters and numbers.\r\n\r\n"
      "2 - Plugin[2]  Project Name (expanded to \"Px-2\") should contain only letters and numbers.");
  EXPECT_EQ(wizard.Variables[viPluginIndex].Value, "2");
  EXPECT_EQ(wizard.Variables[viPluginIndex].IdfValue, "_2");

  for (uint16_t i = 1; i <= 2; ++i)
    SetPin(wizard, viPluginProjectName, i, "#Projects.Prefix#Plugin#Plugin.Index#");
  EXPECT_EQ(Errors(wizard), "");
}

TEST_F(CommonPageTest, PublishesOutcomeToTheFrameAndTheValidationTab) {
  TWizard wizard = MakeWizard(0);
  std::vector<bool> reported;
  wizard.RefreshStepButtons = [&](bool valid) { reported.push_back(valid); };
  SetVar(wizard, viHostProjectName, "Host");
  TCommonPage page(wizard, memory_.For(TPageKind::Common));
  page.Open();
  EXPECT_EQ(page.Caption(), "1 Error:");
  EXPECT_EQ(page.InfoTab(), kInfoTabValidation);

  page.labTabInfo_OnClick(kInfoTabAdvice);
  page.edi_OnChange(viProjectsPrefix, "  My_Prefix\t");
  EXPECT_EQ(wizard.Variables[viProjectsPrefix].Value, "My_Prefix");
  EXPECT_EQ(page.Caption(), "Page is ok");
  EXPECT_EQ(page.Errors().Text(), "");
  EXPECT_EQ(page.InfoTab(), kInfoTabAdvice);
  EXPECT_EQ(reported, (std::vector<bool>{false, true}));
}

}  // namespace
}  // namespace tsaw
