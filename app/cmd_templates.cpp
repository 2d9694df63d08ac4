// tsaw templates: scans the templates folder as the Template Selection page does and prints its
// summary line and tree, each template marked good or bad.

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "app/command.h"
#include "app/root.h"
#include "model/wizard.h"
#include "templates/catalogue.h"

namespace tsaw::app {
namespace {

void PrintTree(const TCatalogueNode& node, int depth) {
  for (const auto& child : node.Children) {
    std::cout << std::string(2 * depth, ' ') << child->Caption;
    if (const TTemplateInfo* info = child->Record; info && info->IsTemplate) {
      if (info->IsValid) {
        std::cout << "  [good]";
      } else {
        std::cout << "  [bad: " << kTemplateErrorNames[info->ErrorKind] << "]";
      }
    }
    std::cout << "\n";
    PrintTree(*child, depth + 1);
  }
}

int RunTemplates(const GlobalOptions& global) {
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
  PrintTree(catalogue.Root(), 0);
  return kExitOk;
}

}  // namespace

Command MakeTemplatesCommand() {
  return {"templates", "List the templates under <root>/TSA/Wizard/Templates/, each marked good or bad",
          [](CLI::App&, const GlobalOptions& global) -> std::function<int()> {
            return [&global] { return RunTemplates(global); };
          }};
}

}  // namespace tsaw::app
