// The wizard's real pages in the real frame, walked as a user does on a copy of the sample data:
// from Welcome through every step to a finished creation run.

#include "shell/page_table.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "shell/main_frame.h"
#include "testing/fake_dialogs.h"
#include "testing/fake_machine.h"
#include "testing/pump_probe.h"
#include "testing/qt_application.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {
namespace fs = std::filesystem;

// The real frame with the wizard's real pages on a copy of the sample data.
class WizardPagesTest : public ::testing::Test {
 protected:
  WizardPagesTest() {
    testing::TestApplication();
    setenv("XDG_STATE_HOME", (root.path() / "state").c_str(), 1);  // the record of a finished run
    fs::copy(TSAW_SAMPLE_DIR, root.path(), fs::copy_options::recursive);
    machine.Root = root.path().string();
    frame_ = std::make_unique<TfrmMain>(TFrameServices{wizard, clock, machine, dialogs});
  }

  testing::TempDir root;
  TWizard wizard;
  testing::FixedClock clock{0};
  testing::FakeMachineFolders machine;
  testing::FakeDialogs dialogs;
  std::unique_ptr<TfrmMain> frame_;
};

TEST_F(WizardPagesTest, WalksFromWelcomeToAFinishedRunOnTheSampleData) {
  TfrmMain& frame = *frame_;
  frame.show();
  auto* next = frame.findChild<QPushButton*>("btnNext");
  auto* prev = frame.findChild<QPushButton*>("btnPrev");

  QTest::mouseClick(next, Qt::LeftButton);
  auto* tree = frame.findChild<QTreeWidget*>("tvTemplates");
  ASSERT_NE(tree, nullptr);
  tree->expandAll();
  QTreeWidgetItem* item = tree->findItems("Single Plugin", Qt::MatchExactly | Qt::MatchRecursive).value(0);
  ASSERT_NE(item, nullptr);
  QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
  while (frame.PageNumber() < kLastPage) {
    ASSERT_TRUE(next->isEnabled()) << "stuck on step " << frame.PageNumber();
    QTest::mouseClick(next, Qt::LeftButton);
  }
  QWidget* page = frame.CurrentPage();
  ASSERT_EQ(page->objectName(), "frmCreation");

  bool navigation_during_run = true;
  const testing::PumpProbe probe([page] { return page->findChild<QWidget*>("btnStop")->isVisible(); },
                                 [&] { navigation_during_run = next->isVisible() || prev->isVisible(); });
  QTest::mouseClick(page->findChild<QWidget*>("btnStart"), Qt::LeftButton);

  const auto text = [page](const char* label) { return page->findChild<QLabel*>(label)->text().toStdString(); };
  EXPECT_TRUE(probe.Fired());
  EXPECT_FALSE(navigation_during_run);
  EXPECT_EQ(text("labMsg"), "Process finished!");
  const fs::path project_set = root.path() / "TSA/User Projects/Window Plug-in";
  const std::string dpr = root.Read("TSA/User Projects/Window Plug-in/Delphi 2007/Win32/Plugins/Plugin1/WinPinPin1.dpr");
  EXPECT_NE(dpr.find("library WinPinPin1;"), std::string::npos) << dpr;
  size_t files = 0;
  for (const auto& entry : fs::recursive_directory_iterator(project_set)) files += entry.is_regular_file() ? 1 : 0;
  EXPECT_EQ(text("labFilesProcessed"), std::to_string(files));
  EXPECT_EQ(text("labFilesFailed"), "0");
  EXPECT_EQ(text("labFoldersFailed"), "0");
  EXPECT_TRUE(next->isVisible() && prev->isVisible() && prev->isEnabled());
  EXPECT_TRUE(page->findChild<QWidget*>("btnSaveJob")->isVisible());
  EXPECT_TRUE(dialogs.Messages.empty());
}


// The texts of `root`'s visible labels and group boxes that do not fit the room they were given.
QStringList ClippedTexts(const QWidget& root) {
  QStringList clipped;
  for (const QLabel* label : root.findChildren<QLabel*>()) {
    if (!label->isVisible() || label->text().isEmpty()) continue;
    const bool fits = label->wordWrap() ? label->height() >= label->heightForWidth(label->width())
                                        : label->width() >= label->sizeHint().width();
    if (!fits) clipped << label->objectName() + ": " + label->text();
  }
  for (const QGroupBox* box : root.findChildren<QGroupBox*>()) {
    if (box->isVisible() && box->width() < box->minimumSizeHint().width()) clipped << box->title();
  }
  return clipped;
}

TEST_F(WizardPagesTest, AtTheWindowsMinimumSizeThePagesShowEveryText) {
  TfrmMain& frame = *frame_;
  frame.show();
  frame.resize(frame.minimumSize());
  QCoreApplication::processEvents();
  EXPECT_EQ(ClippedTexts(frame), QStringList()) << "the Welcome page";
  auto* next = frame.findChild<QPushButton*>("btnNext");
  next->click();
  auto* tree = frame.findChild<QTreeWidget*>("tvTemplates");
  tree->expandAll();
  tree->setCurrentItem(tree->findItems("Single Plugin", Qt::MatchExactly | Qt::MatchRecursive).value(0));
  while (frame.PageNumber() < kLastPage && next->isEnabled()) next->click();
  ASSERT_EQ(frame.PageNumber(), kLastPage);
  frame.resize(frame.minimumSize());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
  EXPECT_EQ(ClippedTexts(frame), QStringList());
  frame.CurrentPage()->findChild<QAbstractButton*>("btnStart")->click();
  QCoreApplication::processEvents();
  EXPECT_EQ(ClippedTexts(frame), QStringList()) << "after the run";
}

