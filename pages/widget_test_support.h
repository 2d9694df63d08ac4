#pragma once
// Test helper for the data-entry page widgets: a wizard as the pages find it, the frame's page
// memory, dialogs that record what the pages tell the user, and the step buttons' last state.

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pages/page_widget.h"
#include "platform/dialogs.h"
#include "testing/wizard_builder.h"
#include "testing/qt_application.h"

namespace tsaw::testing {

// Records every message; `OnMessage` runs as a message is shown (the page's state at that moment).
class RecordingDialogs : public platform::Dialogs {
 public:
  std::optional<std::string> AskOpenFile(const platform::TFileDialogRequest&) override { return std::nullopt; }
  std::optional<std::string> AskSaveFile(const platform::TFileDialogRequest&) override { return std::nullopt; }
  platform::TAnswer AskOkAbort(std::string_view) override { return platform::TAnswer::Ok; }
  void ShowMessage(platform::TMessageKind kind, std::string_view message) override {
    Messages.emplace_back(message);
    MessageKinds.push_back(kind);
    if (OnMessage) OnMessage();
  }
  std::vector<std::string> Messages;
  std::vector<platform::TMessageKind> MessageKinds;  // one per message
  std::function<void()> OnMessage;
};

// Everything a page widget is built with.
struct PageBench {
  explicit PageBench(uint16_t plugins) : Wizard(MakeWizard(plugins)) {
    TestApplication();
    Wizard.RefreshStepButtons = [this](bool valid) { NextEnabled = valid; };
  }
  TPageServices Services() { return {Wizard, Memory, Dialogs, ChooseFolder}; }

  TWizard Wizard;
  TPageMemory Memory;
  RecordingDialogs Dialogs;
  TFolderChooser ChooseFolder;
  std::optional<bool> NextEnabled;  // what the last validation told the frame
};

// Shows `page` as an active window and lets its "ready" step run, so that focus events arrive.
inline void ShowActive(QWidget& page) {
  page.resize(640, 480);
  page.show();
  page.activateWindow();
  [[maybe_unused]] bool active = QTest::qWaitForWindowActive(&page);
  QCoreApplication::processEvents();
}

// The child of `page` named `name`, of type T; fails the test when there is none.
template <typename T>
T* Find(const QWidget& page, const char* name) {
  T* child = page.findChild<T*>(name);
  if (child == nullptr) ADD_FAILURE() << "no control " << name;
  return child;
}

// Replaces the text of the focused-by-click line edit by typing `text`.
inline void Retype(QWidget* edit, const QString& text) {
  edit->setFocus();
  QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(edit, Qt::Key_Backspace);
  if (!text.isEmpty()) QTest::keyClicks(edit, text);
}

}  // namespace tsaw::testing
