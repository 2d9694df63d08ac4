#pragma once
// What a creation run tells, as it writes, about the files it puts into the Project Set, so that
// its output can be recorded without reading the folder again. Only files the run has written
// completely are told; a file written twice is told twice, the later telling being what the
// folder holds. A dry run tells nothing.

#include <filesystem>
#include <string>

namespace tsaw::creation {

class TWrittenFiles {
 public:
  virtual ~TWrittenFiles() = default;
  // The run is about to make `folder` anew: what is there goes to the trash next (nothing is
  // touched yet). Called once, before Started. A text stops the run with that reason.
  virtual std::string MakingAnew(const std::filesystem::path& folder) {
    (void)folder;
    return {};
  }
  // The run has made the new, empty folder it writes into (the Project Set folder, or the one
  // TCreationRun::WriteInto names); every file told afterwards lies below it.
  virtual void Started(const std::filesystem::path& folder) = 0;
  // `file` now holds `bytes`, which the run no longer needs.
  virtual void Written(const std::filesystem::path& file, std::string bytes) = 0;
  // `file` now holds a copy the kernel made, whose bytes the run never had in memory.
  virtual void Copied(const std::filesystem::path& file) = 0;
  // Does a piece of the work the listener has queued from the files told, so that it needs no
  // thread of its own: the run's writer thread calls it whenever it has no file to write, even
  // while the run's thread tells the listener of the next file. The run's thread calls it with
  // `run_waits` while it waits for the writer: that time is better spent on the next files, so
  // a piece should then be done only when much work waits. True when a piece was done; false
  // when none was. Must not throw, and must be back within a file's time.
  virtual bool WorkAWhile(bool run_waits) {
    (void)run_waits;
    return false;
  }
};

}  // namespace tsaw::creation
