#pragma once
// Test helper for widget tests: the program's one QApplication, made on first use on the
// offscreen platform unless QT_QPA_PLATFORM names another.

#include <QApplication>

namespace tsaw::testing {

// Kept alive for the whole run: widgets made by one test may be deleted after the next began.
inline QApplication& TestApplication() {
  static int argc = 1;
  static char name[] = "tsaw_tests";
  static char* argv[] = {name, nullptr};
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static QApplication* app = new QApplication(argc, argv);
  return *app;
}

}  // namespace tsaw::testing
