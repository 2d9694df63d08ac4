#include "shell/main_frame.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <string>

#include "jobs/session.h"
#include "platform/debug_log.h"
#include "platform/handler_guard.h"
#include "shell/window_place.h"

namespace tsaw {
namespace {

QFrame* Divider(QWidget* parent, const char* name) {
  auto* line = new QFrame(parent);
  line->setObjectName(name);
  line->setFrameShape(QFrame::HLine);
  line->setFrameShadow(QFrame::Sunken);
  return line;
}

QString JoinedLines(const std::vector<std::string>& lines) {
  QStringList out;
  for (const std::string& line : lines) out << QString::fromStdString(line);
  return out.join("\n\n");
}

}  // namespace

TfrmMain::TfrmMain(TFrameServices services, QWidget* parent, const TPageTable& pages)
    : QWidget(parent, Qt::Window),
      services_(services),
      pages_(pages),
      context_{*this, services.Wizard, services.Dialogs, memory_} {
  platform::ScopedRoutine routine("TSaW_frmMain.TfrmMain.FormCreate");
  setObjectName("frmMain");
  setWindowTitle(QString::fromStdString(kWizardProgram.DeepName + " " + kWizardProgram.Version));
  panPages_ = new QWidget(this);
  panPages_->setObjectName("panPages");
  auto* page_layout = new QVBoxLayout(panPages_);
  page_layout->setContentsMargins(0, 0, 0, 0);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(MakeHeader());
  layout->addWidget(Divider(this, "bevDivTop"));
  // A window made smaller than a page needs scrolls the page rather than squeezing its texts.
  auto* scroll = new QScrollArea(this);
  scroll->setObjectName("scrPages");
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setWidget(panPages_);
  layout->addWidget(scroll, 1);
  layout->addWidget(Divider(this, "bevDivBottom"));
  layout->addWidget(MakeButtons());
  PlaceWindow(*this, services_.WindowSettings);

  const TSessionStart start = Start_Session(services_.Wizard, services_.Clock, services_.Machine);
  page_number_ = kFirstPage;
  UpdatePage();
  UpdateStepButtons(true);
  if (!start.Messages.empty()) {
    // Told once the frame is on screen, not while the host is still opening it.
    const QString text = JoinedLines(start.Messages);
    QMetaObject::invokeMethod(
        this, [this, text] { services_.Dialogs.ShowMessage(platform::TMessageKind::Warning, text.toStdString()); }, Qt::QueuedConnection);
  }
}

TfrmMain::~TfrmMain() {
  platform::ScopedRoutine routine("TSaW_frmMain.TfrmMain.FormClose");
  // The page goes first, while the frame it may report to is still whole.
  delete current_;
}

void TfrmMain::closeEvent(QCloseEvent* event) {
  RememberWindowPlace(*this, services_.WindowSettings);
  QWidget::closeEvent(event);
}

void TfrmMain::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    QWidget::keyPressEvent(event);
    return;
  }
  QWidget* focused = focusWidget();
  if (auto* button = qobject_cast<QAbstractButton*>(focused);
      button && (qobject_cast<QPushButton*>(button) || qobject_cast<QToolButton*>(button))) {
    button->click();
  } else if (btnNext_->isVisible() && btnNext_->isEnabled()) {
    btnNext_->click();
  } else {
    QWidget::keyPressEvent(event);
  }
}

QWidget* TfrmMain::MakeHeader() {
  auto* header = new QWidget(this);
  labPageTitle_ = new QLabel(header);
  labPageTitle_->setObjectName("labPageTitle");
  QFont big = labPageTitle_->font();
  big.setPointSizeF(big.pointSizeF() * 1.6);
  big.setBold(true);
  labPageTitle_->setFont(big);
  labSteps_ = new QLabel(header);
  labSteps_->setObjectName("labSteps");
  labChangeTemplate_ = new QLabel("<a href=\"templates\">Change template</a>", header);
  labChangeTemplate_->setObjectName("labChangeTemplate");
  labChangeTemplate_->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
  labChangeTemplate_->setToolTip(" Go back to the Template Selection page ");
  connect(labChangeTemplate_, &QLabel::linkActivated, this, [this] { btnTemplates_OnClick(); });
  imgJobActive_ = new QLabel(header);
  imgJobActive_->setObjectName("imgJobActive");
  imgJobActive_->setPixmap(style()->standardIcon(QStyle::SP_FileDialogContentsView).pixmap(24, 24));
  imgJobActive_->hide();
  auto* grid = new QGridLayout(header);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(labPageTitle_, 0, 0);
  grid->addWidget(imgJobActive_, 0, 1, Qt::AlignRight);
  grid->addWidget(labSteps_, 1, 0);
  grid->addWidget(labChangeTemplate_, 1, 1, Qt::AlignRight);
  grid->setColumnStretch(0, 1);
  return header;
}

