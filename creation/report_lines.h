#pragma once
// The lines of a run's report as the run makes them, kept on disk rather than in memory, and
// saving them as "Report.txt".

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "model/scratch_file.h"

namespace tsaw::creation {

// The report lines of one run, in order. A run writes several lines per template file, so they go
// to a scratch file in the report's folder (saving then copies within one file system); only the
// last few kilobytes wait in memory. Where no scratch file can be made there (a read-only wizard
// folder) or written (a full disk), the lines from there on are kept in memory.
class TReportLines {
 public:
  // Forgets every line; the next ones go to a new scratch file in `folder` when one can be made.
  void Restart(const std::filesystem::path& folder);
  void Add(const std::string& line);
  // Every line so far, read back. A line that itself holds CR LF comes back as two.
  std::vector<std::string> Read() const;
  // Replaces `file` with the lines followed by `more`, CR LF after each, through a temporary file
  // beside it. A failure is only logged; returns whether the file was written.
  bool SaveAs(const std::filesystem::path& file, const std::vector<std::string>& more = {}) const;

 private:
  std::optional<TScratchFile> scratch_;
  bool scratch_failed_ = false;  // a write failed: every later line stays in `waiting_`
  std::string waiting_;          // the lines not in the scratch file, CR LF after each
};

}  // namespace tsaw::creation
