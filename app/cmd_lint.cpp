// tsaw lint DIR: checks one template folder as its author would want before anyone runs it, one
// line per finding.

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "app/command.h"
#include "app/root.h"
#include "jobs/session.h"
#include "lint/lint.h"

namespace tsaw::app {
namespace {

// The findings as one JSON document (fields listed in the README).
std::string FindingsJson(const std::string& folder, const std::vector<lint::TFinding>& findings) {
  nlohmann::json list = nlohmann::json::array();
  size_t errors = 0;
  for (const lint::TFinding& finding : findings) {
    const bool error = finding.Severity == lint::TSeverity::Error;
    errors += error;
    list.push_back({{"file", finding.File},
                    {"line", finding.Line},
                    {"severity", error ? "error" : "warning"},
                    {"message", finding.Message}});
  }
  const nlohmann::json document = {
      {"folder", folder}, {"findings", list}, {"errors", errors}, {"warnings", findings.size() - errors}};
  // A file name need not be UTF-8; such bytes are replaced rather than failing the document.
  return document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
}

int RunLint(const GlobalOptions& global, std::string folder, bool json) {
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  std::error_code ec;
  if (!std::filesystem::is_directory(folder, ec)) {
    std::cerr << "tsaw: lint: " << folder << ": no such folder\n";
    return kExitFailed;
  }
  const std::unique_ptr<WizardSession> session = ResolveWizardSession(global, std::cerr);
  if (!session) return kExitFailed;
  const auto findings = lint::LintTemplate(session->Wizard, kWizardProgram, std::filesystem::absolute(folder));
  if (json) {
    std::cout << FindingsJson(folder, findings) << "\n";
  } else {
    for (const lint::TFinding& finding : findings) std::cout << lint::FormatFinding(folder, finding) << "\n";
    if (!findings.empty()) std::cerr << "tsaw: lint: " << lint::FindingCounts(findings) << "\n";
  }
  return lint::HasErrors(findings) ? kExitFailed : kExitOk;
}

}  // namespace

Command MakeLintCommand() {
  return {"lint", "Check a template folder for what would go wrong in a run",
          [](CLI::App& sub, const GlobalOptions& global) -> std::function<int()> {
            auto folder = std::make_shared<std::string>();
            auto json = std::make_shared<bool>(false);
            sub.add_option("DIR", *folder, "The template's folder (the one holding Template.ini)")->required();
            sub.add_flag("--json", *json, "Print the findings as one JSON document");
            return [folder, json, &global] { return RunLint(global, *folder, *json); };
          }};
}

}  // namespace tsaw::app
