#include "pages/languages_page_widget.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>

#include <memory>

#include "pages/widget_test_support.h"

namespace tsaw {
namespace {

using testing::Find;
using testing::PageBench;
using testing::ShowActive;

// Every target allowed but Delphi 2006 for Win32; Delphi 7 for Win32 required and selected.
class LanguagesPageWidgetTest : public ::testing::Test {
 protected:
  LanguagesPageWidgetTest() : bench_(1) {
    for (uint16_t t = 1; t <= 18; ++t) bench_.Wizard.Targets[t].Allowed = true;
    bench_.Wizard.Targets[9].Allowed = false;
    bench_.Wizard.Targets[3].Required = true;
    bench_.Wizard.Targets[3].Checked = true;
    page_ = std::make_unique<TLanguagesPageWidget>(bench_.Services(), nullptr);
    ShowActive(*page_);
  }
  QCheckBox* Box(const char* name) { return Find<QCheckBox>(*page_, name); }

  // Clicks `name` and returns the messages shown, each followed by the box's state at that moment.
  std::vector<std::string> Click(const char* name) {
    QCheckBox* box = Box(name);
    std::vector<std::string> seen;
    bench_.Dialogs.OnMessage = [&] {
      seen.push_back(bench_.Dialogs.Messages.back() + " [" + std::to_string(box->checkState()) + "]");
    };
    QTest::mouseClick(box, Qt::LeftButton);
    return seen;
  }

  PageBench bench_;
  std::unique_ptr<TLanguagesPageWidget> page_;
};

TEST_F(LanguagesPageWidgetTest, GridHasTheSixteenTargetBoxesLoadedFromTheSelection) {
  EXPECT_EQ(page_->findChildren<QCheckBox*>().size(), 16);
  EXPECT_EQ(Box("cbxWinD7")->checkState(), Qt::Checked);
  EXPECT_EQ(Box("cbxWinD5")->checkState(), Qt::Unchecked);
  EXPECT_EQ(Box("cbxNetFclD8")->toolTip(), " Delphi 8 for Pure .NET FCL ");
  EXPECT_EQ(Find<QLabel>(*page_, "cbxLangTD2006")->text(), "TurboDelphi 2006");
  EXPECT_EQ(Find<QLabel>(*page_, "labValidationCap")->text(), "Page is ok");
}

TEST_F(LanguagesPageWidgetTest, DotNetBoxesExplainAndStayUnchecked) {
  // The message comes while the box still shows the click (state 2); then the box is cleared.
  EXPECT_EQ(Click("cbxVclNetD8"), (std::vector<std::string>{"VCL.NET will be available in Tessera 3.0 [2]"}));
  EXPECT_EQ(Box("cbxVclNetD8")->checkState(), Qt::Unchecked);
  EXPECT_EQ(bench_.Dialogs.MessageKinds, std::vector<platform::TMessageKind>{platform::TMessageKind::Information});
  EXPECT_EQ(Click("cbxNetFclD2005"),
            (std::vector<std::string>{"Pure .NET FCL and Chrome are planned for Tessera 4.0 [2]"}));
  EXPECT_EQ(Click("cbxNetFclChrome"),
            (std::vector<std::string>{"Pure .NET FCL and Chrome are planned for Tessera 4.0 [2]"}));
  EXPECT_FALSE(bench_.Wizard.Targets[4].Checked);
  EXPECT_EQ(Box("cbxNetFclChrome")->checkState(), Qt::Unchecked);
}

TEST_F(LanguagesPageWidgetTest, RequiredTargetTurnsGreyBeforeTheMessageAndStaysSelected) {
  EXPECT_EQ(Click("cbxWinD7"),
            (std::vector<std::string>{"This item is required in the selected template. [1]"}));
  EXPECT_EQ(Box("cbxWinD7")->checkState(), Qt::PartiallyChecked);
  EXPECT_TRUE(bench_.Wizard.Targets[3].Checked);
}

TEST_F(LanguagesPageWidgetTest, DisallowedTargetIsClearedBeforeTheMessage) {
  EXPECT_EQ(Click("cbxWinD2006"),
            (std::vector<std::string>{"This item is disallowed in the selected template. [0]"}));
  EXPECT_EQ(Box("cbxWinD2006")->checkState(), Qt::Unchecked);
  EXPECT_FALSE(bench_.Wizard.Targets[9].Checked);
}

TEST_F(LanguagesPageWidgetTest, AllowedTargetsAreSelectedAndTheLowestBecomesCurrent) {
  EXPECT_TRUE(Click("cbxWinD5").empty());
  EXPECT_TRUE(bench_.Wizard.Targets[1].Checked);
  EXPECT_EQ(Box("cbxWinD5")->checkState(), Qt::Checked);
  EXPECT_EQ(bench_.Wizard.CurrentTarget, 1);
  EXPECT_TRUE(bench_.Dialogs.Messages.empty());
}

TEST(LanguagesPageWidgetNoRequiredTest, NoTargetChosenIsOneErrorAndBlocksTheStep) {
  PageBench bench(1);
  for (uint16_t t = 1; t <= 18; ++t) bench.Wizard.Targets[t].Allowed = true;
  bench.Wizard.Targets[1].Checked = true;
  TLanguagesPageWidget page(bench.Services(), nullptr);
  ShowActive(page);
  EXPECT_EQ(bench.NextEnabled, true);
  QTest::mouseClick(Find<QCheckBox>(page, "cbxWinD5"), Qt::LeftButton);
  EXPECT_EQ(Find<QLabel>(page, "labValidationCap")->text(), "1 Error:");
  EXPECT_EQ(Find<QPlainTextEdit>(page, "memValidation")->toPlainText(),
            "1 - At least one target language/platform must be chosen.");
  EXPECT_EQ(bench.NextEnabled, false);
}

}  // namespace
}  // namespace tsaw
