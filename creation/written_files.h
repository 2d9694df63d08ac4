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
  // How many threads of its own the listener keeps busy while the run goes on: they need cores
  // as much as the run's writer does.
  virtual unsigned BusyThreads() const { return 0; }
};

}  // namespace tsaw::creation
