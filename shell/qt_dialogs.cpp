#include "shell/qt_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
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

// A file dialog for `request`: opening an existing file, or saving (Qt asks before replacing).
std::optional<std::string> AskFile(const platform::TFileDialogRequest& request, QFileDialog::AcceptMode mode) {
  QFileDialog dialog(QApplication::activeWindow(), QString::fromStdString(request.Title),
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
  QMessageBox box(QMessageBox::Question, QString::fromStdString(kWizardProgram.DeepName),
                  QString::fromUtf8(question.data(), static_cast<qsizetype>(question.size())),
                  QMessageBox::Ok | QMessageBox::Abort, QApplication::activeWindow());
  box.setDefaultButton(QMessageBox::Ok);
  // Escape and the close box resume: only the Abort button stops.
  box.setEscapeButton(QMessageBox::Ok);
  return box.exec() == QMessageBox::Abort ? platform::TAnswer::Abort : platform::TAnswer::Ok;
}

void TQtDialogs::ShowMessage(std::string_view message) {
  QMessageBox::warning(QApplication::activeWindow(), QString::fromStdString(kWizardProgram.DeepName),
                       QString::fromUtf8(message.data(), static_cast<qsizetype>(message.size())));
}

}  // namespace tsaw
