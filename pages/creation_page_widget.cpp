#include "pages/creation_page_widget.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStyle>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include <cstdlib>
#include <filesystem>
#include <optional>

#include "creation/ide_handoff.h"
#include "creation/report.h"
#include "generations/creation_recorder.h"
#include "pages/update_choice_widget.h"
#include "jobs/job_writer.h"
#include "jobs/session.h"
#include "model/format.h"
#include "platform/handler_guard.h"

namespace tsaw {
namespace {

constexpr const char* kAdviceBefore =
    "You are ready to start the Creation process. Just click the green arrow button to proceed.";
constexpr const char* kAdviceSuccess =
    "The wizard has successfully created your Project Set. A report is available for inspection and the "
    "Project Group can be loaded in the IDE.\n\n"
    "Alternatively, you can repeat the creation process if you wish, or go back to the other step pages and "
    "review the settings you have entered before creating the Project Set again. Save them as a Job to make "
    "the same Project Set again later.";
constexpr const char* kAdviceAborted =
    "The process has been aborted. You may start it again by clicking the \"ray\" button. \n"
    "The report, however, is available containing all tasks performed before the process has been aborted.";
constexpr const char* kPauseQuestion = " Process paused. Resume?";

constexpr std::array<const char*, 8> kCounterNames = {
    "labFoldersScanned", "labFoldersSkipped", "labFoldersProcessed", "labFoldersFailed",
    "labFilesScanned",   "labFilesSkipped",   "labFilesProcessed",   "labFilesFailed"};
constexpr std::array<const char*, 4> kCounterGroups = {" Scanned ", " Skipped ", " Processed ", " Failed "};

// The IDE of the platform with its message boxes shown through the page's dialogs.
class TIdeOnDialogs final : public platform::Ide {
 public:
  TIdeOnDialogs(platform::Ide& ide, platform::Dialogs& dialogs) : ide_(ide), dialogs_(dialogs) {}
  bool InsideIde() override { return ide_.InsideIde(); }
  std::unique_ptr<platform::DdeConversation> NewConversation() override { return ide_.NewConversation(); }
  std::string ReadMachineRegistry(const std::string& key, const std::string& value) override {
    return ide_.ReadMachineRegistry(key, value);
  }
  bool RaiseWindow(const std::string& name) override { return ide_.RaiseWindow(name); }
  void ShowMessage(platform::MessageKind kind, const std::string& text) override {
    dialogs_.ShowMessage(kind == platform::MessageKind::Information ? platform::TMessageKind::Information
                                                                     : platform::TMessageKind::Error,
                         text);
  }

 private:
  platform::Ide& ide_;
  platform::Dialogs& dialogs_;
};

// The start button's green arrow, pointing onward.
QIcon GreenArrow() {
  QPixmap pixmap(40, 40);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(0, 100, 0), 2));
  painter.setBrush(QColor(40, 170, 60));
  painter.drawPolygon(QPolygonF({{4, 13}, {20, 13}, {20, 4}, {37, 20}, {20, 36}, {20, 27}, {4, 27}}));
  return QIcon(pixmap);
}

QLabel* NamedLabel(const char* name, const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(name);
  return label;
}

// `pointer`, or when it is null a new object made by `make` and kept in `owner`.
template <typename T>
T* Owned(T* pointer, std::unique_ptr<T>& owner, std::unique_ptr<T> (*make)()) {
  if (pointer) return pointer;
  owner = make();
  return owner.get();
}

}  // namespace

TfrmCreation::TfrmCreation(TCreationPageServices services, QWidget* parent)
    : QWidget(parent), services_(std::move(services)) {
  setObjectName("frmCreation");
  services_.Trash = Owned(services_.Trash, own_trash_, &platform::MakeUserTrash);
  services_.Dci = Owned(services_.Dci, own_dci_, &creation::MakeDciGeneratorFromEnvironment);
  services_.Ide = Owned(services_.Ide, own_ide_, &platform::MakeLinuxIde);
  ide_ = std::make_unique<TIdeOnDialogs>(*services_.Ide, services_.Dialogs);
  labAdvice_ = NamedLabel("labAdvice", kAdviceBefore, this);
  labAdvice_->setWordWrap(true);
  labAdvice_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  auto* advice = new QGroupBox(this);
  advice->setObjectName("panAdvice");
  // On a small window the longer advice scrolls rather than losing its last lines.
  auto* scroll = new QScrollArea(advice);
  scroll->setWidget(labAdvice_);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setMinimumHeight(labAdvice_->fontMetrics().lineSpacing() * 3);
  (new QVBoxLayout(advice))->addWidget(scroll);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(advice, 1);
  layout->addWidget(MakeActions());
  update_choice_ = new TUpdateChoice([this](const std::string& file) { return OpenDocument(file); },
                                     services_.Dialogs, this);
  update_choice_->Refresh(services_.Wizard);
  layout->addWidget(update_choice_);
  layout->addWidget(MakeStatus());
  layout->addWidget(MakeCounters());
}

