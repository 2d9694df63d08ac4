#pragma once
// Every data-entry page's rules at once, for the command line, which has no pages to step through.

#include <string>
#include <vector>

#include "model/wizard.h"
#include "pages/page_errors.h"

namespace tsaw {

// One page whose rules failed: its title as the frame shows it and its numbered errors.
struct TPageFailure {
  std::string Title;  // "Common Properties"
  TPageErrors Errors;
};

// Runs the rules of every page that has any, in step order (Platforms & Languages, Common,
// Manager and Plugin Properties, Output Settings), against the answers in `wizard`. Returns the
// pages that failed; empty when every answer is acceptable. Publishes nothing; `Plugin.Index`
// ends as it was.
std::vector<TPageFailure> ValidateAllAnswers(TWizard& wizard);

// The failures as text: per page a line "<title> - <caption>" followed by its numbered errors,
// pages one blank line apart, lines ending in CR LF.
std::string FormatFailures(const std::vector<TPageFailure>& failures);

}  // namespace tsaw
