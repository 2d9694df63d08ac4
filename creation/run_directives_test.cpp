#include "creation/run_directives.h"

#include <gtest/gtest.h>

#include "model/expand.h"
#include "model/variables.h"

namespace tsaw::creation {
namespace {

const TProgramInfo kProgram{"Tessera Wizard", "6.01"};

class RunDirectivesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Init_Variables(wizard_);
    wizard_.RunData = std::make_unique<TRunData>();
    wizard_.RunData->PluginCount = 3;
    wizard_.PluginIndex = 1;
    Set(viTsaVersion, "2.2.05");
    Set(viTsawVersion, "6.01");
    Set(viPluginIndex, "1");
    Set(viManagerPluginExtension, "tsa");
    for (uint16_t var = viLoggingUseTLG; var <= viCosmeticCommentedHeaders; ++var) Set(var, "True");
  }
  void Set(uint16_t var_idx, const std::string& value) {
    wizard_.Variables[var_idx].Value = value;
    wizard_.Variables[var_idx].IdfValue = Str2Idf(value);
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const TDirectiveItem& item : wizard_.Directives) names.push_back(item.Name);
    return names;
  }
  TWizard wizard_;
};

TEST_F(RunDirectivesTest, KeepsTheNumberingOfTheKeptItemsAndRefusesThePluginCount) {
  Set(viLoggingUseTLG, "False");
  Set(viTarget, "D7W32");
  Setup_Template_Directives(wizard_, kProgram);
  EXPECT_EQ(Names(), (std::vector<std::string>{
                         "", "", "", "dd", "dd", "dd", "dd", "dd", "", "ddTsa2205", "ddTsaw601", "ddUseTLG",
                         "ddLogComments", "ddLogInitFinit", "ddLogPinCreation", "ddLogFunctionResults",
                         "ddCommentedHeaders", "ddTargetLanguage_", "ddTargetPlatform_", "ddTarget_D7W32",
                         "ddPluginIndex_1", "ddPluginExtension_tsa"}));
  EXPECT_EQ(wizard_.RunDirectives.PluginCount, ddUndef);
}

TEST_F(RunDirectivesTest, RenamesOnlyTheItemsWhoseAnswerIsOff) {
  Set(viLoggingLogInitFinit, "False");
  Set(viCosmeticCommentedHeaders, "False");
  Setup_Template_Directives(wizard_, kProgram);
  const std::vector<std::string> names = Names();
  EXPECT_EQ(std::vector<std::string>(names.begin(), names.begin() + 9),
            (std::vector<std::string>{"", "", "", "", "", "dd", "", "", "dd"}));
}

TEST_F(RunDirectivesTest, AddsTheOtherExtensionDirectiveOnlyForAnExtensionOtherThanTsa) {
  Set(viManagerPluginExtension, "TSA");
  Setup_Template_Directives(wizard_, kProgram);
  const std::vector<std::string> names = Names();
  EXPECT_EQ(std::vector<std::string>(names.end() - 2, names.end()),
            (std::vector<std::string>{"ddPluginExtension_TSA", "ddPluginExtension_Other"}));
}

// Item 4 is named "dd" by the LogComments answer and, bound to no variable, is defined 0.
TEST_F(RunDirectivesTest, DefinesFollowTheBoundVariables) {
  Set(viLoggingLogComments, "False");
  Set(viTargetLanguage, "D7");
  Setup_Template_Directives(wizard_, kProgram);
  std::vector<std::string> lines;
  const TDefines defines = ModelProcessorDefines(wizard_);
  for (const auto& entry : defines.Entries()) lines.push_back(entry.Name + "=" + entry.Value);
  EXPECT_EQ(lines, (std::vector<std::string>{
                       "ddTemplate=0", "dd=0", "ddTsa2205=1", "ddTsaw601=1", "ddUseTLG=1", "ddLogComments=0",
                       "ddLogInitFinit=1", "ddLogPinCreation=1", "ddLogFunctionResults=1", "ddCommentedHeaders=1",
                       "ddTargetLanguage_D7=1", "ddTargetPlatform_=0", "ddTarget_=0", "ddPluginIndex_1=1",
                       "ddPluginExtension_tsa=1"}));
}

TEST_F(RunDirectivesTest, RenamingARunDirectiveMovesItsDefine) {
  Setup_Template_Directives(wizard_, kProgram);
  TDefines defines = ModelProcessorDefines(wizard_);
  Set(viPluginIndex, "2");
  RenameRunDirective(wizard_, defines, wizard_.RunDirectives.PluginIndex, "PluginIndex_2");
  EXPECT_EQ(defines.Value("ddPluginIndex_1"), "0");
  EXPECT_EQ(defines.Value("ddPluginIndex_2"), "1");
  Set(viPluginIndex, "1");
  RenameRunDirective(wizard_, defines, wizard_.RunDirectives.PluginIndex, "PluginIndex_1");
  EXPECT_EQ(defines.Value("ddPluginIndex_1"), "1");
  EXPECT_EQ(defines.Value("ddPluginIndex_2"), "0");
}

}  // namespace
}  // namespace tsaw::creation
