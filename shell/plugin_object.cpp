#include "shell/plugin_object.h"

#include <QWidget>

#include "jobs/session.h"
#include "platform/debug_log.h"
#include "shell/main_frame.h"
#include "shell/qt_dialogs.h"
#include "shell/window_place.h"

namespace tsaw {
namespace {

constexpr const char* kDescription =
    "Interactively generates source code for new plugins and (optionally) for its respective host application.";

platform::TPluginSettings WizardSettings(platform::TInstanceMode mode) {
  return {kDescription, kWizardProgram.DeepName, kWizardProgram.Version, mode};
}

}  // namespace

TtsaWizard::TtsaWizard(std::unique_ptr<platform::Dialogs> dialogs, platform::TInstanceMode mode)
    : TqrxTsa(WizardSettings(mode)),
      dialogs_(dialogs ? std::move(dialogs) : std::make_unique<TQtDialogs>()) {
  SetHandlers([this](TqrxTsa&, platform::TMethodResult& result) { OnInitialize(result); },
              [this](TqrxTsa&, platform::TMethodResult& result) { OnFinalize(result); });
  AddCommand(kOpenWindowCommand, {kParentWindowParam},
             [this](TqrxTsa&, const platform::TCommandParams& params, platform::TMethodResult& result) {
               OnCommand_OpenWindow(params, result);
             });
}

TtsaWizard::~TtsaWizard() {
  for (const QPointer<TfrmMain>& frame : opened_) delete frame.data();
}

TfrmMain* TtsaWizard::Frame() const { return frame_; }

void TtsaWizard::OnInitialize(platform::TMethodResult& result) {
  result.Code = platform::smrUnexpectedError;
  // The module keeps its own copy of the debug log; it follows the host's choice.
  platform::InitDebugLogFromEnvironment(Host().DebugLog);
  platform::ScopedRoutine routine("TSaW_Pin.TtsaWizard.OnInitialize");
  if (Settings().InstanceMode != platform::TInstanceMode::SingleInstance) {
    result.Message = kMultiInstanceMessage;
    return;
  }
  clock_ = std::make_unique<platform::SystemClock>(platform::SystemClock::FromEnvironment());
  machine_ = std::make_unique<platform::WineMachineFolders>(platform::MachineEnvironment::FromProcess(),
                                                            ExpandFrameworkNames("%RootPath%"));
  result.Code = platform::smrOk;
}

void TtsaWizard::OnFinalize(platform::TMethodResult& result) {
  result.Code = platform::smrUnexpectedError;
  platform::ScopedRoutine routine("TSaW_Pin.TtsaWizard.OnFinalize");
  if (frame_) {
    frame_->close();
    delete frame_.data();
  }
  frame_ = nullptr;
  result.Code = platform::smrOk;
}

void TtsaWizard::OnCommand_OpenWindow(const platform::TCommandParams& params, platform::TMethodResult& result) {
  result.Code = platform::smrUnexpectedError;
  platform::ScopedRoutine routine("TSaW_Pin.TtsaWizard.OnCommand_OpenWindow");
  if (!machine_) {
    result.Message = "The wizard was not initialised.";
    return;
  }
  auto* parent = static_cast<QWidget*>(params.front().Value);
  auto* frame = new TfrmMain({wizard_, *clock_, *machine_, *dialogs_, WindowSettingsFile()}, parent);
  frame->setAttribute(Qt::WA_DeleteOnClose);
  frame_ = frame;
  std::erase_if(opened_, [](const QPointer<TfrmMain>& closed) { return closed.isNull(); });
  opened_.emplace_back(frame);
  frame->show();
  result.Code = platform::smrOk;
}

}  // namespace tsaw
