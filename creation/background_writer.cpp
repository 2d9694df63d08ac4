#include "creation/background_writer.h"

#include <pthread.h>
#include <signal.h>

#include <chrono>
#include <utility>

namespace tsaw::creation {

TBackgroundWriter::~TBackgroundWriter() {
  if (!thread_.joinable()) return;
  GiveUpRest();
  closing_.store(true, std::memory_order_release);
  changed_.fetch_add(1, std::memory_order_release);
  changed_.notify_one();
  thread_.join();
}

void TBackgroundWriter::Start(TFreshFile file) {
  // A thread that cannot be made throws before anything is handed.
  if (!thread_.joinable()) StartThread();
  const uint32_t number = started_.load(std::memory_order_relaxed);
  slots_[number % kMostFiles].file.emplace(std::move(file));
  started_.store(number + 1, std::memory_order_release);
  changed_.fetch_add(1, std::memory_order_release);
  changed_.notify_one();
}

void TBackgroundWriter::Let(bool show) {
  const uint32_t number = let_.load(std::memory_order_relaxed);
  slots_[number % kMostFiles].show = show;
  let_.store(number + 1, std::memory_order_release);
  changed_.fetch_add(1, std::memory_order_release);
  changed_.notify_one();
}

bool TBackgroundWriter::Done() const { return done_.load(std::memory_order_acquire) > waited_; }

bool TBackgroundWriter::Wait(std::string& error) {
  // The writer may be behind because it did spare work: some may be done here meanwhile.
  while (!Done() && spare_work_ && spare_work_(true)) {
  }
  return TakeResult(error);
}

bool TBackgroundWriter::TakeResult(std::string& error) {
  const uint32_t number = waited_++;
  WaitPast(done_, number);
  TSlot& slot = slots_[number % kMostFiles];
  slot.file.reset();
  if (slot.thrown) std::rethrow_exception(std::exchange(slot.thrown, nullptr));
  error = std::move(slot.error);
  return slot.result;
}

void TBackgroundWriter::GiveUpRest() {
  while (let_.load(std::memory_order_relaxed) < started_.load(std::memory_order_relaxed)) Let(false);
  while (waited_ < started_.load(std::memory_order_relaxed)) {
    std::string ignored;
    try {
      // No spare work here: the run is stopping, and that work would be for nothing.
      TakeResult(ignored);
    } catch (...) {
      // A file given up has no outcome to report.
    }
  }
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

// Shows the files in order as they are let, and meanwhile fills the files handed since; with
// neither to do, does spare work while there is some.
void TBackgroundWriter::Serve() {
  uint32_t filled = 0;
  uint32_t shown = 0;
  for (;;) {
    const uint32_t seen = changed_.load(std::memory_order_acquire);
    if (closing_.load(std::memory_order_acquire)) return;
    if (shown < filled && shown < let_.load(std::memory_order_acquire)) {
      TSlot& slot = slots_[shown % kMostFiles];
      slot.error.clear();
      try {
        slot.result = slot.show && slot.file->Show(&slot.error);
      } catch (...) {
        slot.thrown = std::current_exception();
      }
      done_.store(++shown, std::memory_order_release);
      done_.notify_one();
    } else if (filled < started_.load(std::memory_order_acquire)) {
      TSlot& slot = slots_[filled % kMostFiles];
      try {
        slot.file->Fill();
      } catch (...) {
        slot.thrown = std::current_exception();
      }
      ++filled;
    } else if (!spare_work_ || !spare_work_(false)) {
      WaitPast(changed_, seen);
    }
  }
}

void TBackgroundWriter::WaitPast(const std::atomic<uint32_t>& counter, uint32_t count) {
  // The other side is usually done within tens of microseconds: a short spin spares both
  // threads the cost of sleeping and being woken for every file. The yield lets another
  // process's thread have the core meanwhile.
  using Clock = std::chrono::steady_clock;
  const Clock::time_point give_up = Clock::now() + std::chrono::microseconds(100);
  uint32_t now = counter.load(std::memory_order_acquire);
  for (int spins = 0; now <= count; ++spins) {
    if (spins % 64 == 63 && Clock::now() > give_up) {
      counter.wait(now, std::memory_order_acquire);
    } else {
      std::this_thread::yield();
    }
    now = counter.load(std::memory_order_acquire);
  }
}

}  // namespace tsaw::creation
