#include "app/run_services.h"

#include <cstdlib>

#include "jobs/session.h"
#include "model/startup.h"

namespace tsaw::app {

creation::TRunServices CreationServices(WizardSession& session, platform::Trash& trash,
                                        creation::TDciGenerator& dci) {
  const char* home = std::getenv("HOME");
  return {kWizardProgram, &trash, &dci,
          [&session](TWizard& w) { Set_Fixed_Variables(w, kWizardProgram, *session.Clock, *session.Machine); },
          home ? home : ""};
}

}  // namespace tsaw::app
