#pragma once
// The wizard's plug-in object as the host framework sees it: its settings, its initialisation and
// finalisation, and its one command, "OpenWindow", which opens a wizard frame.

#include <QPointer>

#include <memory>
#include <vector>

#include "model/wizard.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/machine_folders.h"
#include "platform/plugin_host.h"

namespace tsaw {

class TfrmMain;

inline constexpr const char* kOpenWindowCommand = "OpenWindow";
inline constexpr const char* kParentWindowParam = "pamParentWindow";  // a QWidget*
inline constexpr const char* kMultiInstanceMessage = "Plugin has mistakenly been compiled as multi-instance.";

// The plug-in object (`TtsaWizard`). It owns the wizard state that its frames share. Its handlers
// start from smrUnexpectedError, so an exception part-way leaves that code:
// - OnInitialize refuses an object that is not single-instance with kMultiInstanceMessage;
//   otherwise it prepares the machine facts from the host's framework root.
// - OpenWindow makes a new frame as a window of the given parent and shows it modelessly; the
//   new frame becomes the one referenced (an earlier one stays open). Before a successful
//   initialisation it fails with a message.
// - OnFinalize closes and frees the referenced frame, if one is open.
// Destroying the object frees every frame it opened that is still open, so that no frame outlives
// the module's code.
class TtsaWizard final : public platform::TqrxTsa {
 public:
  // `dialogs` defaults to the Qt dialogs; `mode` is the object's instance mode.
  explicit TtsaWizard(std::unique_ptr<platform::Dialogs> dialogs = nullptr,
                      platform::TInstanceMode mode = platform::TInstanceMode::SingleInstance);
  ~TtsaWizard() override;

  // The frame referenced last; nullptr when none is open.
  TfrmMain* Frame() const;
  TWizard& Wizard() { return wizard_; }

 private:
  void OnInitialize(platform::TMethodResult& result);
  void OnFinalize(platform::TMethodResult& result);
  void OnCommand_OpenWindow(const platform::TCommandParams& params, platform::TMethodResult& result);

  TWizard wizard_;
  std::unique_ptr<platform::Dialogs> dialogs_;
  std::unique_ptr<platform::Clock> clock_;
  std::unique_ptr<platform::MachineFolders> machine_;
  QPointer<TfrmMain> frame_;
  std::vector<QPointer<TfrmMain>> opened_;
};

}  // namespace tsaw
