#include "shell/qt_dialogs.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>

#include "jobs/session.h"

namespace tsaw {

QStringList QtNameFilters(std::string_view pairs) {
  const QStringList parts = QString::fromUtf8(pairs.data(), static_cast<qsizetype>(pairs.size())).split('|');
  QStringList filters;
  static const QRegularExpression kTrailingPatterns(R"(\s*\([^()]*\)\s*$)");
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString description = parts[i];
    description.remove(kTrailingPatterns);
    QString patterns = parts[i + 1];
    patterns.replace(';', ' ').replace("*.*", "*");
    filters << description + " (" + patterns.simplified() + ")";
  }
  return filters;
}

namespace {

// The window a dialog belongs to. Right after another dialog closes no window may be active yet;
// a dialog without a parent would then count as the application's last window, and closing it
// would close the wizard under the page that asked.
QWidget* DialogParent() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowType() == Qt::Window && !qobject_cast<QDialog*>(window)) return window;
  }
  return nullptr;
}

QString Text(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

// A file dialog for `request`: opening an existing file, or saving (Qt asks before replacing).
std::optional<std::string> AskFile(const platform::TFileDialogRequest& request, QFileDialog::AcceptMode mode) {
  QFileDialog dialog(DialogParent(), QString::fromStdString(request.Title),
                     QString::fromStdString(request.Folder));
  dialog.setAcceptMode(mode);
  dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  dialog.setNameFilters(QtNameFilters(request.Filter));
  dialog.setDefaultSuffix(QString::fromStdString(request.DefaultExt));
  dialog.selectFile(QString::fromStdString(request.FileName));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return QDir::toNativeSeparators(dialog.selectedFiles().first()).toStdString();
}

}  // namespace

std::optional<std::string> TQtDialogs::AskOpenFile(const platform::TFileDialogRequest& request) {
  return AskFile(request, QFileDialog::AcceptOpen);
}

std::optional<std::string> TQtDialogs::AskSaveFile(const platform::TFileDialogRequest& request) {
  return AskFile(request, QFileDialog::AcceptSave);
}

platform::TAnswer TQtDialogs::AskOkAbort(std::string_view question) {
  QMessageBox box(QMessageBox::Question, QString::fromStdString(kWizardProgram.DeepName), Text(question),
                  QMessageBox::Ok | QMessageBox::Abort, DialogParent());
  box.button(QMessageBox::Ok)->setText("&OK");
  box.button(QMessageBox::Abort)->setText("&Abort");
  box.setDefaultButton(QMessageBox::Ok);
  // Escape and the close box resume: only the Abort button stops.
  box.setEscapeButton(QMessageBox::Ok);
  return box.exec() == QMessageBox::Abort ? platform::TAnswer::Abort : platform::TAnswer::Ok;
}

void TQtDialogs::ShowMessage(platform::TMessageKind kind, std::string_view message) {
  const QMessageBox::Icon icon = kind == platform::TMessageKind::Information ? QMessageBox::Information
                                 : kind == platform::TMessageKind::Warning   ? QMessageBox::Warning
                                                                             : QMessageBox::Critical;
  QMessageBox box(icon, QString::fromStdString(kWizardProgram.DeepName), Text(message), QMessageBox::Ok,
                  DialogParent());
  box.button(QMessageBox::Ok)->setText("&OK");
  box.exec();
}

}  // namespace tsaw
