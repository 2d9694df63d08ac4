#include "shell/qt_dialogs.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <functional>

#include "testing/qt_application.h"

namespace tsaw {
namespace {

TEST(QtDialogsTest, FilterPairsBecomeQtNameFilters) {
  struct Case {
    const char* pairs;
    QStringList filters;
  } cases[] = {
      {"Job files (Job*.ini)|Job*.ini|All Configuration files (*.ini)|*.ini|All files (*.*)|*.*",
       {"Job files (Job*.ini)", "All Configuration files (*.ini)", "All files (*)"}},
      {"TSaW Configuration files|TSaW.*.ini|All Configuration files|*.ini|All files|*.*",
       {"TSaW Configuration files (TSaW.*.ini)", "All Configuration files (*.ini)", "All files (*)"}},
      {"Sources|*.pas;*.dpr", {"Sources (*.pas *.dpr)"}},
      {"Dangling description", {}},
      {"", {}},
  };
  for (const Case& c : cases) EXPECT_EQ(QtNameFilters(c.pairs), c.filters) << c.pairs;
}

// What the modal box that `show` opens looks like; the box is closed with its Escape button.
struct TShownBox {
  QWidget* Parent = nullptr;
  QMessageBox::Icon Icon = QMessageBox::NoIcon;
  QStringList Buttons;
};

TShownBox ShownBox(const std::function<void()>& show) {
  TShownBox seen;
  QTimer::singleShot(0, [&seen] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box) return;
    seen.Parent = box->parentWidget();
    seen.Icon = box->icon();
    for (QAbstractButton* button : box->buttons()) seen.Buttons << button->text();
    box->close();
  });
  show();
  return seen;
}

TEST(QtDialogsTest, MessagesShowTheIconOfTheirKindAndEveryButtonHasAMnemonic) {
  testing::TestApplication();
  TQtDialogs dialogs;
  const struct {
    platform::TMessageKind kind;
    QMessageBox::Icon icon;
  } cases[] = {{platform::TMessageKind::Information, QMessageBox::Information},
               {platform::TMessageKind::Warning, QMessageBox::Warning},
               {platform::TMessageKind::Error, QMessageBox::Critical}};
  for (const auto& c : cases) {
    const TShownBox box = ShownBox([&] { dialogs.ShowMessage(c.kind, "Told."); });
    EXPECT_EQ(box.Icon, c.icon) << static_cast<int>(c.kind);
    EXPECT_EQ(box.Buttons, QStringList{"&OK"});
  }
  const TShownBox question = ShownBox([&] { EXPECT_EQ(dialogs.AskOkAbort(" Process paused. Resume?"), platform::TAnswer::Ok); });
  EXPECT_EQ(question.Icon, QMessageBox::Question);
  QStringList buttons = question.Buttons;
  buttons.sort();
  EXPECT_EQ(buttons, (QStringList{"&Abort", "&OK"}));
}

// Between two dialogs no window is active; a message shown then must still belong to the wizard's
// window, or closing it would count as closing the last window and take the wizard with it.
TEST(QtDialogsTest, AMessageBelongsToTheWizardWindowWhenNoneIsActive) {
  testing::TestApplication();
  QWidget host;
  QWidget frame(&host, Qt::Window);
  frame.show();
  QApplication::setActiveWindow(nullptr);
  ASSERT_EQ(QApplication::activeWindow(), nullptr);
  const TShownBox box = ShownBox([] { TQtDialogs().ShowMessage(platform::TMessageKind::Warning, "Job not loaded."); });
  EXPECT_EQ(box.Parent, &frame);
}

}  // namespace
}  // namespace tsaw
