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

std::optional<std::string> TQtDialogs::AskOpenFile(const platform::TFileDialogRequest& request) {
  QFileDialog dialog(QApplication::activeWindow(), QString::fromStdString(request.Title),
                     QString::fromStdString(request.Folder));
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setNameFilters(QtNameFilters(request.Filter));
  dialog.setDefaultSuffix(QString::fromStdString(request.DefaultExt));
  dialog.selectFile(QString::fromStdString(request.FileName));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return QDir::toNativeSeparators(dialog.selectedFiles().first()).toStdString();
}

void TQtDialogs::ShowMessage(std::string_view message) {
  QMessageBox::warning(QApplication::activeWindow(), QString::fromStdString(kWizardProgram.DeepName),
                       QString::fromUtf8(message.data(), static_cast<qsizetype>(message.size())));
}

}  // namespace tsaw
