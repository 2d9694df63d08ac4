#pragma once
// Template lint: what a template's author should hear before anyone runs the template. Each
// finding names a file of the template and, where it has one, a line.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "model/startup.h"
#include "model/wizard.h"

namespace tsaw::lint {

enum class TSeverity { Warning, Error };

struct TFinding {
  std::string File;  // relative to the template folder, '/' between folders
  int Line = 0;      // 1-based; 0 when the finding is about the file as a whole
  TSeverity Severity = TSeverity::Warning;
  std::string Message;

  bool operator==(const TFinding&) const = default;
};

// Lints the template in `folder`: its "Template.ini" as the catalogue validates it, the form of
// its prefix and its "Default Values", the folders of its required targets, and every file a run
// would write (unbalanced directives, directive names no run defines, references to variables
// that neither the template nor the configuration declares, project files not named by the
// prefix, binary forms, files the run never writes). `wizard` is a started session (folders,
// configuration, fixed variables); the template is selected into it and its defaults applied, as
// the Template Selection page does. Only regular files are read, linked folders are not entered,
// and at most kMaxFindings findings are kept (the last one then says so). Findings come in the
// order of the walk, by file and line.
std::vector<TFinding> LintTemplate(TWizard& wizard, const TProgramInfo& program,
                                   const std::filesystem::path& folder);

inline constexpr std::size_t kMaxFindings = 1000;
// Files larger than this are not read (a finding says so).
inline constexpr std::uintmax_t kMaxLintedFileBytes = 64u << 20;

// "FILE:LINE: error: MESSAGE" (without ":LINE" for line 0), FILE being `folder`/File.
std::string FormatFinding(const std::string& folder, const TFinding& finding);

bool HasErrors(const std::vector<TFinding>& findings);
// "2 errors, 1 warning".
std::string FindingCounts(const std::vector<TFinding>& findings);

}  // namespace tsaw::lint
