#include "app/create_report.h"

#include <nlohmann/json.hpp>

namespace tsaw::app {
namespace {

nlohmann::json PathOrNull(const std::filesystem::path& path) {
  return path.empty() ? nlohmann::json(nullptr) : nlohmann::json(path.string());
}

nlohmann::json Paths(const std::vector<std::filesystem::path>& paths) {
  nlohmann::json list = nlohmann::json::array();
  for (const auto& path : paths) list.push_back(path.string());
  return list;
}

nlohmann::json StatisticsJson(const creation::TCounters& c) {
  return {{"folders", {{"scanned", c.FoldersScanned}, {"skipped", c.FoldersSkipped},
                       {"processed", c.FoldersProcessed}, {"failed", c.FoldersFailed}}},
          {"files", {{"scanned", c.FilesScanned}, {"skipped", c.FilesSkipped},
                     {"processed", c.FilesProcessed}, {"failed", c.FilesFailed}}}};
}

}  // namespace

std::string CreateReportJson(const CreateReport& report) {
  nlohmann::ordered_json doc;
  doc["outcome"] = report.Outcome;
  doc["message"] = report.Message.empty() ? nlohmann::json(nullptr) : nlohmann::json(report.Message);
  doc["dry_run"] = report.DryRun;
  doc["project_set_folder"] = PathOrNull(report.ProjectSetFolder);
  doc["report_file"] = PathOrNull(report.ReportFile);
  doc["statistics"] = report.Statistics ? StatisticsJson(*report.Statistics) : nlohmann::json(nullptr);
  doc["moved_to_trash"] = Paths(report.MovedToTrash);
  if (report.DryRun) doc["planned_files"] = Paths(report.PlannedFiles);
  doc["job_file"] = PathOrNull(report.JobFile);
  return doc.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

}  // namespace tsaw::app
