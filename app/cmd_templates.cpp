// tsaw templates: scans the templates folder as the Template Selection page does and prints its
// summary line and tree, each template marked good or bad with its path as --template takes it,
// and with --lint the count of its lint findings.

#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include "app/command.h"
#include "app/root.h"
#include "app/template_record_output.h"
#include "jobs/session.h"
#include "lint/lint.h"
#include "model/wizard.h"
#include "templates/catalogue.h"
#include "templates/template_paths.h"

namespace tsaw::app {
namespace {

// With --lint, the counts of a template's lint findings ("2 errors, 1 warning"); empty when none.
using TExtraMark = std::function<std::string(const TTemplateInfo&)>;

void PrintTree(const TWizard& wizard, const TCatalogueNode& node, int depth, const TExtraMark& extra) {
  for (const auto& child : node.Children) {
    std::cout << std::string(2 * depth, ' ') << child->Caption;
    if (const TTemplateInfo* info = child->Record; info && info->IsTemplate) {
      const std::string path = TemplatePathOf(wizard, info->PartialPath);
      if (info->IsValid) {
        std::cout << "  [good]  " << path;
      } else {
        std::cout << "  [bad: " << kTemplateErrorNames[info->ErrorKind] << "]  " << path << ": "
                  << ReadableReason(*info);
      }
      if (const std::string counts = extra ? extra(*info) : ""; !counts.empty()) {
        std::cout << "  [lint: " << counts << "]";
      }
    }
    std::cout << "\n";
    PrintTree(wizard, *child, depth + 1, extra);
  }
}

// Each template is linted in a session of its own, so that one template's custom variables are not
// taken for another's. The sessions' warnings were told by the first one already.
std::string LintMark(const GlobalOptions& global, const TTemplateInfo& info) {
  std::ostringstream told_already;
  const std::unique_ptr<WizardSession> session = ResolveWizardSession(global, told_already);
  if (!session) return {};
  const auto findings = lint::LintTemplate(session->Wizard, kWizardProgram, info.PartialPath);
  return findings.empty() ? std::string() : lint::FindingCounts(findings);
}

void CollectJson(const TWizard& wizard, const TCatalogueNode& node, const TExtraMark& extra,
                 nlohmann::ordered_json& templates) {
  for (const auto& child : node.Children) {
    if (const TTemplateInfo* info = child->Record; info && info->IsTemplate) {
      templates.push_back(TemplateRecordJson(*info, TemplatePathOf(wizard, info->PartialPath)));
      if (extra) templates.back()["lint"] = extra(*info);
    }
    CollectJson(wizard, *child, extra, templates);
  }
}

void PrintJson(const TWizard& wizard, const TCatalogue& catalogue, const TExtraMark& extra) {
  nlohmann::ordered_json doc;
  doc["templates_folder"] = wizard.TemplatesFolder;
  doc["summary"] = catalogue.Summary();
  doc["counts"] = {{"folders", catalogue.FolderCount()},
                   {"templates", catalogue.TemplateCount()},
                   {"good", catalogue.GoodCount()},
                   {"bad", catalogue.BadCount()}};
  doc["templates"] = nlohmann::ordered_json::array();
  CollectJson(wizard, catalogue.Root(), extra, doc["templates"]);
  std::cout << doc.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << "\n";
}

int RunTemplates(const GlobalOptions& global, bool with_lint, bool json) {
  const std::unique_ptr<WizardSession> session = ResolveWizardSession(global, std::cerr);
  if (!session) return kExitFailed;
  TWizard& wizard = session->Wizard;
  std::error_code ec;
  if (!std::filesystem::is_directory(wizard.TemplatesFolder, ec)) {
    std::cerr << "tsaw: templates: " << wizard.TemplatesFolder << ": no such folder\n";
    return kExitFailed;
  }
  TCatalogue catalogue(wizard);
  catalogue.Refresh_Tree();
  TExtraMark extra;
  if (with_lint) extra = [&global](const TTemplateInfo& info) { return LintMark(global, info); };
  if (json) {
    PrintJson(wizard, catalogue, extra);
  } else {
    std::cout << catalogue.Summary() << "\n";
    PrintTree(wizard, catalogue.Root(), 0, extra);
  }
  return kExitOk;
}

}  // namespace

Command MakeTemplatesCommand() {
  return {"templates", "List the templates under <root>/TSA/Wizard/Templates/, each marked good or bad",
          [](CLI::App& sub, const GlobalOptions& global) -> std::function<int()> {
            auto with_lint = std::make_shared<bool>(false);
            auto json = std::make_shared<bool>(false);
            sub.add_flag("--lint", *with_lint, "Lint each template and mark those with findings");
            sub.add_flag("--json", *json, "Print one JSON document in place of the tree");
            return [&global, with_lint, json] { return RunTemplates(global, *with_lint, *json); };
          }};
}

}  // namespace tsaw::app
