#include "model/expand.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/variables.h"
#include "testing/wizard_builder.h"
#include "testing/recording_sink.h"

namespace tsaw {
namespace {

using testing::MakeWizard;
using testing::SetValue;

TWizard ProductWizard() {
  TWizard wizard = MakeWizard(2);
  SetValue(wizard.Variables[viProductName], "My Product", "My_Product");
  SetValue(wizard.Variables[viAuthor], "Jane Doe", "Jane_Doe");
  SetValue(wizard.Variables[viProjectsPrefix], "T101_", "T101_");
  auto& versions = wizard.Variables[viPluginVersion].Pins;
  SetValue(*versions[1], "1.0", "_1_0");
  SetValue(*versions[2], "2.5", "_2_5");
  return wizard;
}

TEST(FindVar, PrefersTheLowerNumberWhereverItStands) {
  const TWizard wizard = ProductWizard();
  const TFindVarResult found = FindVar(wizard, "by #Author# for #Product.Name#", TFindMode::Name);
  EXPECT_TRUE(found.Found);
  EXPECT_EQ(found.VarIdx, viProductName);
  EXPECT_EQ(found.Token, "#Product.Name#");
  EXPECT_EQ(found.Position, 17);
  EXPECT_EQ(found.PluginIndex, 0);
}

TEST(FindVar, ReportsPositionsInTheWholeTextFromAStartPosition) {
  const TWizard wizard = ProductWizard();
  const TFindVarResult found = FindVar(wizard, "#Author# and #Author#", TFindMode::Name, viAuthor, 3);
  EXPECT_EQ(found.Position, 14);
  EXPECT_FALSE(FindVar(wizard, "#Author#", TFindMode::Name, viAuthor, 40).Found);
}

TEST(FindVar, FindsSubItemsAndIdentifierTokensInsideWords) {
  const TWizard wizard = ProductWizard();
  const TFindVarResult sub = FindVar(wizard, "v#Plugin[2].Version#", TFindMode::Name);
  EXPECT_EQ(sub.VarIdx, viPluginVersion);
  EXPECT_EQ(sub.PluginIndex, 2);
  const TFindVarResult ident = FindVar(wizard, "TvrProduct_NameForm", TFindMode::Identifier);
  EXPECT_EQ(ident.VarIdx, viProductName);
  EXPECT_EQ(ident.Position, 2);
  EXPECT_FALSE(FindVar(wizard, "Product.Name", TFindMode::Name).Found);
}

TEST(ExpandVar, ExpandsBothFormsPluginItemsAndAdjoiningReferences) {
  struct Case {
    const char* name;
    std::string text;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {"adjoining", "#Product.Name##Author#", "My ProductJane Doe"},
      {"identifier", "unit vrProjects_PrefixvrProduct_Name;", "unit T101_My_Product;"},
      {"indexed plug-in", "#Plugin[2].Version# vrPlugin2_Version", "2.5 _2_5"},
      {"current plug-in", "#Plugin.Version# vrPlugin_Version", "1.0 _1_0"},
      {"unknown and lone marks", "#Nobody# # 100%#", "#Nobody# # 100%#"},
      {"lines", "a #Author#\r\nb #Author#\r\n", "a Jane Doe\r\nb Jane Doe\r\n"},
      {"empty", "", ""},
  };
  const TWizard wizard = ProductWizard();
  for (const Case& c : cases) EXPECT_EQ(ExpandVar(wizard, c.text), c.expected) << c.name;
}

// A creation run expands each file name into the same string, sometimes the very text it holds.
TEST(ExpandVar, WritesOverTheTextItExpandsAndOverAnEarlierResult) {
  const TWizard wizard = ProductWizard();
  const TExpansionTable table(wizard);
  std::string text = "unit vrProjects_PrefixMain; // #Author#, #Product.Name#";
  EXPECT_EQ(ExpandVar(table, text, false, text), TExpandOutcome::Complete);
  EXPECT_EQ(text, "unit T101_Main; // Jane Doe, My Product");
  std::string res = "// vrProduct_Name by #Author#";
  EXPECT_EQ(ExpandVar(table, std::string_view(res).substr(3), false, res), TExpandOutcome::Complete);
  EXPECT_EQ(res, "My_Product by Jane Doe");
  std::string earlier(1000, 'x');
  EXPECT_EQ(ExpandVar(table, "#Author#", false, earlier), TExpandOutcome::Complete);
  EXPECT_EQ(earlier, "Jane Doe");
}

TEST(ExpandVar, LeavesLowerNumberedReferencesOfValuesToTheNextPass) {
  TWizard wizard = ProductWizard();
  SetValue(wizard.Variables[viHostProjectName], "#Projects.Prefix#Host", "");
  std::string one_pass;
  EXPECT_EQ(ExpandVar(wizard, "#Host.ProjectName#.dpr", true, one_pass), TExpandOutcome::Complete);
  EXPECT_EQ(one_pass, "#Projects.Prefix#Host.dpr");
  EXPECT_EQ(ExpandVar(wizard, "#Host.ProjectName#.dpr"), "T101_Host.dpr");
}

TEST(ExpandVar, AppliesPairsToValuesThroughTheMarker) {
  TWizard wizard = ProductWizard();
  SetValue(wizard.Variables[viCompanyName], "A'B [tEmP.sTr]", "AB");
  const std::vector<std::string> quote = {"'", "''"};
  std::string res;
  ExpandVar(wizard, "'#Company.Name#' vrCompany_Name", false, res, quote);
  EXPECT_EQ(res, "'A''B ''' AB");
  ExpandVar(wizard, "#Company.Name#", false, res, {"'"});
  EXPECT_EQ(res, "A'B [tEmP.sTr]");
}

TEST(ExpandVar, StopsAtABoundWhenACycleWasNotNeutralised) {
  struct Case {
    const char* name;
    uint16_t var;
    std::string value;
    std::string idf_value;
    TExpandOutcome full;
    TExpandOutcome one_pass;  // a cycle across variables only shows over several passes
  };
  const std::vector<Case> cases = {
      {"mutual", viAuthor, "#Copyright#", "", TExpandOutcome::TooManyPasses, TExpandOutcome::Complete},
      {"grows", viAuthor, "(#Author##Author#)", "", TExpandOutcome::TooLarge, TExpandOutcome::TooLarge},
      {"identifier", viAuthor, "", "vrAuthor", TExpandOutcome::TooManyPasses, TExpandOutcome::TooManyPasses},
      {"longer identifier", viAuthor, "", "x_vrAuthor", TExpandOutcome::TooManyPasses,
       TExpandOutcome::TooManyPasses},
  };
  for (const Case& c : cases) {
    TWizard wizard = ProductWizard();
    SetValue(wizard.Variables[viCopyright], "(c) #Author#", "");
    SetValue(wizard.Variables[c.var], c.value, c.idf_value);
    std::string res;
    EXPECT_EQ(ExpandVar(wizard, "#Author# vrAuthor", false, res), c.full) << c.name;
    EXPECT_LE(res.size(), ExpansionLimitFor("#Author# vrAuthor")) << c.name;
    EXPECT_EQ(ExpandVar(wizard, "#Author# vrAuthor", true, res), c.one_pass) << c.name;
  }
}

TEST(FindVarByName, MatchesTheExactNameOnly) {
  const TWizard wizard = ProductWizard();
  EXPECT_EQ(FindVarByName(wizard, "Product.Name"), viProductName);
  EXPECT_EQ(FindVarByName(wizard, "product.name"), 0);
  EXPECT_EQ(FindVarByName(wizard, "Product.Name", 20), 0);
  EXPECT_EQ(FindVarByName(wizard, "Output.BaseFolder", 60000), viOutputBaseFolder);
  EXPECT_EQ(FindLookupVar(wizard, "Lookup.Product.Name"), viProductName);
  EXPECT_EQ(FindLookupVar(wizard, "Look"), 0);
}

TEST(AnyCvrError, NeutralisesASelfReferenceSilently) {
  TWizard wizard = ProductWizard();
  wizard.Variables[viAuthor].Value = "#Author# of vrAuthor";
  std::vector<std::string> messages;
  EXPECT_EQ(AnyCvrError(wizard, [&](const std::string& m) { messages.push_back(m); }), viAuthor);
  EXPECT_EQ(wizard.Variables[viAuthor].Value, "*Author* of vrAuthor");
  EXPECT_TRUE(messages.empty());
}

TEST(AnyCvrError, NamesTheLowerNumberedOfTwoVariablesThatReferToEachOther) {
  TWizard wizard = ProductWizard();
  wizard.Variables[viCopyright].Value = "(c) #Author#";
  wizard.Variables[viAuthor].Value = "#Copyright#";
  std::vector<std::string> messages;
  EXPECT_EQ(AnyCvrError(wizard, [&](const std::string& m) { messages.push_back(m); }), viAuthor);
  EXPECT_EQ(messages, std::vector<std::string>{"2 - CVR (Circular Variable Reference) Error:  Author"});
  EXPECT_EQ(wizard.Variables[viAuthor].Value, "*Copyright*");
  EXPECT_EQ(AnyCvrError(wizard, nullptr), 0);
}

TEST(AnyCvrError, FindsIdentifierCyclesAndMakesTheValueHarmless) {
  TWizard wizard = ProductWizard();
  SetValue(wizard.Variables[viProductName], "P#x vr vr* vr**", "vrCompany_Name");
  SetValue(wizard.Variables[viCompanyName], "Co", "x_vrProduct_Name");
  std::vector<std::string> messages;
  EXPECT_EQ(AnyCvrError(wizard, [&](const std::string& m) { messages.push_back(m); }), viProductName);
  EXPECT_EQ(messages, std::vector<std::string>{"2 - CVR (Circular Variable Reference) Error:  Product.Name"});
  EXPECT_EQ(wizard.Variables[viProductName].Value, "P*x vr* vr* vr**");
}

TEST(AnyCvrError, IsNotHeldUpByACycleThatNeverLeadsBack) {
  TWizard wizard = ProductWizard();
  wizard.Variables[viCreationTime].Value = "#Host.ProjectName#";
  wizard.Variables[viHostProjectName].Value = "#Manager.Version#";
  wizard.Variables[viManagerVersion].Value = "#Host.ProjectName#";
  std::vector<std::string> messages;
  EXPECT_EQ(AnyCvrError(wizard, [&](const std::string& m) { messages.push_back(m); }), viHostProjectName);
  EXPECT_EQ(messages, std::vector<std::string>{"2 - CVR (Circular Variable Reference) Error:  Host.ProjectName"});
}

TEST(AnyCvrError, LogsEachExpandedText) {
  TWizard wizard;
  wizard.Variables.resize(3);
  wizard.VarCount = 3;  // one above the table: the search stops at its end
  wizard.Variables[1].Name = "A";
  wizard.Variables[1].Token = "vrA";
  SetValue(wizard.Variables[1], "#B#!", "A");
  wizard.Variables[2].Name = "B";
  wizard.Variables[2].Token = "vrB";
  SetValue(wizard.Variables[2], "b", "vrA");
  tsaw::testing::RecordingDebugLog log;
  EXPECT_EQ(AnyCvrError(wizard, nullptr), 0);
  EXPECT_EQ(log.lines(), (std::vector<std::string>{
                             "TSaW_Common.AnyCvrError entered",
                             "  AnyCvrError.CheckIt.2:  S: 'b!' (expanded)",
                             "  AnyCvrError.CheckIt.2:  S: 'A' (expanded)",
                             "  AnyCvrError.CheckIt.2:  S: 'b' (expanded)",
                             "  AnyCvrError.CheckIt.2:  S: 'vrA' (expanded)",
                             "  AnyCvrError.CheckIt.2:  S: 'A' (expanded)",
                             "TSaW_Common.AnyCvrError left",
                         }));
}

TEST(Str2Idf, KeepsIdentifierCharacters) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"Product Name 2", "Product_Name_2"}, {"2.2.05", "_2_2_05"}, {"C:/x", "C_x"},
      {"a   b", "a__b"},                     {"Ünïcode ©", "ncode_"}, {"", ""},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(Str2Idf(text), expected) << text;
}

TEST(Piped2Text, TurnsSeparatorsIntoLines) {
  const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
      {"|a | b||c|", "|", "a\r\nb\r\nc\r\n"},
      {"first ¶ second", "¶", "first\r\nsecond"},
      {"no separator", "|", "no separator"},
      {"||| x", "|", "x"},
      {"a ¦ b", "¦", "a\r\nb"},
  };
  for (const auto& [text, pipe, expected] : cases) EXPECT_EQ(Piped2Text(text, pipe), expected) << text;
}

}  // namespace
}  // namespace tsaw
