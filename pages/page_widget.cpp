#include "pages/page_widget.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStyle>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include "platform/handler_guard.h"

namespace tsaw {

QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).replace("\r\n", "\n");
}

std::string FromQt(const QString& text) {
  QString crlf = text;
  crlf.replace("\r\n", "\n").replace("\n", "\r\n");
  return crlf.toStdString();
}

namespace {

QToolButton* MakeTab(const char* name, std::string_view caption, QWidget* parent) {
  auto* tab = new QToolButton(parent);
  tab->setObjectName(name);
  tab->setText(ToQt(caption));
  tab->setAutoRaise(true);
  tab->setFocusPolicy(Qt::TabFocus);
  return tab;
}

QPlainTextEdit* MakeMemo(const char* name, QWidget* parent) {
  auto* memo = new QPlainTextEdit(parent);
  memo->setObjectName(name);
  memo->setReadOnly(true);
  return memo;
}

QLabel* MakeLabel(const char* name, std::string_view caption, QWidget* parent) {
  auto* label = new QLabel(ToQt(caption), parent);
  label->setObjectName(name);
  return label;
}

void SetBold(QWidget* widget, bool bold) {
  QFont font = widget->font();
  font.setBold(bold);
  widget->setFont(font);
}

}  // namespace

TPageWidget::TPageWidget(const TPageServices& services, std::unique_ptr<TPageModel> model, QWidget* parent)
    : QWidget(parent), services_(services), model_(std::move(model)) {
  QPalette palette = this->palette();
  palette.setColor(QPalette::Window, Qt::white);
  setPalette(palette);
  setAutoFillBackground(true);

  labMainText_ = MakeLabel("labMainText", "", this);
  labMainText_->setWordWrap(true);
  panFields_ = new QGroupBox(this);
  panFields_->setObjectName("panFields");

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(labMainText_);
  layout->addWidget(panFields_);
  layout->addWidget(MakeInfoArea(), 1);
}

TPageWidget::~TPageWidget() = default;

QWidget* TPageWidget::MakeInfoArea() {
  auto* area = new QWidget(this);
  labTabValidation_ = MakeTab("labTabValidation", kValidationTabCaption, area);
  labTabAdvice_ = MakeTab("labTabAdvice", kAdviceTabCaption, area);
  imgArrow_ = new QLabel(area);
  imgArrow_->setObjectName("imgArrow");
  const QIcon arrow = QIcon::fromTheme("go-next", style()->standardIcon(QStyle::SP_ArrowRight));
  imgArrow_->setPixmap(arrow.pixmap(16, 16));

  tabs_ = new QGridLayout;
  tabs_->addWidget(labTabValidation_, 0, 1);
  tabs_->addWidget(labTabAdvice_, 1, 1);
  tabs_->setRowStretch(2, 1);
  tabs_->setColumnMinimumWidth(0, 18);

  labValidationCap_ = MakeLabel("labValidationCap", kInitialValidationCaption, area);
  labAdviceCap_ = MakeLabel("labAdviceCap", kAdviceCaption, area);
  memValidation_ = MakeMemo("memValidation", area);
  memAdvice_ = MakeMemo("memAdvice", area);
  memAdvice_->setPlainText(ToQt(kInitialAdvice));
  WatchFocus(memValidation_);
  WatchFocus(memAdvice_);

  auto* memos = new QVBoxLayout;
  for (QWidget* w : {static_cast<QWidget*>(labValidationCap_), static_cast<QWidget*>(memValidation_),
                     static_cast<QWidget*>(labAdviceCap_), static_cast<QWidget*>(memAdvice_)})
    memos->addWidget(w);
  auto* layout = new QHBoxLayout(area);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(tabs_);
  layout->addLayout(memos, 1);

  ConnectTab(labTabValidation_, kInfoTabValidation);
  ConnectTab(labTabAdvice_, kInfoTabAdvice);
  return area;
}

void TPageWidget::ConnectTab(QToolButton* label, int tab) {
  connect(label, &QToolButton::clicked, this, [this, tab] {
    platform::RunHandler("TSaW_Pages.TPageWidget.labTabInfo_OnClick", [&](int&) {
      model_->labTabInfo_OnClick(tab);
      ShowTab(tab);
    });
  });
}

void TPageWidget::OpenPage() {
  model_->Open();
  ShowOutcome();
}

void TPageWidget::ShowOutcome() {
  labValidationCap_->setText(ToQt(model_->Caption()));
  memValidation_->setPlainText(ToQt(model_->Errors().Text()));
  ShowTab(model_->InfoTab());
}

void TPageWidget::ShowTab(int tab) {
  const bool advice = tab == kInfoTabAdvice;
  memAdvice_->setVisible(advice);
  labAdviceCap_->setVisible(advice);
  memValidation_->setVisible(!advice);
  labValidationCap_->setVisible(!advice);
  SetBold(labTabAdvice_, advice);
  SetBold(labTabValidation_, !advice);
  tabs_->removeWidget(imgArrow_);
  tabs_->addWidget(imgArrow_, advice ? 1 : 0, 0);
}

void TPageWidget::WatchFocus(QWidget* control) { control->installEventFilter(this); }

bool TPageWidget::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    platform::RunHandler("TSaW_Pages.TPageWidget.Controls_OnEnter", [&](int&) {
      if (model_->Controls_OnEnter(watched->objectName().toStdString()))
        memAdvice_->setPlainText(ToQt(model_->AdviceText()));
    });
  }
  return QWidget::eventFilter(watched, event);
}

void TPageWidget::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  labMainText_->setText(ToQt(model_->Introduction()));
  PutInfoAreaLast();
  // Once the page is on screen, as the form's "ready" message does.
  QTimer::singleShot(0, this, [this] {
    platform::RunHandler("TSaW_Pages.TPageWidget.wmFormReady", [&](int&) { RestoreFocus(); });
  });
}

void TPageWidget::PutInfoAreaLast() {
  QWidget* last = nullptr;
  for (QWidget* control = nextInFocusChain(); control != this; control = control->nextInFocusChain()) {
    if (panFields_->isAncestorOf(control) && (control->focusPolicy() & Qt::TabFocus)) last = control;
  }
  if (last == nullptr) return;
  for (QWidget* next : std::initializer_list<QWidget*>{labTabValidation_, labTabAdvice_, memValidation_, memAdvice_}) {
    setTabOrder(last, next);
    last = next;
  }
}

void TPageWidget::RestoreFocus() {
  labTabValidation_->raise();
  labTabAdvice_->raise();
  const std::string& last = model_->LastEnteredControl();
  QWidget* control = last.empty() ? nullptr : findChild<QWidget*>(QString::fromStdString(last));
  if (control == nullptr || !control->isEnabled() || !control->isVisible()) control = BestControlToFocus();
  if (control != nullptr) control->setFocus(Qt::OtherFocusReason);
}

QWidget* TPageWidget::BestControlToFocus() const {
  for (QWidget* control : panFields_->findChildren<QWidget*>()) {
    if (control->isEnabled() && control->isVisible() && (control->focusPolicy() & Qt::TabFocus))
      return control;
  }
  return nullptr;
}

}  // namespace tsaw
