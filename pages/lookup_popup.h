#pragma once
// The variable look-up popup: a small borderless list of radio buttons beside a field, from which
// the user picks the value the field takes.

#include <QDialog>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <string>
#include <vector>

#include "model/wizard.h"

class QLabel;
class QLineEdit;
class QRadioButton;

namespace tsaw {

// The popup (`TfrmLookup`): one radio "rad_<n>" per value in the given order, the one equal to
// `current` checked. ENTER or a double-click takes the checked value, ESC takes nothing, any other
// way of closing keeps the value last chosen.
class TfrmLookup : public QDialog {
  Q_OBJECT
 public:
  TfrmLookup(const QString& caption, const std::vector<std::string>& values, const std::string& current,
             QWidget* anchor);
  // The value chosen so far: `current` until a radio is chosen, empty after ESC.
  const std::string& Selected() const { return selected_; }

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Radio_OnClick(QRadioButton* radio);
  void SetCaptionActive(bool active);

  QLabel* labCaption_;
  std::vector<QRadioButton*> radios_;
  std::string selected_;
  int preselected_ = -1;
};

// Where a popup of size `popup` opens for a field at `field` (screen coordinates): below the
// field, above it when it would pass the bottom of `screen` (the available area), and moved
// sideways or up as far as needed to stay on it.
QPoint PopupPlace(const QRect& field, const QSize& popup, const QRect& screen);

// Shows the popup for `edit` and returns the value chosen; empty when nothing was.
std::string LookupList(QLineEdit* edit, const std::string& caption, const std::vector<std::string>& values,
                       const std::string& current);

// The look-up button of the field showing `var_idx`: focuses `edit`, then, when the variable has
// a look-up with values, shows the popup and puts a chosen value into `edit` (whose own change
// handling stores it). Nothing happens for a null `edit` or a variable without look-up.
void Lookup_Edit(const TWizard& wizard, uint16_t var_idx, QLineEdit* edit);

}  // namespace tsaw
