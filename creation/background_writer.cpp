#include "creation/background_writer.h"

#include <pthread.h>
#include <signal.h>

#include <chrono>
#include <utility>

namespace tsaw::creation {

TBackgroundWriter::~TBackgroundWriter() {
  if (!thread_.joinable()) return;
  if (in_flight_) WaitWhile(kHanded);
  phase_.store(kClosing, std::memory_order_release);
  phase_.notify_one();
  thread_.join();
}

void TBackgroundWriter::Start(TJob job) {
  // A thread that cannot be made throws before anything is handed.
  if (!thread_.joinable()) StartThread();
  job_ = std::move(job);
  in_flight_ = true;
  phase_.store(kHanded, std::memory_order_release);
  phase_.notify_one();
}

bool TBackgroundWriter::Wait(std::string& error) {
  if (!in_flight_) return true;
  WaitWhile(kHanded);
  in_flight_ = false;
  phase_.store(kIdle, std::memory_order_relaxed);
  if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
  error = std::move(error_);
  return result_;
}

void TBackgroundWriter::StartThread() {
  // The thread is born with every signal blocked, so that a stop signal still reaches the run's
  // thread, which looks for it at its pump points.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  try {
    thread_ = std::thread([this] { Serve(); });
  } catch (...) {
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    throw;
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void TBackgroundWriter::Serve() {
  for (;;) {
    TPhase phase = static_cast<TPhase>(phase_.load(std::memory_order_acquire));
    while (phase == kIdle || phase == kDone) phase = WaitWhile(phase);
    if (phase == kClosing) return;
    TJob job = std::exchange(job_, nullptr);
    error_.clear();
    try {
      result_ = job(error_);
    } catch (...) {
      thrown_ = std::current_exception();
    }
    phase_.store(kDone, std::memory_order_release);
    phase_.notify_one();
  }
}

TBackgroundWriter::TPhase TBackgroundWriter::WaitWhile(TPhase phase) {
  // The other side is usually done within tens of microseconds: a short spin spares both
  // threads the cost of sleeping and being woken for every file.
  using Clock = std::chrono::steady_clock;
  const Clock::time_point give_up = Clock::now() + std::chrono::microseconds(100);
  for (int spins = 0;; ++spins) {
    const uint32_t now = phase_.load(std::memory_order_acquire);
    if (now != phase) return static_cast<TPhase>(now);
    if (spins % 64 == 63 && Clock::now() > give_up) break;
    std::this_thread::yield();
  }
  for (;;) {
    phase_.wait(phase, std::memory_order_acquire);
    const uint32_t now = phase_.load(std::memory_order_acquire);
    if (now != phase) return static_cast<TPhase>(now);
  }
}

}  // namespace tsaw::creation
