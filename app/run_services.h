#pragma once
// What a creation run started from the command line needs besides the wizard state.

#include "app/root.h"
#include "creation/creation_run.h"
#include "creation/dci.h"
#include "platform/trash.h"

namespace tsaw::app {

// The services of a run in `session`: the fixed variables set again from its clock and machine,
// the user's home guarded, and the given trash and DCI generator (which must outlive the run).
creation::TRunServices CreationServices(WizardSession& session, platform::Trash& trash,
                                        creation::TDciGenerator& dci);

}  // namespace tsaw::app
