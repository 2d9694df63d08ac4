#pragma once
// The update's part of "Report.txt": one line per file with its fate, then its statistics block
// in the style of the run's own.

#include <string>
#include <vector>

#include "update/plan.h"

namespace tsaw::update {

// "  <fate>    '<path>'" lines under an "UPDATE OF THE PROJECT SET" title; `dry_run` says that
// nothing was changed.
std::vector<std::string> UpdateSection(const TUpdatePlan& plan, bool dry_run);

// The "UPDATE STATISTICS" block: one line per fate, "1 file", "0 files".
std::vector<std::string> UpdateStatistics(const TUpdatePlan& plan);

// One line per conflict: the file, and where the new generation's content went when it went
// beside the file.
std::vector<std::string> ConflictLines(const TUpdatePlan& plan);

}  // namespace tsaw::update
