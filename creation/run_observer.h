#pragma once
// What a creation run tells its page (or the command line) while it works: report lines, the
// eight counters, the gauge and the status texts, and the points where the interface may pump
// its messages. The run never prints.

#include <cstdint>
#include <filesystem>
#include <string>

namespace tsaw::creation {

// The run's eight counters, in the order the page shows them.
struct TCounters {
  int32_t FoldersScanned = 0;
  int32_t FoldersSkipped = 0;
  int32_t FoldersProcessed = 0;
  int32_t FoldersFailed = 0;
  int32_t FilesScanned = 0;
  int32_t FilesSkipped = 0;
  int32_t FilesProcessed = 0;
  int32_t FilesFailed = 0;
  bool operator==(const TCounters&) const = default;
};

// Every method has an empty default, so an observer overrides only what it shows.
class TRunObserver {
 public:
  virtual ~TRunObserver() = default;
  // One line appended to the report.
  virtual void ReportLine(const std::string& line) { (void)line; }
  virtual void CountersChanged(const TCounters& counters) { (void)counters; }
  // The gauge runs from 0 to `max`.
  virtual void GaugeChanged(int32_t max, int32_t position) { (void)max, (void)position; }
  // The message label ("Process started.").
  virtual void MessageChanged(const std::string& message) { (void)message; }
  // The task label ("doing...").
  virtual void TaskChanged(const std::string& task) { (void)task; }
  // The Project Set folder, once it is accepted and before anything is touched.
  virtual void ProjectSetFolderSettled(const std::filesystem::path& folder) { (void)folder; }
  // A modal message for the user (the circular-reference error).
  virtual void ShowMessage(const std::string& text) { (void)text; }
  // A pump point: the interface handles pending events here; a stop button may call
  // TCreationRun::Abort from inside it.
  virtual void Pump() {}
};

}  // namespace tsaw::creation
