#include "pages/lookup_popup.h"

#include <algorithm>

#include <QApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include "pages/lookup_list.h"
#include "pages/page_widget.h"
#include "platform/debug_log.h"

namespace tsaw {

namespace {

// A radio's caption shows an ampersand instead of taking it as a keyboard accelerator.
QString RadioCaption(const std::string& value) { return ToQt(value).replace("&", "&&"); }

}  // namespace

TfrmLookup::TfrmLookup(const QString& caption, const std::vector<std::string>& values,
                       const std::string& current, QWidget* anchor)
    : QDialog(anchor, Qt::Popup | Qt::FramelessWindowHint), selected_(current) {
  platform::ScopedRoutine log("TSaW_frmLookup.TfrmLookup.OnCreate");
  setObjectName("frmLookup");
  setAutoFillBackground(true);
  QPalette light = palette();
  light.setColor(QPalette::Window, QColor(0xfb, 0xfb, 0xf4));
  setPalette(light);

  labCaption_ = new QLabel(caption, this);
  labCaption_->setObjectName("labCaption");
  labCaption_->setAutoFillBackground(true);
  labCaption_->setContentsMargins(4, 2, 4, 2);
  SetCaptionActive(true);

  auto* list = new QWidget;
  auto* radios = new QVBoxLayout(list);
  for (std::size_t i = 0; i < values.size(); ++i) {
    auto* radio = new QRadioButton(RadioCaption(values[i]), list);
    radio->setObjectName(QString("rad_%1").arg(i));
    radio->setProperty("value", ToQt(values[i]));
    radio->installEventFilter(this);
    connect(radio, &QRadioButton::clicked, this, [this, radio] { Radio_OnClick(radio); });
    if (values[i] == current) {
      radio->setChecked(true);
      preselected_ = static_cast<int>(i);
    }
    radios->addWidget(radio);
    radios_.push_back(radio);
  }
  auto* scroll = new QScrollArea(this);
  scroll->setWidget(list);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setMinimumWidth(list->sizeHint().width() + 24);
  scroll->setMinimumHeight(std::min(list->sizeHint().height(), 320));

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(1, 1, 1, 1);
  layout->addWidget(labCaption_);
  layout->addWidget(scroll);
  if (anchor != nullptr && anchor->screen() != nullptr) {
    const QRect field(anchor->mapToGlobal(QPoint(0, 0)), anchor->size());
    move(PopupPlace(field, sizeHint(), anchor->screen()->availableGeometry()));
  }

  connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
    const bool active = state == Qt::ApplicationActive;
    platform::DebugLine(active ? "Application activated. Restoring caption color..."
                               : "Application deactivated. Changing caption color...");
    SetCaptionActive(active);
  });
}

QPoint PopupPlace(const QRect& field, const QSize& popup, const QRect& screen) {
  int y = field.bottom() + 1;
  if (y + popup.height() > screen.bottom() + 1 && field.top() - popup.height() >= screen.top()) {
    y = field.top() - popup.height();
  }
  y = std::max(screen.top(), std::min(y, screen.bottom() + 1 - popup.height()));
  const int x = std::max(screen.left(), std::min(field.left(), screen.right() + 1 - popup.width()));
  return {x, y};
}

void TfrmLookup::SetCaptionActive(bool active) {
  QPalette colours = labCaption_->palette();
  const QPalette& app = QApplication::palette();
  const QPalette::ColorGroup group = active ? QPalette::Active : QPalette::Inactive;
  colours.setColor(QPalette::Window, active ? app.color(group, QPalette::Highlight) : app.color(QPalette::Mid));
  colours.setColor(QPalette::WindowText, app.color(group, QPalette::HighlightedText));
  labCaption_->setPalette(colours);
}

void TfrmLookup::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (radios_.empty()) return;
  QRadioButton* first = preselected_ >= 0 ? radios_[static_cast<std::size_t>(preselected_)] : radios_.front();
  first->setFocus(Qt::OtherFocusReason);
}

void TfrmLookup::Radio_OnClick(QRadioButton* radio) {
  if (radio->isChecked()) selected_ = FromQt(radio->property("value").toString());
}

bool TfrmLookup::eventFilter(QObject* watched, QEvent* event) {
  auto* radio = qobject_cast<QRadioButton*>(watched);
  // Tabbing onto a radio chooses it; the focus the popup itself gives on showing chooses nothing.
  const bool tabbed_onto = event->type() == QEvent::FocusIn &&
                           (static_cast<QFocusEvent*>(event)->reason() == Qt::TabFocusReason ||
                            static_cast<QFocusEvent*>(event)->reason() == Qt::BacktabFocusReason);
  if (radio != nullptr && tabbed_onto) {
    radio->setChecked(true);
    Radio_OnClick(radio);
  } else if (radio != nullptr && event->type() == QEvent::MouseButtonDblClick) {
    radio->setChecked(true);
    Radio_OnClick(radio);
    accept();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

void TfrmLookup::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      platform::DebugLine("User hit the <ENTER> key.");
      accept();
      return;
    case Qt::Key_Escape:
      platform::DebugLine("User hit the <ESC> key.");
      selected_.clear();
      reject();
      return;
    default:
      QDialog::keyPressEvent(event);
  }
}

std::string LookupList(QLineEdit* edit, const std::string& caption, const std::vector<std::string>& values,
                       const std::string& current) {
  platform::ScopedRoutine log("TSaW_frmLookup.LookupList");
  if (values.empty()) return {};
  TfrmLookup popup(ToQt(caption), values, current, edit);
  popup.exec();
  return popup.Selected();
}

void Lookup_Edit(const TWizard& wizard, uint16_t var_idx, QLineEdit* edit) {
  platform::ScopedRoutine log("TSaW_frmLookup.Lookup_Edit");
  if (edit == nullptr) return;
  edit->setFocus(Qt::OtherFocusReason);
  const std::optional<TLookupRequest> request = LookupFor(wizard, var_idx);
  if (!request) return;
  const std::string chosen = LookupList(edit, request->Caption, request->Values, FromQt(edit->text()));
  if (!chosen.empty()) edit->setText(ToQt(chosen));
}

}  // namespace tsaw