TfrmCreation::~TfrmCreation() = default;

QToolButton* TfrmCreation::MakeButton(const char* name, const QIcon& icon, const char* hint,
                                      void (TfrmCreation::*handler)()) {
  auto* button = new QToolButton(this);
  button->setObjectName(name);
  button->setIcon(icon);
  button->setIconSize(QSize(40, 40));
  button->setAutoRaise(true);
  button->setToolTip(hint);
  connect(button, &QToolButton::clicked, this, handler);
  return button;
}

QWidget* TfrmCreation::MakeActions() {
  auto* panel = new QWidget(this);
  panel->setObjectName("panActions");
  QStyle* look = style();
  btnStart_ = MakeButton("btnStart", GreenArrow(), " TSaW it up! ", &TfrmCreation::btnStart_OnClick);
  labStart_ = NamedLabel("labStart", "Click to start the process.", panel);
  btnStop_ = MakeButton("btnStop", look->standardIcon(QStyle::SP_MediaPause), " Pauses the process ",
                        &TfrmCreation::btnStop_OnClick);
  // The pause button takes the start button's place exactly: nothing moves under the pointer.
  stkStartStop_ = new QStackedWidget(panel);
  stkStartStop_->setObjectName("stkStartStop");
  stkStartStop_->addWidget(btnStart_);
  stkStartStop_->addWidget(btnStop_);
  after_run_buttons_ = {
      MakeButton("btnOpen", look->standardIcon(QStyle::SP_DialogOpenButton), " Open Projects ",
                 &TfrmCreation::btnOpen_OnClick),
      MakeButton("btnReport", look->standardIcon(QStyle::SP_FileDialogDetailedView), " See Report ",
                 &TfrmCreation::btnReport_OnClick),
      MakeButton("btnSaveJob", look->standardIcon(QStyle::SP_DialogSaveButton), " Save Job ",
                 &TfrmCreation::btnSaveJob_OnClick)};
  after_run_labels_ = {NamedLabel("labOpen", "Open Projects", panel), NamedLabel("labReport", "See Report", panel),
                       NamedLabel("labSaveJob", "Save Job", panel)};
  auto* grid = new QGridLayout(panel);
  grid->addWidget(stkStartStop_, 0, 0, Qt::AlignCenter);
  grid->addWidget(labStart_, 1, 0, Qt::AlignCenter);
  grid->setColumnMinimumWidth(1, 40);
  for (int i = 0; i < 3; ++i) {
    grid->addWidget(after_run_buttons_[i], 0, i + 2, Qt::AlignCenter);
    grid->addWidget(after_run_labels_[i], 1, i + 2, Qt::AlignCenter);
  }
  grid->setColumnStretch(5, 1);
  // Hidden controls keep their room, so that the panel keeps its height as they come and go.
  for (QWidget* control : panel->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    QSizePolicy policy = control->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control->setSizePolicy(policy);
  }
  ShowAfterRunActions(false);
  return panel;
}

QWidget* TfrmCreation::MakeStatus() {
  auto* panel = new QWidget(this);
  labMsg_ = NamedLabel("labMsg", "", panel);
  QFont bold = labMsg_->font();
  bold.setBold(true);
  labMsg_->setFont(bold);
  labTask_ = NamedLabel("labTask", "idle.", panel);
  gauge_ = new QProgressBar(panel);
  gauge_->setObjectName("gauProgress");
  gauge_->setRange(0, 100);
  gauge_->setValue(0);
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(labMsg_, 0, 0);
  grid->addWidget(labTask_, 0, 1, Qt::AlignRight);
  grid->addWidget(gauge_, 1, 0, 1, 2);
  return panel;
}

QWidget* TfrmCreation::MakeCounters() {
  auto* panel = new QWidget(this);
  panel->setObjectName("panCounters");
  auto* row = new QHBoxLayout(panel);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(NamedLabel("labFoldersFiles", "Folders & Files:", panel), 0, Qt::AlignBottom);
  for (int group = 0; group < 4; ++group) {
    auto* box = new QGroupBox(kCounterGroups[group], panel);
    auto* cells = new QHBoxLayout(box);
    cells->addStretch(1);
    for (int index : {group, group + 4}) {
      counters_[index] = NamedLabel(kCounterNames[index], "0.000", box);
      cells->addWidget(counters_[index]);
      if (index == group) cells->addWidget(new QLabel("&", box));
    }
    cells->addStretch(1);
    row->addWidget(box, 1);
  }
  return panel;
}

