#include "pages/templates_page.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include <optional>

#include "jobs/config.h"
#include "jobs/job_loader.h"
#include "testing/qt_application.h"
#include "testing/temp_dir.h"
#include "testing/wizard_root.h"

namespace tsaw {
namespace {

class TemplatesPageTest : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::TestApplication();
    job_file_ = testing::WriteWizardRoot(root_);
    wizard_.WizardFolder = (root_.path() / "TSA/Wizard/").string();
    wizard_.JobsFolder = wizard_.WizardFolder + "Jobs/";
    wizard_.TemplatesFolder = wizard_.WizardFolder + "Templates/";
    Read_Settings(wizard_);
    wizard_.RefreshStepButtons = [this](bool valid) { reported_ = valid; };
  }

  void Open() {
    page_ = std::make_unique<TfrmTemplates>(wizard_, TTemplatesActions{[this] { ++job_closed_; }}, nullptr);
    page_->resize(800, 500);
    page_->show();
    tree_ = page_->findChild<QTreeWidget*>("tvTemplates");
  }

  QTreeWidgetItem* Item(const QString& caption) const {
    const QList<QTreeWidgetItem*> found = tree_->findItems(caption, Qt::MatchExactly | Qt::MatchRecursive);
    return found.size() == 1 ? found[0] : nullptr;
  }

  void ClickItem(const QString& caption) {
    QTreeWidgetItem* item = Item(caption);
    ASSERT_NE(item, nullptr) << caption.toStdString();
    tree_->scrollToItem(item);
    QTest::mouseClick(tree_->viewport(), Qt::LeftButton, {}, tree_->visualItemRect(item).center());
  }

  QString Text(const char* name) const {
    if (auto* edit = page_->findChild<QLineEdit*>(name)) return edit->text();
    if (auto* memo = page_->findChild<QPlainTextEdit*>(name)) return memo->toPlainText();
    return page_->findChild<QLabel*>(name)->text();
  }
  bool Visible(const char* name) const { return page_->findChild<QWidget*>(name)->isVisible(); }
  const std::string& Value(uint16_t var) const { return wizard_.Variables[var].Value; }

  testing::TempDir root_;
  std::string job_file_;
  TWizard wizard_;
  std::optional<bool> reported_;
  int job_closed_ = 0;
  std::unique_ptr<TfrmTemplates> page_;
  QTreeWidget* tree_ = nullptr;
};

TEST_F(TemplatesPageTest, OpensWithTheSummaryAndNothingSelected) {
  Open();
  EXPECT_EQ(Text("labCount"), "2 Templates (1 good and 1 bad) in 1 Folder:");
  EXPECT_NE(Item("Demo (2)"), nullptr);
  EXPECT_EQ(tree_->currentItem(), nullptr);
  EXPECT_EQ(reported_, false);
  EXPECT_TRUE(Visible("btnRefresh"));
  EXPECT_FALSE(Visible("panCloseJob"));
}

TEST_F(TemplatesPageTest, GoodTemplateShowsItsDetailsAppliesDefaultsAndAllowsNext) {
  Open();
  ClickItem("Demo (2)");
  EXPECT_EQ(reported_, false);
  EXPECT_TRUE(Text("memAdvice").endsWith("Current selection is a folder, not a template."));
  ClickItem("Good One");
  EXPECT_EQ(reported_, true);
  EXPECT_EQ(Text("ediPrefix"), "T777");
  EXPECT_EQ(Text("ediAuthor"), "Ann Author");
  EXPECT_EQ(Text("ediPurpose"), "Testing");
  EXPECT_EQ(Text("memDescription"), "Line one\nline two");
  EXPECT_EQ(Text("labValidationCap"), "Template is ok");
  EXPECT_EQ(Text("labErrorName"), "");
  EXPECT_TRUE(Text("memAdvice").startsWith("Ok, you have selected a valid template."));
  EXPECT_EQ(wizard_.SelectedTemplatePath, wizard_.TemplatesFolder + testing::kGoodTemplate);
  EXPECT_EQ(Value(viProductName), "From Template");
  EXPECT_EQ(Value(viAuthor), "From Config");
  EXPECT_EQ(wizard_.Variables[viPluginVersion].Pins.size(), 3u);  // two plug-ins, entry 0 unused
}

