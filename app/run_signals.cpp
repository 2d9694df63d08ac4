#include "app/run_signals.h"

namespace tsaw::app {
namespace {

constexpr int kStopSignals[3] = {SIGINT, SIGTERM, SIGHUP};
volatile std::sig_atomic_t g_caught = 0;

void OnStopSignal(int signal_number) {
  if (g_caught == 0) g_caught = signal_number;
}

}  // namespace

ScopedRunSignals::ScopedRunSignals() {
  g_caught = 0;
  struct sigaction action {};
  action.sa_handler = OnStopSignal;
  sigemptyset(&action.sa_mask);
  for (int i = 0; i < 3; ++i) sigaction(kStopSignals[i], &action, &previous_[i]);
}

ScopedRunSignals::~ScopedRunSignals() {
  for (int i = 0; i < 3; ++i) sigaction(kStopSignals[i], &previous_[i], nullptr);
}

int ScopedRunSignals::Caught() { return g_caught; }

int ScopedRunSignals::ExitStatus(int otherwise) { return g_caught != 0 ? 128 + g_caught : otherwise; }

}  // namespace tsaw::app
