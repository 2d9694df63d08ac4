#pragma once
// The walk over the template tree, one piece of code for both passes: with `count_only` set it
// counts, otherwise it creates folders and processes files.

#include <cstdint>

#include "creation/run_context.h"

namespace tsaw::creation {

// Each returns true to let the run go on, false to stop it (aborted, or a folder that could not be
// created). The root and language walks do not enter the catalogue's language and platform
// folders: those are walked once each, by Process_Language and Process_Target.
bool Process_Root(TRunContext& run);
bool Process_Language(TRunContext& run, uint16_t language);
// Inside a target tree a "Host" folder and the folders below a "Plugins" folder make their
// plug-in current (the number ending the folder's name; "Host" is plug-in 1).
bool Process_Target(TRunContext& run, uint16_t target);

// Makes plug-in `number` current: the wizard's index, the variable Plugin.Index and the run's
// plug-in index directive (and the preprocessor's define of it).
void MakePluginCurrent(TRunContext& run, int number);

}  // namespace tsaw::creation