creation::TRunServices TfrmCreation::RunServices() const {
  const char* home = std::getenv("HOME");
  return {kWizardProgram, services_.Trash, services_.Dci, services_.SetFixedVariables, home ? home : ""};
}

void TfrmCreation::btnStart_OnClick() {
  platform::RunHandler("TSaW_frmCreation.TfrmCreation.btnStart_OnClick", [this](int& step) {
    step = 10;
    if (running_) return;
    ShowRunning(true);
    labAdvice_->setText(kAdviceBefore);
    run_ = std::make_unique<creation::TCreationRun>(services_.Wizard, RunServices(),
                                                   static_cast<creation::TRunObserver&>(*this));
    const std::optional<creation::TRunOutcome> outcome =
        update_choice_->UpdateChosen() ? update_choice_->RunUpdate(services_.Wizard, *run_) : RunCreation();
    step = 900;
    ShowRunning(false);
    if (outcome) ShowOutcome(*outcome);
    update_choice_->Refresh(services_.Wizard);
  });
}

creation::TRunOutcome TfrmCreation::RunCreation() {
  generations::TCreationRecorder recorder(services_.Wizard);
  run_->TellWrittenFiles(&recorder);
  const creation::TRunOutcome outcome = run_->Start();
  run_->TellWrittenFiles(nullptr);
  if (outcome == creation::TRunOutcome::Finished) {
    const std::string error = recorder.Finish();
    if (!error.empty()) platform::DebugLine("The creation was not recorded: " + error);
  }
  return outcome;
}

bool TfrmCreation::OpenDocument(const std::string& file) {
  return services_.OpenDocument ? services_.OpenDocument(file)
                                : QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(file)));
}

void TfrmCreation::ShowRunning(bool running) {
  running_ = running;
  QWidget* frame = window();
  if (running) {
    frame->installEventFilter(this);
  } else {
    frame->removeEventFilter(this);
  }
  if (running) ShowAfterRunActions(false);
  ShowStartButton(!running);
  if (running) btnStop_->setFocus(Qt::OtherFocusReason);
  if (services_.ShowNavigation) services_.ShowNavigation(!running);
}

void TfrmCreation::ShowStartButton(bool start) {
  const bool had_focus = stkStartStop_->currentWidget()->hasFocus();
  stkStartStop_->setCurrentWidget(start ? btnStart_ : btnStop_);
  labStart_->setVisible(start);
  if (had_focus) stkStartStop_->currentWidget()->setFocus(Qt::OtherFocusReason);
}

void TfrmCreation::ShowAfterRunActions(bool visible) {
  for (int i = 0; i < 3; ++i) {
    after_run_buttons_[i]->setVisible(visible);
    after_run_labels_[i]->setVisible(visible);
  }
}

void TfrmCreation::ShowOutcome(creation::TRunOutcome outcome) {
  switch (outcome) {
    case creation::TRunOutcome::Finished:
      ShowAfterRunActions(true);
      labAdvice_->setText(kAdviceSuccess);
      return;
    case creation::TRunOutcome::Aborted:
      labAdvice_->setText(kAdviceAborted);
      return;
    case creation::TRunOutcome::Stopped:
    case creation::TRunOutcome::Failed: {
      // A run stopped before it wrote anything was refused (an unsafe output folder, say).
      const creation::TCounters& counters = run_->Counters();
      const bool refused = counters.FoldersProcessed == 0 && counters.FilesProcessed == 0;
      const std::string what = (refused ? "The process has been refused: " : "The process has stopped: ") +
                               run_->StopReason();
      labMsg_->setText(refused ? "Process refused!" : "Process stopped!");
      labTask_->setText("idle.");
      labAdvice_->setText(QString::fromStdString(
          what + (refused ? "\n\nNothing was written. Change what it names and start the process again."
                          : "\n\nThe report tells what was done before it stopped.")));
      services_.Dialogs.ShowMessage(platform::TMessageKind::Error,
                                    what + "\n\nSee the report " + creation::ReportFile(services_.Wizard).string() +
                                        " for what was done.");
      return;
    }
  }
}

