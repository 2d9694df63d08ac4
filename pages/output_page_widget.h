#pragma once
// The Output settings page widget: the Base Folder field with a Browse button.

#include "pages/field_page_widget.h"

class QToolButton;

namespace tsaw {

class TOutputPageWidget : public TFieldPageWidget {
  Q_OBJECT
 public:
  TOutputPageWidget(const TPageServices& services, QWidget* parent);

  // Browses for the folder in the wizard's browsing mode (1: the desktop's dialog, 2: Qt's own;
  // any other mode does nothing) and puts the choice into the field with a path variable in place
  // of its beginning where one fits. Cancelling, or in mode 2 choosing the folder it opened at,
  // changes nothing. The button is disabled while the dialog is up, and whenever the field is
  // read-only (the preview, or the template's mark).
  void btnBrowse_OnClick();

 private:
  QToolButton* btnBrowse_;
};

// The Qt folder dialog: the desktop's own when `native`, else Qt's widget dialog.
std::optional<std::string> QtFolderChooser(QWidget* parent, const std::string& start, bool native);

}  // namespace tsaw
