#include "app/gui_screenshots.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <string>
#include <system_error>

#include "app/command.h"

namespace tsaw::app {
namespace {

namespace fs = std::filesystem;

void Settle() {
  for (int i = 0; i < 3; ++i) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
  }
}

bool Save(QWidget& frame, const fs::path& file, std::ostream& err) {
  Settle();
  if (frame.grab().save(QString::fromStdString(file.string()), "PNG")) return true;
  err << "tsaw: cannot write " << file << '\n';
  return false;
}

// Selects, in tree order, the first template for which `wanted` holds; false when none does.
template <typename Wanted>
bool SelectTemplate(QWidget& frame, Wanted&& wanted) {
  auto* tree = frame.findChild<QTreeWidget*>("tvTemplates");
  if (!tree) return false;
  for (QTreeWidgetItemIterator it(tree); *it; ++it) {
    tree->setCurrentItem(*it);
    if (wanted()) return true;
  }
  return false;
}

}  // namespace

int WriteScreenshots(QWidget& host, const fs::path& dir, std::ostream& err) {
  QWidget* frame = host.findChild<QWidget*>("frmMain");
  auto* next = frame ? frame->findChild<QPushButton*>("btnNext") : nullptr;
  std::error_code error;
  fs::create_directories(dir, error);
  if (!next || error) {
    err << "tsaw: cannot write the screenshots to " << dir << '\n';
    return kExitFailed;
  }
  // The offscreen screen is small; the pictures show the window at the size it asks for where
  // there is room.
  frame->resize(900, 640);
  bool ok = Save(*frame, dir / "welcome.png", err);
  next->click();
  if (auto* expand = frame->findChild<QPushButton*>("btnExpandAll")) expand->click();
  auto* error_name = frame->findChild<QLabel*>("labErrorName");
  if (error_name && SelectTemplate(*frame, [error_name] { return !error_name->text().isEmpty(); })) {
    ok = Save(*frame, dir / "templates-bad.png", err) && ok;
  }
  if (!SelectTemplate(*frame, [next] { return next->isEnabled(); })) {
    err << "tsaw: the sample data holds no valid template to show.\n";
    return kExitFailed;
  }
  ok = Save(*frame, dir / "templates.png", err) && ok;
  // The data-entry steps, each showing the sample template's starting values.
  for (const char* page : {"languages", "common", "manager", "plugin", "logging", "cosmetics", "custom", "output"}) {
    if (!next->isEnabled()) {
      err << "tsaw: the step before the " << page << " page does not let the wizard go on.\n";
      return kExitFailed;
    }
    next->click();
    ok = Save(*frame, dir / (std::string(page) + ".png"), err) && ok;
  }
  // The last step after a finished run on the sample template.
  next->click();
  auto* start = frame->findChild<QAbstractButton*>("btnStart");
  if (!start) {
    err << "tsaw: the Creation page has no start button.\n";
    return kExitFailed;
  }
  start->click();
  ok = Save(*frame, dir / "creation.png", err) && ok;
  return ok ? kExitOk : kExitFailed;
}

}  // namespace tsaw::app
