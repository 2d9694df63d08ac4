#include "pages/output_page_widget.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolButton>

#include "pages/widget_test_support.h"

namespace tsaw {
namespace {

using testing::Find;
using testing::PageBench;
using testing::Retype;
using testing::SetVar;
using testing::ShowActive;

// The Output page whose folder dialog answers `answer` and records how it was asked.
class OutputPageWidgetTest : public ::testing::Test {
 protected:
  OutputPageWidgetTest() : bench_(1) {
    SetVar(bench_.Wizard, viPathDelphi, "/opt/Delphi 7");
    SetVar(bench_.Wizard, viOutputBaseFolder, "#Path.Delphi#/Out");
    bench_.ChooseFolder = [this](QWidget*, const std::string& start, bool native) {
      asked_.push_back(start + (native ? " native" : " qt"));
      return answer_;
    };
  }
  void Open() {
    page_ = std::make_unique<TOutputPageWidget>(bench_.Services(), nullptr);
    ShowActive(*page_);
  }
  void Browse() { QTest::mouseClick(Find<QToolButton>(*page_, "btnBrowse"), Qt::LeftButton); }
  QString Field() { return Find<QLineEdit>(*page_, "ediBaseFolder")->text(); }

  PageBench bench_;
  std::optional<std::string> answer_;
  std::vector<std::string> asked_;
  std::unique_ptr<TOutputPageWidget> page_;
};

TEST_F(OutputPageWidgetTest, BrowsedFolderIsStoredWithItsPathVariable) {
  Open();
  answer_ = "/opt/Delphi 7/Projects";
  Browse();
  EXPECT_EQ(asked_, (std::vector<std::string>{"/opt/Delphi 7/Out native"}));
  EXPECT_EQ(Field(), "#Path.Delphi#/Projects/");
  EXPECT_EQ(bench_.Wizard.Variables[viOutputBaseFolder].Value, "#Path.Delphi#/Projects/");
  EXPECT_TRUE(Find<QToolButton>(*page_, "btnBrowse")->isEnabled());

  answer_ = "/home/ann//work";
  Browse();
  EXPECT_EQ(Field(), "/home/ann/work/");
}

TEST_F(OutputPageWidgetTest, ThePreviewTurnsBrowseOffSoThatNothingChangesTheField) {
  Open();
  auto* browse = Find<QToolButton>(*page_, "btnBrowse");
  auto* expand = Find<QCheckBox>(*page_, "cbxExpand");
  QTest::mouseClick(expand, Qt::LeftButton);
  EXPECT_FALSE(browse->isEnabled());
  answer_ = "/opt/Elsewhere";
  browse->click();
  EXPECT_TRUE(asked_.empty());
  EXPECT_EQ(bench_.Wizard.Variables[viOutputBaseFolder].Value, "#Path.Delphi#/Out");

  QTest::mouseClick(expand, Qt::LeftButton);
  EXPECT_TRUE(browse->isEnabled());
}

TEST_F(OutputPageWidgetTest, CancellingOrAnUnknownModeChangesNothing) {
  Open();
  Browse();
  EXPECT_EQ(Field(), "#Path.Delphi#/Out");

  bench_.Wizard.ShellBrowserMode = 2;
  answer_ = "/opt/Delphi 7/Out";
  Browse();
  EXPECT_EQ(asked_.back(), "/opt/Delphi 7/Out qt");
  EXPECT_EQ(Field(), "#Path.Delphi#/Out") << "mode 2 counts the folder it opened at as no choice";

  bench_.Wizard.ShellBrowserMode = 3;
  Browse();
  EXPECT_EQ(asked_.size(), 2u);
}

TEST_F(OutputPageWidgetTest, BlankBaseFolderIsTheOnlyError) {
  Open();
  Retype(Find<QLineEdit>(*page_, "ediBaseFolder"), "");
  EXPECT_EQ(Find<QLabel>(*page_, "labValidationCap")->text(), "1 Error:");
  EXPECT_EQ(Find<QPlainTextEdit>(*page_, "memValidation")->toPlainText(),
            "1 - Base Folder (expanded to \"\") cannot be blank.\n"
            "It will be the parent of the Project Set root folder.");
  EXPECT_EQ(bench_.NextEnabled, false);
}

TEST_F(OutputPageWidgetTest, TabKeyWalksTheFieldRowThenThePreviewThenTheInformationTabs) {
  Open();
  QStringList visited;
  for (int i = 0; i < 4; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    visited << QApplication::focusWidget()->objectName();
  }
  EXPECT_EQ(visited, QStringList({"btnBrowse", "cbxExpand", "qt_tabwidget_tabbar", "memAdvice"}))
      << "the look-up without a list is off and skipped";
}

}  // namespace
}  // namespace tsaw
