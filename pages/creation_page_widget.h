#pragma once
// The "Creation Process" page (`TfrmCreation`): runs the creation, shows its status texts, gauge
// and counters, pauses or aborts it, and after a finished run opens the report, saves a Job or
// hands the Project Set to the IDE.

#include <QWidget>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "creation/creation_run.h"
#include "creation/dci.h"
#include "creation/run_observer.h"
#include "model/wizard.h"
#include "platform/dialogs.h"
#include "platform/ide.h"
#include "platform/trash.h"

class QLabel;
namespace tsaw { class TUpdateChoice; }
class QProgressBar;
class QStackedWidget;
class QToolButton;

namespace tsaw {

// What the page needs besides the wizard state; all of it outlives the page. A null trash, DCI
// generator or IDE means the user's trash, the generator the environment chooses and the Linux
// IDE; the IDE's messages are shown through `Dialogs` in every case.
struct TCreationPageServices {
  TWizard& Wizard;
  platform::Dialogs& Dialogs;
  // Sets the fixed variables again as a run starts (its date and time); empty: kept as they are.
  std::function<void(TWizard&)> SetFixedVariables;
  // Hides (false) the frame's navigation while a run goes on and shows it again (true).
  std::function<void(bool)> ShowNavigation;
  // Opens a file in the desktop's viewer and tells whether that worked; empty: QDesktopServices.
  std::function<bool(const std::string& file)> OpenDocument = {};
  platform::Trash* Trash = nullptr;
  creation::TDciGenerator* Dci = nullptr;
  platform::Ide* Ide = nullptr;
};

// The page. The run goes on this thread: the page pumps Qt's events at the run's pump points, so
// the stop button's question opens nested inside the run and holds it. While a run goes on, the
// start button, the frame's navigation and closing the window are unavailable. No handler lets an
// exception out; what goes wrong is shown through the dialogs.
class TfrmCreation : public QWidget, private creation::TRunObserver {
  Q_OBJECT
 public:
  TfrmCreation(TCreationPageServices services, QWidget* parent);
  ~TfrmCreation() override;

  // Runs the whole creation; ignored while a run goes on.
  void btnStart_OnClick();
  // Pauses the run with the question " Process paused. Resume?"; Abort stops it.
  void btnStop_OnClick();
  // Opens "Report.txt" in the desktop's viewer; when that fails, shows the report in a window.
  void btnReport_OnClick();
  // Asks for a Job file (the dialog confirms a replacement) and saves the answers to it.
  void btnSaveJob_OnClick();
  // Hands the Project Set's project group to the IDE.
  void btnOpen_OnClick();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void CountersChanged(const creation::TCounters& counters) override;
  void GaugeChanged(int32_t max, int32_t position) override;
  void MessageChanged(const std::string& message) override;
  void TaskChanged(const std::string& task) override;
  void ShowMessage(const std::string& text) override;
  void Pump() override;

  QWidget* MakeActions();
  QWidget* MakeStatus();
  QWidget* MakeCounters();
  QToolButton* MakeButton(const char* name, const QIcon& icon, const char* hint, void (TfrmCreation::*handler)());
  creation::TRunServices RunServices() const;
  // Running: only the stop button and no navigation; idle: the start button back.
  void ShowRunning(bool running);
  void ShowOutcome(creation::TRunOutcome outcome);
  void ShowAfterRunActions(bool visible);
  // The start button with its label (true) or, in the same place, the pause button (false).
  void ShowStartButton(bool start);
  void ShowReportText();
  bool OpenDocument(const std::string& file);
  // Runs the creation (Replace) and records what it wrote.
  creation::TRunOutcome RunCreation();

  TCreationPageServices services_;
  std::unique_ptr<platform::Trash> own_trash_;
  std::unique_ptr<creation::TDciGenerator> own_dci_;
  std::unique_ptr<platform::Ide> own_ide_;
  std::unique_ptr<platform::Ide> ide_;  // the IDE with its messages on the dialogs
  std::unique_ptr<creation::TCreationRun> run_;
  bool running_ = false;
  TUpdateChoice* update_choice_ = nullptr;  // Replace or Update, and an update's conflicts

  QLabel* labAdvice_ = nullptr;
  QToolButton* btnStart_ = nullptr;
  QLabel* labStart_ = nullptr;
  QToolButton* btnStop_ = nullptr;
  QStackedWidget* stkStartStop_ = nullptr;
  std::array<QToolButton*, 3> after_run_buttons_{};  // open, report, save job
  std::array<QLabel*, 3> after_run_labels_{};
  QLabel* labMsg_ = nullptr;
  QLabel* labTask_ = nullptr;
  QProgressBar* gauge_ = nullptr;
  std::array<QLabel*, 8> counters_{};  // in the order of creation::TCounters
};

}  // namespace tsaw
