#pragma once
// The Welcome page: a greeting and three ways to start (a template, a Job, a configuration).

#include <QWidget>

#include <functional>

#include "model/wizard.h"
#include "platform/dialogs.h"

namespace tsaw {

// What the page asks of the wizard frame.
struct TWelcomeActions {
  std::function<void()> GoToTemplates;  // the frame's "change template" action
  std::function<void()> JobLoaded;      // show the active-Job mark and go to the templates page
};

// The dialogs the two file buttons show.
platform::TFileDialogRequest JobOpenRequest(const TWizard& wizard);
platform::TFileDialogRequest ConfigOpenRequest(const TWizard& wizard);

// The page (`TfrmWelcome`). It keeps no state: the Job button loads the chosen Job into `wizard`,
// the configuration button shows its dialog and applies nothing. A Job that cannot be loaded is
// reported through `dialogs`, and the wizard still moves on with no Job active.
class TfrmWelcome : public QWidget {
  Q_OBJECT
 public:
  TfrmWelcome(TWizard& wizard, platform::Dialogs& dialogs, TWelcomeActions actions, QWidget* parent);

  void btnStartFromTpl_OnClick();
  void btnStartFromJob_OnClick();
  void btnLoadConfig_OnClick();

 private:
  QWidget* MakeContent();

  TWizard& wizard_;
  platform::Dialogs& dialogs_;
  TWelcomeActions actions_;
};

}  // namespace tsaw
