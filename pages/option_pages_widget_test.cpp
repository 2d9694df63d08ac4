#include "pages/option_pages_widget.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>

#include <memory>

#include "pages/page_widgets.h"
#include "pages/widget_test_support.h"
#include "templates/template_info.h"

namespace tsaw {
namespace {

using testing::Find;
using testing::PageBench;
using testing::SetVar;
using testing::ShowActive;

constexpr const char* kDependentBoxes[] = {"cbxLogComments", "cbxLogInitFinit", "cbxLogPinCreation",
                                           "cbxLogFunctionResults"};

class LoggingPageWidgetTest : public ::testing::Test {
 protected:
  LoggingPageWidgetTest() : bench_(1) {}
  void Open() {
    page_.reset(NewLoggingPage(bench_.Services(), nullptr));
    ShowActive(*page_);
  }
  void Click(const char* name) { QTest::mouseClick(Find<QWidget>(*page_, name), Qt::LeftButton); }
  bool Checked(const char* box) { return Find<QCheckBox>(*page_, box)->isChecked(); }
  // The five variables' values, in page order.
  std::string Values() {
    std::string values;
    for (uint16_t v = viLoggingUseTLG; v <= viLoggingLogFunctionResults; ++v)
      values += bench_.Wizard.Variables[v].Value + " ";
    return values;
  }

  PageBench bench_;
  std::unique_ptr<QWidget> page_;
};

TEST_F(LoggingPageWidgetTest, DependentOptionsNeedTheMasterBox) {
  SetVar(bench_.Wizard, viLoggingUseTLG, "False");
  Open();
  Click("cbxLogComments");
  EXPECT_FALSE(Checked("cbxLogComments"));
  EXPECT_EQ(bench_.Wizard.Variables[viLoggingLogComments].Value, "False");

  Click("labUseTLG");
  EXPECT_TRUE(Checked("cbxUseTLG"));
  for (const char* box : kDependentBoxes) Click(box);
  EXPECT_EQ(Values(), "True True True True True ");

  Click("cbxUseTLG");
  for (const char* box : kDependentBoxes) EXPECT_FALSE(Checked(box)) << box;
  EXPECT_EQ(Values(), "False False False False False ");
  EXPECT_EQ(Find<QLabel>(*page_, "labValidationCap")->text(), "Page is Ok");
  EXPECT_EQ(bench_.NextEnabled, true);
}

TEST_F(LoggingPageWidgetTest, LoadedOptionsObeyTheMasterBox) {
  SetVar(bench_.Wizard, viLoggingUseTLG, "False");
  SetVar(bench_.Wizard, viLoggingLogComments, "True");
  Open();
  EXPECT_FALSE(Checked("cbxLogComments"));
  EXPECT_EQ(bench_.Wizard.Variables[viLoggingLogComments].Value, "False");
}

TEST(CosmeticsPageWidgetTest, CaptionLabelTogglesItsBox) {
  PageBench bench(1);
  SetVar(bench.Wizard, viCosmeticCommentedHeaders, "False");
  std::unique_ptr<QWidget> page(NewCosmeticsPage(bench.Services(), nullptr));
  ShowActive(*page);
  QTest::mouseClick(Find<QLabel>(*page, "labCommentedHeaders"), Qt::LeftButton);
  EXPECT_TRUE(Find<QCheckBox>(*page, "cbxCommentedHeaders")->isChecked());
  EXPECT_EQ(bench.Wizard.Variables[viCosmeticCommentedHeaders].Value, "True");
  EXPECT_EQ(QApplication::focusWidget(), Find<QWidget>(*page, "cbxCommentedHeaders"));
}

TEST(CosmeticsPageWidgetTest, ASwitchTheTemplateMarksReadOnlyCannotBeToggled) {
  PageBench bench(1);
  SetVar(bench.Wizard, viCosmeticCommentedHeaders, "True");
  auto marked = std::make_shared<TTemplateInfo>();
  marked->FolderName = "Locked Demo";
  marked->ReadOnly.assign(viCosmeticCommentedHeaders + 1, false);
  marked->ReadOnly[viCosmeticCommentedHeaders] = true;
  bench.Wizard.SelectedTemplate = marked;
  std::unique_ptr<QWidget> page(NewCosmeticsPage(bench.Services(), nullptr));
  ShowActive(*page);
  auto* box = Find<QCheckBox>(*page, "cbxCommentedHeaders");
  EXPECT_FALSE(box->isEnabled());
  EXPECT_EQ(box->toolTip(), " Read-only: set by the template \"Locked Demo\" ");
  QTest::mouseClick(Find<QLabel>(*page, "labCommentedHeaders"), Qt::LeftButton);
  QTest::mouseClick(box, Qt::LeftButton);
  EXPECT_TRUE(box->isChecked());
  EXPECT_EQ(bench.Wizard.Variables[viCosmeticCommentedHeaders].Value, "True");
}

}  // namespace
}  // namespace tsaw
