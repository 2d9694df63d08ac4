#include "pages/field_page.h"

#include <gtest/gtest.h>

#include "pages/plugin_page.h"
#include "testing/wizard_builder.h"

namespace tsaw {
namespace {

using testing::MakeWizard;
using testing::SetPin;
using testing::SetVar;

class FieldPageTest : public ::testing::Test {
 protected:
  TPageMemory memory_;
};

TEST_F(FieldPageTest, EditStoresTheTrimmedTextInTheCurrentPluginsElement) {
  TWizard wizard = MakeWizard(2);
  wizard.PluginIndex = 2;
  TPluginPage page(wizard, memory_.For(TPageKind::Plugin));
  page.Open();
  page.edi_OnChange(viPluginVersion, " \t2.0 beta\r\n");
  const TVariableItem& item = *wizard.Variables[viPluginVersion].Pins[2];
  EXPECT_EQ(item.Value, "2.0 beta");
  EXPECT_EQ(item.DefaultValue, "2.0 beta");
  EXPECT_EQ(item.IdfValue, "_2_0_beta");
  EXPECT_EQ(wizard.Variables[viPluginVersion].Pins[1]->Value, "");
  EXPECT_EQ(page.Errors().Text(),
            "1 - Plugin[1] Version (expanded to \"\") cannot be blank.\r\n"
            "It will be used to generate the DCI of the plugin at creation stage.");
}

TEST_F(FieldPageTest, ExpandedPreviewShowsValuesAndIgnoresEdits) {
  TWizard wizard = MakeWizard(1);
  SetVar(wizard, viAuthor, "Ann");
  SetPin(wizard, viPluginAuthor, 1, "#Author# Doe");
  TPluginPage page(wizard, memory_.For(TPageKind::Plugin));
  page.Open();
  const TField& author = *page.FieldOf(viPluginAuthor);
  EXPECT_EQ(page.FieldText(author), "#Author# Doe");

  EXPECT_TRUE(page.cbxExpand_OnClick(true, [](const std::string&) { FAIL() << "no cycle here"; }));
  EXPECT_EQ(page.FieldText(author), "Ann Doe");
  page.edi_OnChange(viPluginAuthor, "Ann Doe");
  EXPECT_EQ(wizard.Variables[viPluginAuthor].Pins[1]->Value, "#Author# Doe");
}

TEST_F(FieldPageTest, CircularReferenceKeepsThePreviewOff) {
  TWizard wizard = MakeWizard(1);
  SetVar(wizard, viAuthor, "#Copyright#");
  SetVar(wizard, viCopyright, "#Author#");
  TPluginPage page(wizard, memory_.For(TPageKind::Plugin));
  page.Open();
  std::vector<std::string> messages;
  EXPECT_FALSE(page.cbxExpand_OnClick(true, [&](const std::string& m) { messages.push_back(m); }));
  EXPECT_FALSE(page.Expanded());
  EXPECT_EQ(messages.size(), 1u);
}

TEST_F(FieldPageTest, PluginSelector) {
  TWizard wizard = MakeWizard(3);
  TPluginPage page(wizard, memory_.For(TPageKind::Plugin));
  page.Open();
  EXPECT_EQ(page.PluginItems(), (std::vector<std::string>{" 1", " 2", " 3"}));
  EXPECT_TRUE(page.PluginSelectorVisible());
  page.cboPluginIdx_OnChange(" 3");
  EXPECT_EQ(wizard.PluginIndex, 3);
  EXPECT_EQ(wizard.Variables[viPluginIndex].Value, "3");
  EXPECT_EQ(page.CurrentPluginItem(), " 3");
  page.cboPluginIdx_OnChange(std::nullopt);
  EXPECT_EQ(wizard.PluginIndex, 1);

  TWizard single = MakeWizard(1);
  TPluginPage single_page(single, memory_.For(TPageKind::Plugin));
  EXPECT_FALSE(single_page.PluginSelectorVisible());
  EXPECT_TRUE(single_page.PluginSelectorEnabled());
}

TEST_F(FieldPageTest, LookupHintComesFromTheRelatedLookupVariable) {
  TWizard wizard = MakeWizard(1);
  TVariableItem lookup;
  lookup.Name = "Lookup.Plugin.Author";
  lookup.Hint = "Pick an author";
  wizard.Variables.push_back(std::move(lookup));
  wizard.Variables[viPluginAuthor].LookupVar = static_cast<uint16_t>(wizard.Variables.size() - 1);
  TPluginPage page(wizard, memory_.For(TPageKind::Plugin));
  EXPECT_EQ(page.LookupHint(*page.FieldOf(viPluginAuthor)), " Pick an author ");
  EXPECT_EQ(page.LookupHint(*page.FieldOf(viPluginVersion)), " Lookup for a vaue in a list ");
}

TEST_F(FieldPageTest, AdviceAndTabAreRememberedPerPageType) {
  TWizard wizard = MakeWizard(1);
  SetPin(wizard, viPluginVersion, 1, "1.0");
  {
    TPluginPage page(wizard, memory_.For(TPageKind::Plugin));
    page.Open();
    EXPECT_EQ(page.InfoTab(), kInfoTabAdvice);
    EXPECT_EQ(page.AdviceText(), kInitialAdvice);
    EXPECT_TRUE(page.Controls_OnEnter("memDescription"));
    EXPECT_EQ(
        page.AdviceText(),
        "\"Description\" will be used as the value for the Plugin's Description property. Although it would "
        "not make much sense the use of Wizard Variables here, you are free to do that.");
    EXPECT_FALSE(page.Controls_OnEnter("memAdvice"));
    page.labTabInfo_OnClick(kInfoTabValidation);
  }
  TPluginPage again(wizard, memory_.For(TPageKind::Plugin));
  again.Open();
  EXPECT_EQ(again.LastEnteredControl(), "memAdvice");
  EXPECT_EQ(again.InfoTab(), kInfoTabValidation);
  EXPECT_EQ(memory_.For(TPageKind::Common).LastInfoTab, kInfoTabNone);
}

}  // namespace
}  // namespace tsaw
