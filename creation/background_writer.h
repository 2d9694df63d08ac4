#pragma once
// A second thread that writes the creation run's files, so that the run's own thread can read and
// expand the next files meanwhile. A file is handed over as soon as its bytes are ready, and the
// thread fills it at once, unseen (a file with no name); it is named, and so seen, only once the
// run lets it, which the run does after its pump point for the file before. When it has no file
// to write, the thread may do someone else's work meanwhile, a piece at a time.

#include <atomic>
#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "model/file_bytes.h"

namespace tsaw::creation {

class TBackgroundWriter {
 public:
  // How many files may be handed and not yet waited for.
  static constexpr uint32_t kMostFiles = 8;

  // Does a piece of work that waits elsewhere; true when there was one. `run_waits` is set when
  // the run's thread calls it while it waits for a file, rather than the writer's.
  using TSpareWork = std::function<bool(bool run_waits)>;

  // `spare_work`, when set, is done by the thread whenever it has no file to write, and offered
  // to the run's thread while it waits for a file. It must not throw, and must give the thread
  // back soon: a file handed meanwhile waits for it.
  explicit TBackgroundWriter(TSpareWork spare_work = nullptr) : spare_work_(std::move(spare_work)) {}
  // Gives up the files not yet let, waits for the thread to be done with the others, ends it.
  ~TBackgroundWriter();
  TBackgroundWriter(const TBackgroundWriter&) = delete;
  TBackgroundWriter& operator=(const TBackgroundWriter&) = delete;

  // Hands `file` over; fewer than kMostFiles must be handed and not waited for. The thread
  // starts with the first file.
  void Start(TFreshFile file);
  // Lets the oldest file not yet let be shown (true), or gives it up: it is never seen.
  void Let(bool show);
  // True when the oldest file not yet waited for is done: Wait would not wait.
  bool Done() const;
  // Waits for the oldest file not yet waited for, offering to do spare work meanwhile, and gives
  // its result (false for one given up), with TFreshFile::Show's error; an exception the thread
  // met there is thrown here.
  bool Wait(std::string& error);
  // Gives up every file not yet let, and waits for the thread to be done with every file handed;
  // their results are dropped.
  void GiveUpRest();

 private:
  // Waits for the oldest file not yet waited for, and gives its result as Wait does.
  bool TakeResult(std::string& error);
  void StartThread();
  void Serve();
  // Spins a little, then sleeps, until `counter` passes `count`.
  static void WaitPast(const std::atomic<uint32_t>& counter, uint32_t count);

  // Files are numbered from 0 on; each counter is how many have been handed, let, shown (or given
  // up), and waited for. `changed_` moves on with every hand and let, for the thread to sleep on.
  std::atomic<uint32_t> started_{0};
  std::atomic<uint32_t> let_{0};
  std::atomic<uint32_t> done_{0};
  std::atomic<uint32_t> changed_{0};
  std::atomic<bool> closing_{false};
  uint32_t waited_ = 0;  // the run's side only
  // One slot per file in flight: a side writes it before it moves its counter on, the other reads
  // it after it sees that.
  struct TSlot {
    std::optional<TFreshFile> file;
    bool show = false;
    bool result = false;
    std::string error;
    std::exception_ptr thrown;
  };
  TSlot slots_[kMostFiles];
  const TSpareWork spare_work_;
  std::thread thread_;
};

}  // namespace tsaw::creation
