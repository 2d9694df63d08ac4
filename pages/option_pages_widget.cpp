#include "pages/option_pages_widget.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

#include "platform/handler_guard.h"
#include "templates/template_info.h"

namespace tsaw {

TOptionsPageWidget::TOptionsPageWidget(const TPageServices& services, std::unique_ptr<TOptionsPage> model, QWidget* parent)
    : TPageWidget(services, std::move(model), parent), page_(static_cast<TOptionsPage&>(Model())) {
  FieldsPanel()->setTitle(ToQt(page_.PanelCaption()));
  auto* grid = new QGridLayout(FieldsPanel());
  grid->setColumnStretch(1, 1);
  int row = 0;
  for (const TOption& option : page_.Options()) {
    auto* box = new QCheckBox(FieldsPanel());
    box->setObjectName(ToQt(option.Box));
    box->setToolTip(ToQt(option.Hint));
    if (const std::string locker = LockingTemplate(services.Wizard, option.VarIdx); !locker.empty()) {
      box->setEnabled(false);
      box->setToolTip(ToQt(" Read-only: set by the template \"" + locker + "\" "));
    }
    auto* label = new QLabel(ToQt(option.Caption), FieldsPanel());
    label->setObjectName(ToQt(option.Label));
    label->setToolTip(ToQt(option.Hint));
    label->setCursor(Qt::PointingHandCursor);
    label->installEventFilter(this);
    WatchFocus(box);
    const std::size_t i = boxes_.size();
    connect(box, &QCheckBox::clicked, this, [this, i] { cbx_OnClick(i); });
    grid->addWidget(box, row, 0);
    grid->addWidget(label, row++, 1);
    boxes_.push_back(box);
    labels_.push_back(label);
  }
  OpenPage();
  ShowBoxes();
}

bool TOptionsPageWidget::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    for (std::size_t i = 0; i < labels_.size(); ++i) {
      if (watched == labels_[i]) lab_OnClick(i);
    }
  }
  return TPageWidget::eventFilter(watched, event);
}

void TOptionsPageWidget::cbx_OnClick(std::size_t i) {
  platform::RunHandler("TSaW_Pages.TOptionsPageWidget.cbx_OnClick", [&](int&) {
    page_.cbx_OnClick(page_.Options()[i].Box, boxes_[i]->isChecked());
    ShowBoxes();
  });
}

void TOptionsPageWidget::lab_OnClick(std::size_t i) {
  platform::RunHandler("TSaW_Pages.TOptionsPageWidget.lab_OnClick", [&](int&) {
    if (!boxes_[i]->isEnabled()) return;
    page_.lab_OnClick(page_.Options()[i].Label);
    if (boxes_[i]->focusPolicy() != Qt::NoFocus) boxes_[i]->setFocus(Qt::MouseFocusReason);
    ShowBoxes();
  });
}

void TOptionsPageWidget::ShowBoxes() {
  for (std::size_t i = 0; i < boxes_.size(); ++i) boxes_[i]->setChecked(page_.Checked(page_.Options()[i].Box));
}

}  // namespace tsaw
