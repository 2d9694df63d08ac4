#include "pages/page_widget.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTimer>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "platform/handler_guard.h"
#include "templates/template_info.h"

namespace tsaw {

QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).replace("\r\n", "\n");
}

std::string FromQt(const QString& text) {
  QString crlf = text;
  crlf.replace("\r\n", "\n").replace("\n", "\r\n");
  return crlf.toStdString();
}

std::string LockingTemplate(const TWizard& wizard, uint16_t var_idx) {
  const TTemplateInfo* info = wizard.SelectedTemplate.get();
  return info && IsReadOnly(*info, var_idx) ? info->FolderName : std::string();
}

namespace {

QPlainTextEdit* MakeMemo(const char* name, QWidget* parent) {
  auto* memo = new QPlainTextEdit(parent);
  memo->setObjectName(name);
  memo->setReadOnly(true);
  memo->setTabChangesFocus(true);
  return memo;
}

// One page of the information tabs: its caption over its memo.
QWidget* TabPage(const char* name, QLabel* caption, QPlainTextEdit* memo) {
  auto* page = new QWidget;
  page->setObjectName(name);
  auto* column = new QVBoxLayout(page);
  column->addWidget(caption);
  column->addWidget(memo, 1);
  return page;
}

QLabel* MakeLabel(const char* name, std::string_view caption, QWidget* parent) {
  auto* label = new QLabel(ToQt(caption), parent);
  label->setObjectName(name);
  return label;
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
  tabInfo_ = new QTabWidget(this);
  tabInfo_->setObjectName("tabInfo");
  labValidationCap_ = MakeLabel("labValidationCap", kInitialValidationCaption, tabInfo_);
  labAdviceCap_ = MakeLabel("labAdviceCap", kAdviceCaption, tabInfo_);
  memValidation_ = MakeMemo("memValidation", tabInfo_);
  memAdvice_ = MakeMemo("memAdvice", tabInfo_);
  memAdvice_->setPlainText(ToQt(kInitialAdvice));
  WatchFocus(memValidation_);
  WatchFocus(memAdvice_);
  tabInfo_->addTab(TabPage("tabValidation", labValidationCap_, memValidation_), ToQt(kValidationTabCaption));
  tabInfo_->addTab(TabPage("tabAdvice", labAdviceCap_, memAdvice_), ToQt(kAdviceTabCaption));
  // Any way of choosing a tab (click, arrow keys, Ctrl+Tab) is the user's choice for this page.
  connect(tabInfo_, &QTabWidget::currentChanged, this, [this](int index) {
    if (showing_tab_) return;
    platform::RunHandler("TSaW_Pages.TPageWidget.labTabInfo_OnClick", [&](int&) {
      model_->labTabInfo_OnClick(index == 1 ? kInfoTabAdvice : kInfoTabValidation);
    });
  });
  return tabInfo_;
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
  const bool shown = showing_tab_;
  showing_tab_ = true;
  tabInfo_->setCurrentIndex(tab == kInfoTabAdvice ? 1 : 0);
  showing_tab_ = shown;
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
  for (QWidget* next : std::initializer_list<QWidget*>{tabInfo_->tabBar(), memValidation_, memAdvice_}) {
    setTabOrder(last, next);
    last = next;
  }
}

void TPageWidget::RestoreFocus() {
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
