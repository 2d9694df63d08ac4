// tsaw templates: scans the templates folder as the Template Selection page does and prints its
// summary line and tree, each template marked good or bad, and with --lint the count of its lint
// findings.

#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include "app/command.h"
#include "app/root.h"
#include "jobs/session.h"
#include "lint/lint.h"
#include "model/wizard.h"
#include "templates/catalogue.h"

namespace tsaw::app {
namespace {

// What --lint adds after a template's mark; empty when it adds nothing.
using TExtraMark = std::function<std::string(const TTemplateInfo&)>;

void PrintTree(const TCatalogueNode& node, int depth, const TExtraMark& extra) {
  for (const auto& child : node.Children) {
    std::cout << std::string(2 * depth, ' ') << child->Caption;
    if (const TTemplateInfo* info = child->Record; info && info->IsTemplate) {
      if (info->IsValid) {
        std::cout << "  [good]";
      } else {
        std::cout << "  [bad: " << kTemplateErrorNames[info->ErrorKind] << "]";
      }
      if (extra) std::cout << extra(*info);
    }
    std::cout << "\n";
    PrintTree(*child, depth + 1, extra);
  }
}

// Each template is linted in a session of its own, so that one template's custom variables are not
// taken for another's. The sessions' warnings were told by the first one already.
std::string LintMark(const GlobalOptions& global, const TTemplateInfo& info) {
  std::ostringstream told_already;
  const std::unique_ptr<WizardSession> session = ResolveWizardSession(global, told_already);
  if (!session) return {};
  const auto findings = lint::LintTemplate(session->Wizard, kWizardProgram, info.PartialPath);
  return findings.empty() ? std::string() : "  [lint: " + lint::FindingCounts(findings) + "]";
}

int RunTemplates(const GlobalOptions& global, bool with_lint) {
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
  std::cout << catalogue.Summary() << "\n";
  TExtraMark extra;
  if (with_lint) extra = [&global](const TTemplateInfo& info) { return LintMark(global, info); };
  PrintTree(catalogue.Root(), 0, extra);
  return kExitOk;
}

}  // namespace

Command MakeTemplatesCommand() {
  return {"templates", "List the templates under <root>/TSA/Wizard/Templates/, each marked good or bad",
          [](CLI::App& sub, const GlobalOptions& global) -> std::function<int()> {
            auto with_lint = std::make_shared<bool>(false);
            sub.add_flag("--lint", *with_lint, "Lint each template and mark those with findings");
            return [&global, with_lint] { return RunTemplates(global, *with_lint); };
          }};
}

}  // namespace tsaw::app
