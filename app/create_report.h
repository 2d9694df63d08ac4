#pragma once
// What `tsaw create` tells a script with --json: one document with the outcome, the Project Set
// folder, the statistics and what was moved aside or would be written.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "creation/run_observer.h"

namespace tsaw::app {

struct CreateReport {
  std::string Outcome = "refused";  // "finished", "refused", "stopped", "aborted" or "failed"
  std::string Message;              // why, when the outcome is not "finished"
  bool DryRun = false;
  std::filesystem::path ProjectSetFolder;  // empty when the run never settled it
  std::filesystem::path ReportFile;        // empty when no report was written
  std::optional<creation::TCounters> Statistics;  // set once a run started
  std::vector<std::filesystem::path> MovedToTrash;  // or, in a dry run, would be moved
  std::vector<std::filesystem::path> PlannedFiles;  // dry run only
  std::filesystem::path JobFile;  // the Job saved (dry run: that would be saved); empty without --save-job
};

// The report as one JSON document (see the README's "JSON output"), ending in a line break.
std::string CreateReportJson(const CreateReport& report);

}  // namespace tsaw::app