TEST_F(TemplatesPageTest, BadTemplateShowsTheErrorOnTheValidationTabAndBlocksNext) {
  Open();
  ClickItem("Good One");
  ClickItem("Broken One");
  EXPECT_EQ(reported_, false);
  EXPECT_EQ(Text("labValidationCap"), "Error");
  EXPECT_EQ(Text("labErrorName"), "errFieldMissingFromTemplateSection");
  EXPECT_FALSE(Text("memValidation").isEmpty());
  EXPECT_TRUE(Text("memAdvice").endsWith("The template selected is invalid!"));
  EXPECT_EQ(page_->findChild<QTabWidget*>("tabInfo")->currentIndex(), 0);
}

TEST_F(TemplatesPageTest, KeyboardMovesTheSelection) {
  Open();
  ClickItem("Broken One");
  tree_->setFocus();
  QTest::keyClick(tree_, Qt::Key_Down);
  EXPECT_EQ(tree_->currentItem(), Item("Good One"));
  EXPECT_EQ(reported_, true);
}

TEST_F(TemplatesPageTest, TreeButtonsKeepTheSelectedTemplateSelectedAndVisible) {
  Open();
  ClickItem("Good One");
  auto* tabs = page_->findChild<QTabWidget*>("tabInfo");
  ASSERT_EQ(tabs->currentIndex(), 1);
  tabs->setCurrentIndex(0);
  for (const char* button : {"btnCollapseAll", "btnRefresh", "btnExpandAll"}) {
    QTest::mouseClick(page_->findChild<QPushButton*>(button), Qt::LeftButton);
    EXPECT_EQ(tabs->currentIndex(), 0) << button << ": the tab the user chose stays";
    ASSERT_NE(tree_->currentItem(), nullptr) << button;
    EXPECT_EQ(tree_->currentItem()->text(0), "Good One") << button;
    EXPECT_TRUE(tree_->currentItem()->parent()->isExpanded()) << button;
    EXPECT_EQ(reported_, true) << button;
  }
  EXPECT_EQ(page_->findChild<QPushButton*>("btnCollapseAll")->toolTip(),
            " Collapse all nodes while keeping the active template selected. ");
}

TEST_F(TemplatesPageTest, ActiveJobLocksTheTreeOnItsTemplateUntilClosed) {
  ASSERT_EQ(Load_Job(wizard_, job_file_), "");
  Open();
  EXPECT_EQ(tree_->currentItem(), Item("Good One"));
  EXPECT_EQ(reported_, true);
  EXPECT_EQ(Value(viProductName), "From Job");
  EXPECT_TRUE(wizard_.JobValuesApplied);
  EXPECT_FALSE(tree_->isEnabled());
  EXPECT_FALSE(Visible("btnRefresh"));
  EXPECT_FALSE(Visible("btnExpandAll"));
  EXPECT_FALSE(Visible("btnCollapseAll"));
  EXPECT_TRUE(Visible("panCloseJob"));
  EXPECT_EQ(page_->findChild<QWidget*>("panCloseJob")->toolTip(),
            " Close the active Job to make the Templates Tree \n enabled and available for manual selection. ");

  QTest::mouseClick(page_->findChild<QPushButton*>("btnCloseJob"), Qt::LeftButton);
  EXPECT_EQ(job_closed_, 1);
  EXPECT_EQ(wizard_.ActiveJobFile, "");
  EXPECT_TRUE(tree_->isEnabled());
  EXPECT_EQ(page_->focusWidget(), tree_);
  EXPECT_TRUE(Visible("btnRefresh"));
  EXPECT_FALSE(Visible("panCloseJob"));
  EXPECT_EQ(Value(viProductName), "From Template");
}

TEST_F(TemplatesPageTest, JobValuesAreAppliedOnceNotOnEveryVisit) {
  ASSERT_EQ(Load_Job(wizard_, job_file_), "");
  Open();
  wizard_.Variables[viProductName].Value = "Typed later";
  Open();
  EXPECT_EQ(Value(viProductName), "Typed later");
  EXPECT_FALSE(tree_->isEnabled());
}

}  // namespace
}  // namespace tsaw