TEST_F(WizardPagesTest, TabGoesThroughTheFieldsThenTheInformationTabsThenPreviousAndNext) {
  TfrmMain& frame = *frame_;
  frame.show();
  frame.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
  frame.findChild<QPushButton*>("btnNext")->click();
  auto* tree = frame.findChild<QTreeWidget*>("tvTemplates");
  tree->expandAll();
  tree->setCurrentItem(tree->findItems("Single Plugin", Qt::MatchExactly | Qt::MatchRecursive).value(0));
  while (frame.PageNumber() < 9) frame.findChild<QPushButton*>("btnNext")->click();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
  QStringList visited;
  for (int i = 0; i < 7; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    visited << QApplication::focusWidget()->objectName();
  }
  EXPECT_EQ(visited, QStringList({"btnBrowse", "cbxExpand", "qt_tabwidget_tabbar", "memAdvice", "btnPrev", "btnNext",
                                  "labChangeTemplate"}));
}

// The same walk with the keyboard alone: Tab, Space, Enter and Alt+N, as a person who does not
// use the mouse would go; the window then still shows the answers as they were typed.
TEST_F(WizardPagesTest, TheKeyboardAloneCreatesTheSampleProjectSet) {
  TfrmMain& frame = *frame_;
  frame.show();
  frame.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
  const auto press = [&frame](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : &frame;
    QTest::keyClick(target, key, modifiers);
    // A mnemonic presses its button the way a click looks: a moment later.
    if (modifiers & Qt::AltModifier) QTest::qWait(150);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
  };
  // Tabs until the focus is on `name`; false when a whole round did not find it.
  const auto tab_to = [&](const char* name) {
    for (int i = 0; i < 60; ++i) {
      if (QApplication::focusWidget() && QApplication::focusWidget()->objectName() == name) return true;
      press(Qt::Key_Tab);
    }
    return false;
  };
  auto* next = frame.findChild<QPushButton*>("btnNext");

  press(Qt::Key_N, Qt::AltModifier);
  ASSERT_EQ(frame.PageNumber(), 1);
  ASSERT_TRUE(tab_to("tvTemplates"));
  // Down the tree, opening every folder on the way, to the first good template.
  auto* tree = frame.findChild<QTreeWidget*>("tvTemplates");
  for (int i = 0; i < 40 && !next->isEnabled(); ++i) {
    QTreeWidgetItem* item = tree->currentItem();
    press(item && item->childCount() > 0 && !item->isExpanded() ? Qt::Key_Right : Qt::Key_Down);
  }
  ASSERT_TRUE(next->isEnabled()) << "no good template reached";
  const std::string chosen = wizard.SelectedTemplatePath;
  press(Qt::Key_Return);
  ASSERT_EQ(frame.PageNumber(), 2) << "Enter on the tree means Next";

  // A switch set with Space on the Logging page, the rest taken as the template proposes.
  while (frame.PageNumber() < 6) {
    const int page = frame.PageNumber();
    press(Qt::Key_Return);
    ASSERT_EQ(frame.PageNumber(), page + 1) << "Enter did not step on from step " << page;
  }
  const std::string use_tlg = wizard.Variables[viLoggingUseTLG].Value;
  ASSERT_TRUE(tab_to("cbxUseTLG"));
  press(Qt::Key_Space);
  EXPECT_NE(wizard.Variables[viLoggingUseTLG].Value, use_tlg);
  press(Qt::Key_Space);
  EXPECT_EQ(wizard.Variables[viLoggingUseTLG].Value, use_tlg);
  press(Qt::Key_N, Qt::AltModifier);
  ASSERT_EQ(frame.PageNumber(), 7) << "Alt+N did not step on from the Logging page";
  while (frame.PageNumber() < kLastPage) {
    const int page = frame.PageNumber();
    press(Qt::Key_Return);
    ASSERT_EQ(frame.PageNumber(), page + 1) << "Enter did not step on from step " << page;
  }

  QWidget* creation = frame.CurrentPage();
  const std::string typed_host = wizard.Variables[viHostProjectName].Value;
  ASSERT_NE(typed_host.find("#Projects.Prefix#"), std::string::npos) << typed_host;
  ASSERT_TRUE(tab_to("btnStart"));
  press(Qt::Key_Space);
  EXPECT_EQ(creation->findChild<QLabel*>("labMsg")->text(), "Process finished!");
  EXPECT_EQ(creation->findChild<QLabel*>("labFilesFailed")->text(), "0");
  EXPECT_EQ(wizard.SelectedTemplatePath, chosen);
  const auto* files = creation->findChild<QLabel*>("labFilesProcessed");
  EXPECT_NE(files->text(), "0");
  EXPECT_TRUE(fs::is_directory(root.path() / "TSA/User Projects"));
  EXPECT_TRUE(dialogs.Messages.empty());

  // The run worked on expanded values; the pages still show what was typed.
  while (frame.PageNumber() > 3) press(Qt::Key_P, Qt::AltModifier);
  auto* host = frame.CurrentPage()->findChild<QLineEdit*>("ediHostProjectName");
  ASSERT_NE(host, nullptr);
  EXPECT_EQ(host->text().toStdString(), typed_host);
}

}  // namespace
}  // namespace tsaw
