// The wizard's real pages in the real frame, walked as a user does on a copy of the sample data:
// from Welcome through every step to a finished creation run.

#include "shell/page_table.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <filesystem>

#include "shell/main_frame.h"
#include "testing/fake_dialogs.h"
#include "testing/fake_machine.h"
#include "testing/pump_probe.h"
#include "testing/qt_application.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {
namespace fs = std::filesystem;

TEST(WizardPagesTest, WalksFromWelcomeToAFinishedRunOnTheSampleData) {
  testing::TestApplication();
  testing::TempDir root;
  fs::copy(TSAW_SAMPLE_DIR, root.path(), fs::copy_options::recursive);
  TWizard wizard;
  testing::FixedClock clock{0};
  testing::FakeMachineFolders machine;
  machine.Root = root.path().string();
  testing::FakeDialogs dialogs;
  TfrmMain frame({wizard, clock, machine, dialogs});
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

}  // namespace
}  // namespace tsaw
