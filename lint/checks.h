#pragma once
// The lint's checks, shared by its source files.

#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "lint/ini_lines.h"
#include "lint/lint.h"
#include "model/wizard.h"
#include "templates/template_info.h"

namespace tsaw::lint {

// What every check reads and where they all put their findings.
struct TLintContext {
  TWizard& wizard;
  std::filesystem::path folder;    // the template folder
  std::set<std::string> directives;  // lower-cased names some run defines ("ddusetlg")
  std::set<std::string> names;       // variable names, sub-items included ("Plugin[2].Version")
  std::set<std::string> tokens;      // their identifier tokens
  std::vector<TFinding> findings;

  // Adds a finding unless kMaxFindings are kept already; the last one kept says that more were
  // left out.
  void Add(const std::string& file, int line, TSeverity severity, std::string message);
  bool Full() const { return findings.size() >= kMaxFindings; }
  // Puts the findings from index `first` on in line order (a stable sort: one line's findings keep
  // the order in which they were found).
  void SortByLine(std::size_t first);
};

// Fills the context's directive names, variable names and tokens from the selected template.
void CollectKnownNames(TLintContext& context, const TProgramInfo& program);

// The checks of one file's text (UTF-8). `file` is the name findings carry.
void CheckDirectives(TLintContext& context, const std::string& file, std::string_view text);
void CheckReferences(TLintContext& context, const std::string& file, std::string_view text);

// "Template.ini": the catalogue's validation, the prefix's form, "Default Values" and the folders
// of required targets. `info` is the validated record.
void CheckTemplateIni(TLintContext& context, const TTemplateInfo& info, const TIniLines& ini);

// Every file a run would visit, in the walk's order.
void CheckTree(TLintContext& context, const std::string& prefix);

}  // namespace tsaw::lint
