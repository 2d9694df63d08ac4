#pragma once
// Test helper for pages that pump Qt's events while they work (the creation run): runs an action
// from inside the pump, at the first pass over the event queue at which a condition holds, as a
// user's click would arrive there.

#include <QCoreApplication>
#include <QMetaObject>

#include <functional>
#include <memory>

namespace tsaw::testing {

class PumpProbe {
 public:
  // Arms the probe: `action` runs once, at the first event pass at which `when` holds. Each pass
  // that finds `when` false looks again at the next one; Qt defers events posted during a pass to
  // the next pass, so one pump sees one look.
  PumpProbe(std::function<bool()> when, std::function<void()> action)
      : state_(std::make_shared<State>(State{std::move(when), std::move(action)})) {
    Post(state_);
  }
  // Disarms it: a probe that never fired stops looking.
  ~PumpProbe() { state_->armed = false; }
  PumpProbe(const PumpProbe&) = delete;
  PumpProbe& operator=(const PumpProbe&) = delete;

  bool Fired() const { return state_->fired; }

 private:
  struct State {
    std::function<bool()> when;
    std::function<void()> action;
    bool armed = true;
    bool fired = false;
  };

  static void Post(std::shared_ptr<State> state) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [state] {
          if (!state->armed) return;
          if (!state->when()) return Post(state);
          state->armed = false;
          state->fired = true;
          state->action();
        },
        Qt::QueuedConnection);
  }

  std::shared_ptr<State> state_;
};

}  // namespace tsaw::testing
