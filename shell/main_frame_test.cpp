#include "shell/main_frame.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include "testing/fake_dialogs.h"
#include "testing/fake_machine.h"
#include "testing/qt_application.h"
#include "testing/temp_dir.h"
#include "testing/wizard_root.h"

namespace tsaw {
namespace {

// The wizard's pages with every step after the templates replaced by a plain page, so that
// navigation does not depend on the rules of the data-entry pages.
TPageTable PlainSteps() {
  TPageTable pages = WizardPages();
  for (int page = 2; page <= kLastPage; ++page) {
    pages[page].Make = [](TPageContext&, QWidget* parent) -> QWidget* { return new QLabel("plain", parent); };
  }
  return pages;
}

class MainFrameTest : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::TestApplication();
    job_file_ = testing::WriteWizardRoot(root_);
    machine_.Root = root_.path().string();
  }

  void Open() {
    frame_ = std::make_unique<TfrmMain>(TFrameServices{wizard_, clock_, machine_, dialogs_}, nullptr, pages_);
    frame_->show();
  }

  template <typename T = QWidget>
  T* Find(const char* name) const {
    return frame_->findChild<T*>(name);
  }
  QString Steps() const { return Find<QLabel>("labSteps")->text(); }
  bool PrevEnabled() const { return Find("btnPrev")->isEnabled(); }
  bool NextEnabled() const { return Find("btnNext")->isEnabled(); }
  void Click(const char* name) { QTest::mouseClick(Find<QAbstractButton>(name), Qt::LeftButton); }

  void SelectGoodTemplate() {
    auto* tree = Find<QTreeWidget>("tvTemplates");
    ASSERT_NE(tree, nullptr);
    tree->expandAll();
    QTreeWidgetItem* item = tree->findItems("Good One", Qt::MatchExactly | Qt::MatchRecursive).value(0);
    ASSERT_NE(item, nullptr);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
  }

  // Clicks Next from the Welcome page, through the template, up to step `page`.
  void GoTo(int page) {
    Click("btnNext");
    SelectGoodTemplate();
    while (frame_->PageNumber() < page) Click("btnNext");
  }

  testing::TempDir root_;
  std::string job_file_;
  TWizard wizard_;
  testing::FixedClock clock_{0};
  testing::FakeMachineFolders machine_;
  testing::FakeDialogs dialogs_;
  const TPageTable pages_ = PlainSteps();
  std::unique_ptr<TfrmMain> frame_;
};

TEST_F(MainFrameTest, StartsTheSessionOnTheWelcomePage) {
  Open();
  EXPECT_EQ(wizard_.WizardFolder, (root_.path() / "TSA/Wizard/").string());
  EXPECT_EQ(wizard_.TemplatesFolder, wizard_.WizardFolder + "Templates/");
  EXPECT_EQ(wizard_.ConfigFile, wizard_.WizardFolder + "TSaW.Default.ini");
  EXPECT_EQ(wizard_.Variables[viTsawVersion].Value, "6.01");
  EXPECT_EQ(frame_->PageNumber(), 0);
  EXPECT_EQ(Steps(), "Welcome");
  EXPECT_EQ(Find<QLabel>("labPageTitle")->text(), "Welcome");
  EXPECT_NE(Find("frmWelcome"), nullptr);
  EXPECT_FALSE(PrevEnabled());
  EXPECT_TRUE(NextEnabled());
  EXPECT_FALSE(Find("labChangeTemplate")->isVisible());
  EXPECT_FALSE(Find("imgJobActive")->isVisible());
}

TEST_F(MainFrameTest, PreviousOnWelcomeAndNextOnTheLastPageChangeNothing) {
  Open();
  QWidget* welcome = frame_->CurrentPage();
  frame_->btnPrevNext_OnClick(TfrmMain::kTagPrev);
  EXPECT_EQ(frame_->CurrentPage(), welcome);
  GoTo(10);
  EXPECT_EQ(Steps(), "Step 10 of 10:  Creation Process");
  EXPECT_FALSE(NextEnabled());
  QWidget* last = frame_->CurrentPage();
  frame_->btnPrevNext_OnClick(TfrmMain::kTagNext);
  EXPECT_EQ(frame_->PageNumber(), 10);
  EXPECT_EQ(frame_->CurrentPage(), last);
}

TEST_F(MainFrameTest, StepsAreCaptionedAndTheOldPageIsRetired) {
  Open();
  Click("btnNext");
  EXPECT_EQ(Steps(), "Step 1 of 10:  Template Selection");
  EXPECT_FALSE(Find("labChangeTemplate")->isVisible());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(Find("frmWelcome"), nullptr);
  SelectGoodTemplate();
  Click("btnNext");
  EXPECT_EQ(Steps(), "Step 2 of 10:  Platforms & Languages");
  EXPECT_EQ(Find<QLabel>("labPageTitle")->text(), "Platforms & Languages");
  EXPECT_TRUE(Find("labChangeTemplate")->isVisible());
  Click("btnNext");
  EXPECT_EQ(Steps(), "Step 3 of 10:  Common Properties");
  Click("btnPrev");
  EXPECT_EQ(frame_->PageNumber(), 2);
}

