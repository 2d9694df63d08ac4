#include "pages/option_pages.h"

#include <gtest/gtest.h>

#include "testing/wizard_builder.h"

namespace tsaw {
namespace {

constexpr uint16_t kLoggingVars[] = {viLoggingUseTLG, viLoggingLogComments, viLoggingLogInitFinit,
                                     viLoggingLogPinCreation, viLoggingLogFunctionResults};
constexpr const char* kDependents[] = {"cbxLogComments", "cbxLogInitFinit", "cbxLogPinCreation",
                                       "cbxLogFunctionResults"};

// The five logging variables' values, blank-separated.
std::string LoggingValues(const TWizard& wizard) {
  std::string values;
  for (uint16_t var : kLoggingVars) values += wizard.Variables[var].Value + " ";
  return values;
}

class LoggingPageTest : public ::testing::Test {
 protected:
  LoggingPageTest() : wizard_(testing::MakeWizard(1)) {
    for (uint16_t var : kLoggingVars) testing::SetVar(wizard_, var, "False");
  }
  TWizard wizard_;
  TPageMemory memory_;
};

TEST_F(LoggingPageTest, DependentOptionNeedsTheMaster) {
  TLoggingPage page(wizard_, memory_.For(TPageKind::Logging));
  page.Open();
  page.cbx_OnClick("cbxLogComments", true);
  EXPECT_FALSE(page.Checked("cbxLogComments"));
  EXPECT_EQ(LoggingValues(wizard_), "False False False False False ");
  EXPECT_EQ(page.Caption(), "Page is Ok");
}

TEST_F(LoggingPageTest, UncheckingTheMasterClearsAllOptions) {
  TLoggingPage page(wizard_, memory_.For(TPageKind::Logging));
  page.Open();
  page.lab_OnClick("labUseTLG");
  for (const char* box : kDependents) page.cbx_OnClick(box, true);
  EXPECT_EQ(LoggingValues(wizard_), "True True True True True ");
  page.cbx_OnClick("cbxUseTLG", false);
  for (const char* box : kDependents) EXPECT_FALSE(page.Checked(box)) << box;
  EXPECT_EQ(LoggingValues(wizard_), "False False False False False ");
}

TEST_F(LoggingPageTest, LoadedOptionWithoutMasterIsClearedAndWrittenBack) {
  testing::SetVar(wizard_, viLoggingLogComments, "True");
  TLoggingPage page(wizard_, memory_.For(TPageKind::Logging));
  page.Open();
  EXPECT_FALSE(page.Checked("cbxLogComments"));
  EXPECT_EQ(wizard_.Variables[viLoggingLogComments].Value, "False");
  EXPECT_EQ(wizard_.Variables[viLoggingLogComments].DefaultValue, "False");
}

TEST(CosmeticsPageTest, LabelClickTogglesTheOption) {
  TWizard wizard = testing::MakeWizard(0);
  testing::SetVar(wizard, viCosmeticCommentedHeaders, "yes");
  TPageMemory memory;
  TCosmeticsPage page(wizard, memory.For(TPageKind::Cosmetics));
  page.Open();
  EXPECT_TRUE(page.Checked("cbxCommentedHeaders"));
  EXPECT_EQ(wizard.Variables[viCosmeticCommentedHeaders].Value, "yes");
  page.lab_OnClick("labCommentedHeaders");
  EXPECT_EQ(wizard.Variables[viCosmeticCommentedHeaders].Value, "False");
}

}  // namespace
}  // namespace tsaw
