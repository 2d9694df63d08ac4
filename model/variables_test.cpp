#include "model/variables.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "testing/wizard_builder.h"
#include "testing/recording_sink.h"

namespace tsaw {
namespace {

using testing::MakeWizard;

TEST(InitVariables, BuildsTheFixedTableWithTokensAndPluginArrays) {
  TWizard wizard;
  Init_Variables(wizard);
  ASSERT_EQ(wizard.Variables.size(), 48u);
  EXPECT_EQ(wizard.VarCount, 48);
  EXPECT_EQ(wizard.Variables[0].Name, "");
  std::vector<uint16_t> plugin_arrays;
  for (uint16_t v = 1; v <= kFixedVariableCount; ++v) {
    EXPECT_EQ(wizard.Variables[v].Name, kFixedVariableNames[v]);
    if (wizard.Variables[v].IsPluginArray) plugin_arrays.push_back(v);
  }
  EXPECT_EQ(plugin_arrays, (std::vector<uint16_t>{15, 35, 36, 37, 38, 39, 40}));
  EXPECT_EQ(wizard.Variables[viProjectsPrefix].Token, "vrProjects_Prefix");
  EXPECT_EQ(wizard.Variables[viTarget].Token, "vrTarget");
  EXPECT_EQ(wizard.Variables[viOutputBaseFolder].Name, "Output.BaseFolder");
  EXPECT_EQ(wizard.Variables[viPluginVersion].Pins.size(), 1u);
}

TEST(ResizePinSubArray, NamesItemsAfterTheirPluginNumber) {
  TWizard wizard = MakeWizard(12);
  const auto& pins = wizard.Variables[viPluginSourcePrefix].Pins;
  ASSERT_EQ(pins.size(), 13u);
  EXPECT_EQ(pins[0], nullptr);
  EXPECT_EQ(pins[12]->Name, "Plugin[12].Source.Prefix");
  EXPECT_EQ(pins[12]->Token, "vrPlugin12_Source_Prefix");
  EXPECT_EQ(wizard.Variables[viPluginVersion].Pins[2]->Name, "Plugin[2].Version");
}

TEST(ClearPinSubArrays, LeavesOnlyTheEmptyElementZero) {
  TWizard wizard = MakeWizard(3);
  wizard.Variables[viPluginAuthor].Pins.resize(1);  // already bare: stays as it is
  Clear_Pin_SubArrays(wizard);
  for (const TVariableItem& variable : wizard.Variables) {
    if (!variable.IsPluginArray) continue;
    ASSERT_EQ(variable.Pins.size(), 1u) << variable.Name;
    EXPECT_EQ(variable.Pins[0], nullptr) << variable.Name;
  }
  TWizard empty;
  Clear_Pin_SubArrays(empty);
  EXPECT_TRUE(empty.Variables.empty());
}

TEST(ClearWizard, ResetsTheWholeState) {
  TWizard wizard = MakeWizard(2);
  wizard.JobsFolder = "jobs/";
  MakeNewDirective(wizard, viLoggingUseTLG, "UseTLG");
  Clear_Wizard(wizard);
  EXPECT_EQ(wizard.RunData, nullptr);
  EXPECT_TRUE(wizard.Variables.empty());
  EXPECT_TRUE(wizard.Directives.empty());
  EXPECT_EQ(wizard.JobsFolder, "");
  EXPECT_EQ(wizard.PluginIndex, 0);
  EXPECT_EQ(wizard.VarCount, kInitialVariableCount);
  EXPECT_EQ(PluginCountOf(wizard), 0);
}

TEST(Directives, AreNumberedFromOneInOrderOfCreation) {
  TWizard wizard;
  EXPECT_EQ(MakeNewDirective(wizard, viLoggingUseTLG, "UseTLG"), 1);
  EXPECT_EQ(MakeNewDirective(wizard, viLoggingLogComments, "LogComments"), 2);
  ASSERT_EQ(wizard.Directives.size(), 3u);
  EXPECT_EQ(wizard.Directives[0].Name, "");
  EXPECT_EQ(wizard.Directives[2].Name, "ddLogComments");
  EXPECT_EQ(wizard.Directives[2].VarIdx, viLoggingLogComments);
  EXPECT_EQ(wizard.DirectivesHigh, 2);
}

TEST(ResetDirective, RenamesValidNumbersAndLogsTheOthers) {
  struct Case {
    const char* name;
    uint16_t dir_const;
    std::vector<std::string> names;
    std::vector<std::string> log;
  };
  const std::vector<Case> cases = {
      {"valid", 2, {"", "ddUseTLG", "ddPluginIndex_3"}, {}},
      {"undefined", 0, {"", "ddUseTLG", "ddLogComments"}, {"Parameter \"DirConst\" cannot be ddUndef."}},
      {"beyond", 5,
       {"", "ddUseTLG", "ddLogComments"},
       {"Parameter \"DirConst\" out of bounds: 5.  High(Directives): 2"}},
  };
  for (const Case& c : cases) {
    TWizard wizard;
    MakeNewDirective(wizard, viLoggingUseTLG, "UseTLG");
    MakeNewDirective(wizard, viLoggingLogComments, "LogComments");
    tsaw::testing::RecordingDebugLog log;
    ResetDirective(wizard, c.dir_const, "PluginIndex_3");
    std::vector<std::string> names;
    for (const TDirectiveItem& item : wizard.Directives) names.push_back(item.Name);
    EXPECT_EQ(names, c.names) << c.name;
    EXPECT_EQ(log.lines(), c.log) << c.name;
  }
}

TEST(BackupVar, OnAPluginArrayTouchesOnlyTheCurrentPluginsItem) {
  TWizard wizard = MakeWizard(3);
  auto& pins = wizard.Variables[viPluginVersion].Pins;
  for (int n = 1; n <= 3; ++n) pins[n]->Value = "1." + std::to_string(n);
  wizard.PluginIndex = 2;
  BackupVar(wizard, viPluginVersion, "9.9");
  EXPECT_EQ(pins[1]->Value, "1.1");
  EXPECT_EQ(pins[2]->Value, "9.9");
  EXPECT_EQ(pins[3]->Value, "1.3");
  EXPECT_EQ(wizard.Variables[viPluginVersion].Value, "");
  RestoreVar(wizard, viPluginVersion);
  EXPECT_EQ(pins[2]->Value, "1.2");
}

TEST(BackupVar, KeepsOneLevelOnly) {
  TWizard wizard = MakeWizard(0);
  wizard.Variables[viTarget].Value = "Delphi 7";
  BackupVar(wizard, viTarget, "Delphi 2005");
  BackupVar(wizard, viTarget, "Chrome");
  RestoreVar(wizard, viTarget);
  EXPECT_EQ(wizard.Variables[viTarget].Value, "Delphi 2005");
}

TEST(CurrentItem, FallsBackToTheVariableWithoutACurrentPlugin) {
  TWizard wizard = MakeWizard(2);
  wizard.PluginIndex = 2;
  EXPECT_EQ(&CurrentItem(wizard, viPluginAuthor), wizard.Variables[viPluginAuthor].Pins[2].get());
  wizard.PluginIndex = 0;
  EXPECT_EQ(&CurrentItem(wizard, viPluginAuthor), &wizard.Variables[viPluginAuthor]);
  wizard.PluginIndex = 7;
  EXPECT_EQ(&CurrentItem(wizard, viPluginAuthor), &wizard.Variables[viPluginAuthor]);
}

}  // namespace
}  // namespace tsaw