bool TfrmCreation::eventFilter(QObject* watched, QEvent* event) {
  // The run is on the stack below the pump: the window must not go away under it.
  if (running_ && event->type() == QEvent::Close) {
    event->ignore();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void TfrmCreation::btnStop_OnClick() {
  platform::RunHandler("TSaW_frmCreation.TfrmCreation.btnStop_OnClick", [this](int& step) {
    step = 10;
    if (!running_ || !run_) return;
    labMsg_->setText("Process paused.");
    step = 20;
    if (services_.Dialogs.AskOkAbort(kPauseQuestion) != platform::TAnswer::Abort) {
      MessageChanged("Process started.");
      TaskChanged("doing...");
      return;
    }
    step = 30;
    run_->Abort();
    ShowStartButton(true);
    labAdvice_->setText(kAdviceAborted);
  });
}

void TfrmCreation::btnReport_OnClick() {
  platform::RunHandler("TSaW_frmCreation.TfrmCreation.btnReport_OnClick", [this](int& step) {
    step = 10;
    TaskChanged("loading report...");
    const std::string file = creation::ReportFile(services_.Wizard).string();
    step = 20;
    if (!OpenDocument(file)) ShowReportText();
    TaskChanged("idle.");
  });
}

void TfrmCreation::ShowReportText() {
  auto* dialog = new QDialog(this);
  dialog->setObjectName("frmReport");
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle("Report.txt");
  auto* memo = new QPlainTextEdit(dialog);
  memo->setObjectName("memReport");
  memo->setReadOnly(true);
  memo->setLineWrapMode(QPlainTextEdit::NoWrap);
  memo->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  QStringList lines;
  if (run_) {
    for (const std::string& line : run_->ReportLines().Read()) lines << QString::fromStdString(line);
  }
  memo->setPlainText(lines.join('\n'));
  (new QVBoxLayout(dialog))->addWidget(memo);
  dialog->resize(820, 600);
  dialog->show();
}

void TfrmCreation::btnSaveJob_OnClick() {
  platform::RunHandler("TSaW_frmCreation.TfrmCreation.btnSaveJob_OnClick", [this](int& step) {
    step = 10;
    const std::filesystem::path proposed = Proposed_Job_File(services_.Wizard);
    const platform::TFileDialogRequest request{
        " Select (or type in a name for) a Job file to save to:",
        "Job files (Job*.ini)|Job*.ini|All Configuration files (*.ini)|*.ini|All files (*.*)|*.*", "ini",
        proposed.filename().string(), proposed.parent_path().string()};
    const std::optional<std::string> file = services_.Dialogs.AskSaveFile(request);
    if (!file) return;
    step = 20;
    const std::string error = Save_Job(services_.Wizard, *file, TOverwrite::Confirmed);
    if (!error.empty()) services_.Dialogs.ShowMessage(platform::TMessageKind::Error, error);
  });
}

void TfrmCreation::btnOpen_OnClick() {
  platform::RunHandler("TSaW_frmCreation.TfrmCreation.btnOpen_OnClick", [this](int& step) {
    step = 10;
    creation::OpenProjects(services_.Wizard, run_ ? run_->ProjectSetFolder() : std::filesystem::path(), *ide_,
                           *this);
  });
}

void TfrmCreation::CountersChanged(const creation::TCounters& counters) {
  const std::array<int32_t, 8> values = {counters.FoldersScanned, counters.FoldersSkipped, counters.FoldersProcessed,
                                         counters.FoldersFailed,  counters.FilesScanned,   counters.FilesSkipped,
                                         counters.FilesProcessed, counters.FilesFailed};
  for (size_t i = 0; i < values.size(); ++i) counters_[i]->setText(QString::fromStdString(FormatCount(values[i])));
  for (QLabel* failed : {counters_[3], counters_[7]}) {
    QPalette palette = failed->palette();
    const bool alarm = failed->text() != "0";
    palette.setColor(QPalette::WindowText, alarm ? QColor(Qt::red) : this->palette().color(QPalette::WindowText));
    failed->setPalette(palette);
  }
}

void TfrmCreation::GaugeChanged(int32_t max, int32_t position) {
  // A range of 0..0 would turn the bar into a busy indicator.
  gauge_->setRange(0, max > 0 ? max : 1);
  gauge_->setValue(position);
}

void TfrmCreation::MessageChanged(const std::string& message) { labMsg_->setText(QString::fromStdString(message)); }

void TfrmCreation::TaskChanged(const std::string& task) { labTask_->setText(QString::fromStdString(task)); }

void TfrmCreation::ShowMessage(const std::string& text) {
  services_.Dialogs.ShowMessage(platform::TMessageKind::Warning, text);
}

void TfrmCreation::Pump() { QCoreApplication::processEvents(); }

}  // namespace tsaw
