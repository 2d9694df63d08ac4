#pragma once
// A second thread that does one write at a time for the creation run, so that the run's own
// thread can read and expand the next file while the kernel makes the last one.

#include <atomic>
#include <cstdint>
#include <exception>
#include <functional>
#include <string>
#include <thread>

namespace tsaw::creation {

class TBackgroundWriter {
 public:
  // One write: true when done; otherwise false with the reason in `error`.
  using TJob = std::function<bool(std::string& error)>;

  TBackgroundWriter() = default;
  // Waits for the job in flight, if any, then ends the thread.
  ~TBackgroundWriter();
  TBackgroundWriter(const TBackgroundWriter&) = delete;
  TBackgroundWriter& operator=(const TBackgroundWriter&) = delete;

  // Hands `job` to the thread, which starts with the first job. One job at a time: the one
  // before must have been waited for.
  void Start(TJob job);
  // Waits for the job in flight and gives its result (true when none is); an exception the job
  // threw is thrown here.
  bool Wait(std::string& error);

 private:
  enum TPhase : uint32_t { kIdle, kHanded, kDone, kClosing };
  void StartThread();
  void Serve();
  // Waits until the phase is no longer `phase`, and returns the new one.
  TPhase WaitWhile(TPhase phase);

  std::atomic<uint32_t> phase_{kIdle};
  bool in_flight_ = false;  // the run's side: a job handed and not waited for
  // Written by one side before it moves the phase on, read by the other after it sees that.
  TJob job_;
  bool result_ = false;
  std::string error_;
  std::exception_ptr thrown_;
  std::thread thread_;
};

}  // namespace tsaw::creation
