#include "pages/languages_page.h"

#include <gtest/gtest.h>

#include "testing/wizard_builder.h"

namespace tsaw {
namespace {

using TKind = TClickStep::TKind;

TClickStep Message(const char* text) { return {TKind::ShowMessage, TBoxState::Unchecked, text}; }
TClickStep State(TBoxState state) { return {TKind::SetState, state, ""}; }

class LanguagesPageTest : public ::testing::Test {
 protected:
  LanguagesPageTest() : wizard_(testing::MakeWizard(1)) {
    for (uint16_t t = 1; t <= 18; ++t) wizard_.Targets[t].Allowed = true;
  }
  TWizard wizard_;
  TPageMemory memory_;
};

TEST_F(LanguagesPageTest, SixteenBoxesInGridOrderWithTheirTargets) {
  TLanguagesPage page(wizard_, memory_.For(TPageKind::Languages));
  page.Open();
  std::string listing;
  for (const TTargetBox& box : page.Boxes()) {
    listing += box.Name + "=" + std::to_string(box.Target) + (box.Loaded ? "L " : " ");
  }
  EXPECT_EQ(
      listing,
      "cbxWinD5=1L cbxWinD6=2L cbxWinD7=3L cbxVclNetD8=4L cbxNetFclD8=5 cbxWinD2005=6L cbxVclNetD2005=7L "
      "cbxNetFclD2005=8 cbxWinD2006=9L cbxVclNetD2006=10L cbxNetFclD2006=11 cbxWinD2007=12L cbxWinTD2006=15L "
      "cbxVclNetTD2006=16L cbxNetFclTD2006=17 cbxNetFclChrome=18 ");
  EXPECT_EQ(TLanguagesPage::Hint(*page.Box("cbxNetFclD8")), " Delphi 8 for Pure .NET FCL ");
  ASSERT_TRUE(page.Controls_OnEnter("cbxWinD5"));
  EXPECT_EQ(
      page.AdviceText(),
      "Includes Delphi 5 for Win32 as target, if the template provides the corresponding folder and files.");
}

TEST_F(LanguagesPageTest, ClickRules) {
  wizard_.Targets[3].Required = true;
  wizard_.Targets[3].Checked = true;
  wizard_.Targets[9].Allowed = false;
  const char* vcl = "VCL.NET will be available in Tessera 3.0";
  const char* fcl = "Pure .NET FCL and Chrome are planned for Tessera 4.0";
  const struct {
    const char* box;
    std::vector<TClickStep> steps;
    TBoxState state;
  } cases[] = {
      {"cbxVclNetD2005", {Message(vcl), State(TBoxState::Unchecked)}, TBoxState::Unchecked},
      {"cbxVclNetTD2006", {Message(vcl), State(TBoxState::Unchecked)}, TBoxState::Unchecked},
      {"cbxNetFclD8", {Message(fcl), State(TBoxState::Unchecked)}, TBoxState::Unchecked},
      {"cbxNetFclChrome", {Message(fcl), State(TBoxState::Unchecked)}, TBoxState::Unchecked},
      {"cbxWinD7",
       {State(TBoxState::Grayed), Message("This item is required in the selected template.")},
       TBoxState::Grayed},
      {"cbxWinD2006",
       {State(TBoxState::Unchecked), Message("This item is disallowed in the selected template.")},
       TBoxState::Unchecked},
      {"cbxWinD5", {}, TBoxState::Checked},
  };
  for (const auto& c : cases) {
    TLanguagesPage page(wizard_, memory_.For(TPageKind::Languages));
    page.Open();
    EXPECT_EQ(page.cbx_OnClick(c.box, true), c.steps) << c.box;
    EXPECT_EQ(page.Box(c.box)->State, c.state) << c.box;
  }
  EXPECT_TRUE(wizard_.Targets[3].Checked);
  EXPECT_FALSE(wizard_.Targets[9].Checked);
  EXPECT_FALSE(wizard_.Targets[7].Checked);
}

TEST_F(LanguagesPageTest, LowestSelectedTargetBecomesCurrent) {
  TLanguagesPage page(wizard_, memory_.For(TPageKind::Languages));
  page.Open();
  page.cbx_OnClick("cbxWinD7", true);
  EXPECT_EQ(wizard_.Variables[viTarget].Value, "D7W32");
  page.cbx_OnClick("cbxWinD5", true);
  EXPECT_EQ(wizard_.Variables[viTargetLanguage].Value, "D5");
  EXPECT_EQ(wizard_.Variables[viTarget].Value, "D5W32");
  page.cbx_OnClick("cbxWinD5", false);
  EXPECT_EQ(wizard_.Variables[viTarget].Value, "D7W32");
  EXPECT_EQ(page.Caption(), "Page is ok");
}

TEST_F(LanguagesPageTest, NoCheckedBoxIsOneError) {
  std::vector<bool> reported;
  wizard_.RefreshStepButtons = [&](bool valid) { reported.push_back(valid); };
  TLanguagesPage page(wizard_, memory_.For(TPageKind::Languages));
  page.Open();
  EXPECT_EQ(page.Caption(), "1 Error:");
  EXPECT_EQ(page.Errors().Text(), "1 - At least one target language/platform must be chosen.");
  EXPECT_EQ(reported, std::vector<bool>{false});
}

}  // namespace
}  // namespace tsaw
