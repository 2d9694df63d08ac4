#pragma once
// The window module's one entry point. The window (Qt, the wizard's plug-in module) lives in a
// module of its own that `tsaw gui` loads, so that no other command pays for starting Qt's
// libraries. The interface is plain C: the module keeps its own copies of our libraries.

extern "C" {

struct TsawGuiRequest {
  const char* root;         // the framework root the wizard works on
  int debug_log;            // nonzero when the program writes the debug log
  const char* screenshots;  // null to open the window; else the folder for a PNG of each page
};

// Opens the window and runs until its last window closes, or writes the screenshots; returns the
// command's exit status after any message on standard error.
int tsaw_run_gui(const TsawGuiRequest* request) noexcept;

}  // extern "C"

namespace tsaw::app {

inline constexpr const char* kGuiModuleFile = "tsaw-gui.so";
inline constexpr const char* kRunGuiSymbol = "tsaw_run_gui";

}  // namespace tsaw::app
