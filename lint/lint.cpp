#include "lint/lint.h"

#include <algorithm>

#include "lint/checks.h"
#include "model/text_file.h"
#include "templates/catalogue.h"
#include "templates/defaults.h"

namespace tsaw::lint {
namespace fs = std::filesystem;
namespace {

constexpr const char* kIni = "Template.ini";

// Selects the template in `folder` into the wizard and applies its defaults as the Template
// Selection page does when the user picks it; the folder need not lie below the templates folder.
std::shared_ptr<TTemplateInfo> SelectFolder(TWizard& wizard, const fs::path& folder) {
  auto info = Alloc_Info(nullptr);
  info->IsTemplate = true;
  info->FolderName = folder.filename().string();
  info->FolderPath = folder.string() + "/";
  info->PartialPath = folder.string();
  info->IniFile = info->FolderPath + kIni;
  const bool valid = Validate(*info);
  // The defaults apply only to a valid template; a bad one is read as if it were good, so that
  // its other findings are found too.
  info->IsValid = true;
  if (info->PluginCount == 0) info->PluginCount = 1;
  wizard.SelectedTemplate = info;
  wizard.SelectedTemplatePath = info->PartialPath;
  wizard.LastAppliedTemplatePath = info->PartialPath;
  TCatalogue(wizard).Reallocate_SubArrays();
  Apply_Internal_Default_Values(wizard);
  Apply_Config_Default_Values(wizard);
  Apply_Template_Values(wizard);
  Update_Wizard_Variables(wizard);
  info->IsValid = valid;
  return info;
}

}  // namespace

void TLintContext::Add(const std::string& file, int line, TSeverity severity, std::string message) {
  if (Full()) return;
  if (findings.size() + 1 == kMaxFindings) {
    findings.push_back({file, line, TSeverity::Error, "too many findings; the rest are left out"});
    return;
  }
  findings.push_back({file, line, severity, std::move(message)});
}

void TLintContext::SortByLine(std::size_t first) {
  std::stable_sort(findings.begin() + static_cast<std::ptrdiff_t>(first), findings.end(),
                   [](const TFinding& a, const TFinding& b) { return a.Line < b.Line; });
}

std::vector<TFinding> LintTemplate(TWizard& wizard, const TProgramInfo& program, const fs::path& folder) {
  TLintContext context{wizard, folder, {}, {}, {}, {}};
  std::string error;
  std::error_code ec;
  if (!fs::is_regular_file(folder / kIni, ec)) {
    context.Add(kIni, 0, TSeverity::Error, "is missing: the folder is no template");
    return context.findings;
  }
  const auto bytes = ReadFileBytes(folder / kIni, &error);
  if (!bytes) {
    context.Add(kIni, 0, TSeverity::Error, "could not be read: " + error);
    return context.findings;
  }
  const std::shared_ptr<TTemplateInfo> info = SelectFolder(wizard, folder);
  CheckTemplateIni(context, *info, TIniLines(DecodeText(*bytes).Text));
  context.SortByLine(0);
  CollectKnownNames(context, program);
  CheckTree(context, info->Prefix);
  return context.findings;
}

std::string FormatFinding(const std::string& folder, const TFinding& finding) {
  std::string file = folder;
  if (!file.empty() && file.back() != '/') file += '/';
  file += finding.File;
  if (finding.Line > 0) file += ":" + std::to_string(finding.Line);
  return file + ": " + (finding.Severity == TSeverity::Error ? "error" : "warning") + ": " + finding.Message;
}

bool HasErrors(const std::vector<TFinding>& findings) {
  return std::any_of(findings.begin(), findings.end(),
                     [](const TFinding& f) { return f.Severity == TSeverity::Error; });
}

std::string FindingCounts(const std::vector<TFinding>& findings) {
  const auto errors = static_cast<size_t>(std::count_if(
      findings.begin(), findings.end(), [](const TFinding& f) { return f.Severity == TSeverity::Error; }));
  const size_t warnings = findings.size() - errors;
  return std::to_string(errors) + (errors == 1 ? " error, " : " errors, ") + std::to_string(warnings) +
         (warnings == 1 ? " warning" : " warnings");
}

}  // namespace tsaw::lint
