#include "pages/welcome_page.h"

#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <string>

#include "jobs/job_loader.h"
#include "platform/handler_guard.h"

namespace tsaw {
namespace {

constexpr const char* kHeading = "Welcome to TSaW, the Tessera Wizard.";
constexpr const char* kQuestion = "What do you want to do?";
constexpr const char* kTplTitle = "Select a Template";
constexpr const char* kTplText =
    "Start from scratch by seleting a template from those available and shown on a treeview.";
constexpr const char* kJobTitle = "Load a Job";
constexpr const char* kJobText =
    "Start from an existing Job, which is bound to a especific template. You will still be able to "
    "edit the settings.";
constexpr const char* kConfigTitle = "Configuration";
constexpr const char* kConfigText =
    "Load a Configuration file for the Wizard, containing the first layer of settings.";
constexpr const char* kNote1 =
    "After a couple of settings you'll have your own Project Set created, ready for compile.";
constexpr const char* kNote2 =
    "For each of the 10 steps you'll get a sensitive advice to help you select options and enter data "
    "as needed. In the last step, the wizard will generate your Project Set in the destination folder, "
    "as you'll especify.\n\n"
    "Now you may step forward to the templates page and select one from those available. You can also "
    "chose an existing Job (group of settings) which already is bound to a especific template, or even "
    "change the active Wizard Configuration.";

// Wide enough for the three cells side by side; the block stays centred as the page resizes.
constexpr int kContentWidth = 640;

QLabel* WrappedLabel(const QString& text, const char* name, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(name);
  label->setWordWrap(true);
  return label;
}

// One start choice: a button, a title and a description; a click anywhere on it runs `clicked`,
// and pointing at the button highlights the whole cell.
class TWelcomeCell : public QFrame {
 public:
  TWelcomeCell(const QString& name, const QIcon& icon, const QString& title, const QString& text,
               std::function<void()> clicked, QWidget* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void SetHighlighted(bool on);

  QToolButton* button_;
  std::function<void()> clicked_;
};

}  // namespace

platform::TFileDialogRequest JobOpenRequest(const TWizard& wizard) {
  return {" Select a Job file to load:",
          "Job files (Job*.ini)|Job*.ini|All Configuration files (*.ini)|*.ini|All files (*.*)|*.*", "ini",
          "Job.001.ini", wizard.JobsFolder};
}

platform::TFileDialogRequest ConfigOpenRequest(const TWizard& wizard) {
  return {" Select a Wizard Configuration file:",
          "TSaW Configuration files|TSaW.*.ini|All Configuration files|*.ini|All files|*.*", "ini",
          "TSaW.Default.ini", wizard.WizardFolder};
}

TWelcomeCell::TWelcomeCell(const QString& name, const QIcon& icon, const QString& title, const QString& text,
                           std::function<void()> clicked, QWidget* parent)
    : QFrame(parent), button_(new QToolButton(this)), clicked_(std::move(clicked)) {
  setObjectName("pan" + name);
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  button_->setObjectName("btn" + name);
  button_->setIcon(icon);
  button_->setIconSize(QSize(32, 32));
  button_->setToolTip(title);
  auto* title_label = new QLabel("<b>" + title + "</b>", this);
  title_label->setObjectName("lab" + name + "Title");
  auto* description = WrappedLabel(text, "", this);
  description->setObjectName("lab" + name + "Text");
  auto* grid = new QGridLayout(this);
  grid->addWidget(button_, 0, 0, 2, 1, Qt::AlignTop);
  grid->addWidget(title_label, 0, 1);
  grid->addWidget(description, 1, 1);
  grid->setColumnStretch(1, 1);
  connect(button_, &QToolButton::clicked, this, [this] { clicked_(); });
  button_->installEventFilter(this);
  for (QObject* part : {static_cast<QObject*>(this), static_cast<QObject*>(title_label),
                        static_cast<QObject*>(description)}) {
    part->installEventFilter(this);
  }
}

bool TWelcomeCell::eventFilter(QObject* watched, QEvent* event) {
  if (watched == button_) {
    if (event->type() == QEvent::Enter) SetHighlighted(true);
    if (event->type() == QEvent::Leave) SetHighlighted(false);
    return false;
  }
  if (event->type() == QEvent::MouseButtonRelease) {
    clicked_();
    return true;
  }
  return false;
}

void TWelcomeCell::SetHighlighted(bool on) {
  setBackgroundRole(on ? QPalette::AlternateBase : QPalette::Window);
}

TfrmWelcome::TfrmWelcome(TWizard& wizard, platform::Dialogs& dialogs, TWelcomeActions actions, QWidget* parent)
    : QWidget(parent), wizard_(wizard), dialogs_(dialogs), actions_(std::move(actions)) {
  setObjectName("frmWelcome");
  auto* outer = new QVBoxLayout(this);
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(MakeContent());
  row->addStretch(1);
  outer->addStretch(1);
  outer->addLayout(row);
  outer->addStretch(2);
}

QWidget* TfrmWelcome::MakeContent() {
  auto* content = new QWidget(this);
  content->setObjectName("bevBounds");
  content->setMaximumWidth(kContentWidth);
  auto* column = new QVBoxLayout(content);
  auto* heading = WrappedLabel(kHeading, "labWelcome", content);
  QFont big = heading->font();
  big.setPointSizeF(big.pointSizeF() * 1.5);
  big.setBold(true);
  heading->setFont(big);
  column->addWidget(heading);
  column->addWidget(WrappedLabel(kQuestion, "labQuestion", content));
  QStyle* look = style();
  column->addWidget(new TWelcomeCell("StartFromTpl", look->standardIcon(QStyle::SP_DirIcon), kTplTitle,
                                     kTplText, [this] { btnStartFromTpl_OnClick(); }, content));
  column->addWidget(new TWelcomeCell("StartFromJob", look->standardIcon(QStyle::SP_DialogOpenButton), kJobTitle,
                                     kJobText, [this] { btnStartFromJob_OnClick(); }, content));
  column->addWidget(new TWelcomeCell("LoadConfig", look->standardIcon(QStyle::SP_FileDialogDetailedView),
                                     kConfigTitle, kConfigText, [this] { btnLoadConfig_OnClick(); }, content));
  column->addSpacing(12);
  column->addWidget(WrappedLabel(kNote1, "labNote1", content));
  column->addWidget(WrappedLabel(kNote2, "labNote2", content));
  return content;
}

void TfrmWelcome::btnStartFromTpl_OnClick() {
  platform::RunHandler("TSaW_frmWelcome.TfrmWelcome.btnStartFromTpl_OnClick",
                       [this](int&) { actions_.GoToTemplates(); });
}

void TfrmWelcome::btnStartFromJob_OnClick() {
  platform::RunHandler("TSaW_frmWelcome.TfrmWelcome.btnStartFromJob_OnClick", [this](int& step) {
    step = 10;
    const std::optional<std::string> file = dialogs_.AskOpenFile(JobOpenRequest(wizard_));
    if (!file) return;
    step = 20;
    const std::string problem = Load_Job(wizard_, *file);
    if (!problem.empty()) dialogs_.ShowMessage(platform::TMessageKind::Warning, problem);
    step = 30;
    // A Job that did not load leaves none active: the templates page opens unlocked, unmarked.
    if (wizard_.ActiveJobFile.empty()) {
      actions_.GoToTemplates();
    } else {
      actions_.JobLoaded();
    }
  });
}

void TfrmWelcome::btnLoadConfig_OnClick() {
  // The chosen file is deliberately not applied: the selector file decides the configuration.
  platform::RunHandler("TSaW_frmWelcome.TfrmWelcome.btnLoadConfig_OnClick",
                       [this](int&) { dialogs_.AskOpenFile(ConfigOpenRequest(wizard_)); });
}

}  // namespace tsaw
