#pragma once
// The Platforms and languages page widget: a grid of IDE columns and platform rows with one check
// box per target the page offers.

#include <vector>

#include "pages/languages_page.h"
#include "pages/page_widget.h"

class QCheckBox;

namespace tsaw {

class TLanguagesPageWidget : public TPageWidget {
  Q_OBJECT
 public:
  // Builds the grid, loads the boxes from the wizard's selection and validates.
  TLanguagesPageWidget(const TPageServices& services, QWidget* parent);

 private:
  void AddBoxes();
  // The user clicked `box`: the page's click rules run, their messages are shown in order.
  void cbx_OnClick(std::size_t box);
  void ShowBoxes();

  TLanguagesPage& page_;
  std::vector<QCheckBox*> boxes_;  // in the order of the page's boxes
};

}  // namespace tsaw