QWidget* TfrmMain::MakeButtons() {
  auto* row = new QWidget(this);
  btnPrev_ = new QPushButton(style()->standardIcon(QStyle::SP_ArrowBack), "&Previous", row);
  btnPrev_->setObjectName("btnPrev");
  btnNext_ = new QPushButton(style()->standardIcon(QStyle::SP_ArrowForward), "&Next", row);
  btnNext_->setObjectName("btnNext");
  btnNext_->setLayoutDirection(Qt::RightToLeft);  // the arrow after the text, pointing onward
  // Hidden during a run, they keep their room: the page above must not grow and shift under the pointer.
  for (QPushButton* button : {btnPrev_, btnNext_}) {
    QSizePolicy policy = button->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    button->setSizePolicy(policy);
  }
  connect(btnPrev_, &QPushButton::clicked, this, [this] { btnPrevNext_OnClick(kTagPrev); });
  connect(btnNext_, &QPushButton::clicked, this, [this] { btnPrevNext_OnClick(kTagNext); });
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addStretch(1);
  layout->addWidget(btnPrev_);
  layout->addWidget(btnNext_);
  return row;
}

void TfrmMain::UpdateStepButtons(bool page_valid) {
  const int page = page_number_;
  btnPrev_->setEnabled(page == 1 || (page > kFirstPage && page_valid));
  btnNext_->setEnabled(page_valid && page < kLastPage);
  labSteps_->setText(page == kFirstPage ? QString("Welcome")
                                        : QString::asprintf("Step %d of %d:  %s", page, kLastPage,
                                                            pages_[page].Title));
  labChangeTemplate_->setVisible(page >= 2);
}

void TfrmMain::btnPrevNext_OnClick(int tag) {
  platform::RunHandler("TSaW_frmMain.TfrmMain.btnPrevNext_OnClick", [&](int& step) {
    step = 10;
    const int before = page_number_;
    if (tag == kTagPrev && page_number_ > kFirstPage) --page_number_;
    if (tag == kTagNext && page_number_ != kLastPage) ++page_number_;
    step = 20;
    if (page_number_ != before || (tag != kTagPrev && tag != kTagNext)) ChangePage();
  });
}

void TfrmMain::btnTemplates_OnClick() {
  platform::RunHandler("TSaW_frmMain.TfrmMain.btnTemplates_OnClick", [&](int& step) {
    step = 10;
    if (page_number_ == 1) return;
    page_number_ = 1;
    ChangePage();
  });
}

void TfrmMain::ChangePage() {
  KillPages();
  UpdateStepButtons(true);
  UpdatePage();
}

void TfrmMain::ShowNavigation(bool visible) {
  btnPrev_->setVisible(visible);
  btnNext_->setVisible(visible);
  if (visible) {
    UpdateStepButtons(true);
  } else {
    labChangeTemplate_->hide();
  }
}

void TfrmMain::ShowJobMark() {
  imgJobActive_->setToolTip(QString::fromStdString(" Active Job:\n " + services_.Wizard.ActiveJobFile + " "));
  imgJobActive_->show();
}

void TfrmMain::HideJobMark() { imgJobActive_->hide(); }

void TfrmMain::UpdatePage() {
  platform::ScopedRoutine routine("TSaW_frmMain.TfrmMain.UpdatePage");
  const TPageEntry& entry = pages_[page_number_];
  labPageTitle_->setText(entry.Title);
  // Several frames may share one wizard state: the frame that builds a page hears its reports.
  services_.Wizard.RefreshStepButtons = [frame = QPointer<TfrmMain>(this)](bool page_valid) {
    if (frame) frame->UpdateStepButtons(page_valid);
  };
  QWidget* page = entry.Make(context_, panPages_);
  panPages_->layout()->addWidget(page);
  page->show();
  current_ = page;
  PutNavigationAfter(*page);
  PutFocusOn(*page);
}

void TfrmMain::PutFocusOn(QWidget& page) {
  // The old page took the focus with it; left to Qt it would land on Previous, where Enter
  // would take the user back. Data-entry pages put it on their own field once shown.
  if (btnNext_->isEnabled()) {
    btnNext_->setFocus(Qt::OtherFocusReason);
    return;
  }
  if (page_number_ != kLastPage) {
    for (QWidget* control = page.nextInFocusChain(); control != &page; control = control->nextInFocusChain()) {
      if (!page.isAncestorOf(control)) break;
      if ((control->focusPolicy() & Qt::TabFocus) && control->isEnabled() && control->isVisible()) {
        control->setFocus(Qt::OtherFocusReason);
        return;
      }
    }
  }
  // Nothing to press by accident: on the last page Enter must not start the run.
  setFocus(Qt::OtherFocusReason);
}

void TfrmMain::PutNavigationAfter(const QWidget& page) {
  QWidget* last = nullptr;
  for (QWidget* control = nextInFocusChain(); control != this; control = control->nextInFocusChain()) {
    if (page.isAncestorOf(control) && (control->focusPolicy() & Qt::TabFocus)) last = control;
  }
  if (last == nullptr) return;
  setTabOrder(last, btnPrev_);
  setTabOrder(btnPrev_, btnNext_);
}

void TfrmMain::KillPages() {
  // Deferred: the page may be the one whose event brought us here.
  if (!current_) return;
  current_->hide();
  panPages_->layout()->removeWidget(current_);
  current_->deleteLater();
  current_ = nullptr;
}

}  // namespace tsaw
