#pragma once
// The answers of `tsaw create` and `tsaw update`: the Job's or the named template, the defaults
// with each --set as a layer of its own.

#include <string>
#include <vector>

#include "model/wizard.h"

namespace tsaw::app {

// Selects the Job's template (`job` given) or the template at `template_path` below the templates
// folder, applying the defaults as the Template Selection page does, then each of `sets`
// (NAME=VALUE) as one more layer in the order given. Returns what is wrong, or the empty text.
std::string ChooseAnswers(TWizard& wizard, const std::string& job, const std::string& template_path,
                          const std::vector<std::string>& sets);

// What is wrong with --config NAME (a path, or no such configuration file), or the empty text.
std::string CheckConfigName(const TWizard& wizard, const std::string& config);

}  // namespace tsaw::app
