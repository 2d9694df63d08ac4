#pragma once
// The Logging and Cosmetics page widgets: one check box per option, each with a caption label
// that toggles it when clicked.

#include <memory>
#include <vector>

#include "pages/option_pages.h"
#include "pages/page_widget.h"

class QCheckBox;
class QLabel;

namespace tsaw {

class TOptionsPageWidget : public TPageWidget {
  Q_OBJECT
 public:
  // Builds the boxes of `model`, loads them from their variables (the page's own rule settling
  // them) and opens the page.
  TOptionsPageWidget(const TPageServices& services, std::unique_ptr<TOptionsPage> model, QWidget* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void cbx_OnClick(std::size_t option);
  void lab_OnClick(std::size_t option);
  void ShowBoxes();

  TOptionsPage& page_;
  std::vector<QCheckBox*> boxes_;  // in the order of the page's options
  std::vector<QLabel*> labels_;
};

}  // namespace tsaw
