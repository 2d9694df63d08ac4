#pragma once
// The signals that ask a run to stop: Ctrl-C (SIGINT), SIGTERM and SIGHUP. While a
// ScopedRunSignals lives they are recorded instead of ending the process, so that the run stops
// at its next pump point, writes its report and leaves no file half-written.

#include <csignal>

namespace tsaw::app {

class ScopedRunSignals {
 public:
  ScopedRunSignals();
  ~ScopedRunSignals();
  ScopedRunSignals(const ScopedRunSignals&) = delete;
  ScopedRunSignals& operator=(const ScopedRunSignals&) = delete;

  // The number of the first signal caught; 0 when none was.
  static int Caught();
  // The exit status a shell gives a process ended by the caught signal (130 for Ctrl-C, 143 for
  // SIGTERM), or `otherwise` when none was caught.
  static int ExitStatus(int otherwise);

 private:
  struct sigaction previous_[3];
};

}  // namespace tsaw::app