TEST_F(MainFrameTest, InvalidPageDisablesBothButtonsExceptBackFromTheTemplates) {
  Open();
  GoTo(3);
  wizard_.RefreshStepButtons(false);
  EXPECT_FALSE(PrevEnabled());
  EXPECT_FALSE(NextEnabled());
  wizard_.RefreshStepButtons(true);
  EXPECT_TRUE(PrevEnabled());
  EXPECT_TRUE(NextEnabled());

  frame_->btnTemplates_OnClick();
  ASSERT_EQ(frame_->PageNumber(), 1);
  wizard_.RefreshStepButtons(false);
  EXPECT_TRUE(PrevEnabled());
  EXPECT_FALSE(NextEnabled());
}

TEST_F(MainFrameTest, ChangeTemplateLinkGoesBackToTheTemplatesButNotFromThem) {
  Open();
  GoTo(4);
  auto* link = Find<QLabel>("labChangeTemplate");
  QTest::mouseClick(link, Qt::LeftButton, {}, QPoint(link->fontMetrics().averageCharWidth() * 3, link->height() / 2));
  EXPECT_EQ(frame_->PageNumber(), 1);
  QWidget* templates = frame_->CurrentPage();
  frame_->btnTemplates_OnClick();
  EXPECT_EQ(frame_->CurrentPage(), templates);
  // The template chosen before is still the wizard's: Next is open at once.
  EXPECT_TRUE(NextEnabled());
}

TEST_F(MainFrameTest, LoadedJobMarksTheFrameAndLocksTheTemplatesUntilClosed) {
  Open();
  dialogs_.Answers.push_back(job_file_);
  Click("btnStartFromJob");
  EXPECT_EQ(frame_->PageNumber(), 1);
  EXPECT_TRUE(Find("imgJobActive")->isVisible());
  EXPECT_EQ(Find("imgJobActive")->toolTip().toStdString(), " Active Job:\n " + job_file_ + " ");
  EXPECT_FALSE(Find("tvTemplates")->isEnabled());
  EXPECT_TRUE(NextEnabled());
  Click("btnCloseJob");
  EXPECT_FALSE(Find("imgJobActive")->isVisible());
  EXPECT_TRUE(Find("tvTemplates")->isEnabled());
}

TEST_F(MainFrameTest, AJobThatDoesNotLoadLeavesTheWizardUsableAndUnmarked) {
  const struct {
    const char* name;
    const char* content;  // nullptr: the file does not exist
  } cases[] = {
      {"missing template", "[Job]\r\nTemplate=Nowhere/Gone\r\n"},
      {"empty template", "[Job]\r\nTemplate=\r\n"},
      {"no Job section", "[Default Values]\r\nProduct.Name=X\r\n"},
      {"no file", nullptr},
  };
  for (const auto& c : cases) {
    const std::string file = (root_.path() / "TSA/Wizard/Jobs/Bad.ini").string();
    std::filesystem::remove(file);
    if (c.content) root_.Write("TSA/Wizard/Jobs/Bad.ini", c.content);
    Open();
    dialogs_.Messages.clear();
    dialogs_.Answers.push_back(file);
    Click("btnStartFromJob");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(dialogs_.Messages.size(), 1u) << c.name;
    EXPECT_EQ(dialogs_.Messages[0].rfind("Job not loaded: ", 0), 0u) << c.name << dialogs_.Messages[0];
    EXPECT_EQ(frame_->PageNumber(), 1) << c.name;
    EXPECT_FALSE(Find("imgJobActive")->isVisible()) << c.name;
    EXPECT_TRUE(Find("tvTemplates")->isEnabled()) << c.name;
    SelectGoodTemplate();
    Click("btnNext");
    EXPECT_EQ(frame_->PageNumber(), 2) << c.name;
  }
}

TEST_F(MainFrameTest, HidingTheNavigationMovesNothingOnThePage) {
  Open();
  GoTo(10);
  QCoreApplication::processEvents();
  const QRect pages = Find("panPages")->geometry();
  frame_->ShowNavigation(false);
  QCoreApplication::processEvents();
  EXPECT_FALSE(Find("btnNext")->isVisible());
  EXPECT_EQ(Find("panPages")->geometry(), pages);
  frame_->ShowNavigation(true);
  EXPECT_TRUE(Find("btnNext")->isVisible());
}

TEST_F(MainFrameTest, CancelledJobDialogStaysOnWelcome) {
  Open();
  Click("btnStartFromJob");
  EXPECT_EQ(dialogs_.Requests.size(), 1u);
  EXPECT_EQ(frame_->PageNumber(), 0);
  EXPECT_FALSE(Find("imgJobActive")->isVisible());
}

TEST_F(MainFrameTest, MissingWizardFolderIsToldOnceTheFrameIsUp) {
  machine_.Root = (root_.path() / "elsewhere").string();
  Open();
  EXPECT_TRUE(dialogs_.Messages.empty());
  QCoreApplication::processEvents();
  ASSERT_EQ(dialogs_.Messages.size(), 1u);
  EXPECT_NE(dialogs_.Messages[0].find("does not exist"), std::string::npos) << dialogs_.Messages[0];
  EXPECT_EQ(Steps(), "Welcome");
}

}  // namespace
}  // namespace tsaw
