#pragma once
// The creation report: its fixed header, its statistics block, and where it is saved.

#include <filesystem>
#include <string>
#include <vector>

#include "creation/run_observer.h"
#include "model/wizard.h"

namespace tsaw::creation {

// The header lines, with the wizard's name, version, date and framework version expanded.
std::vector<std::string> ReportHeader(const TWizard& wizard);

// The statistics block: rules, title and the four count lines ("1 file", "0 files").
std::vector<std::string> StatisticsBlock(const TCounters& counters);

// The report file of a wizard state: its wizard folder followed by "Report.txt".
std::filesystem::path ReportFile(const TWizard& wizard);

}  // namespace tsaw::creation
