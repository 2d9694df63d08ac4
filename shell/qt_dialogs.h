#pragma once
// The dialogs service on Qt: the platform's own file dialog and message box.

#include <QStringList>

#include <string_view>

#include "platform/dialogs.h"

namespace tsaw {

// A filter written as pairs "description|patterns|..." as Qt's name filters: each description
// followed by its patterns in brackets ("Job files (Job*.ini)"), patterns separated by ';' given
// as blanks, and "*.*" written "*" because here a file name need not hold a dot. A description
// that already ends in bracketed patterns has them replaced. A last description without patterns
// is dropped.
QStringList QtNameFilters(std::string_view pairs);

// Dialogs parented to the application's active window.
class TQtDialogs final : public platform::Dialogs {
 public:
  std::optional<std::string> AskOpenFile(const platform::TFileDialogRequest& request) override;
  std::optional<std::string> AskSaveFile(const platform::TFileDialogRequest& request) override;
  platform::TAnswer AskOkAbort(std::string_view question) override;
  void ShowMessage(platform::TMessageKind kind, std::string_view message) override;
};

}  // namespace tsaw
