#pragma once
// The answers of `tsaw create`, `tsaw update` and `tsaw explain`: the Job's or the named template,
// the defaults with each --set as a layer of its own, and the options that say which.

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/command.h"
#include "app/root.h"
#include "model/wizard.h"

namespace tsaw::app {

// Where a command's answers come from: a Job or a template, the configuration, the --set layers.
struct AnswerOptions {
  std::string job;
  std::string template_path;
  std::string config;
  std::vector<std::string> sets;
};

// Adds --job and --template (each excluding the other), --config and --set to `sub`; returns
// --job and --template, for options that exclude them in turn.
std::pair<CLI::Option*, CLI::Option*> AddAnswerOptions(CLI::App& sub, AnswerOptions& options);

// Starts the session and chooses its answers (CheckConfigName, then ChooseAnswers). On failure
// tells why on standard error ("tsaw: COMMAND: ...") and returns nullptr.
std::unique_ptr<WizardSession> StartWithAnswers(const GlobalOptions& global, const AnswerOptions& options,
                                                const char* command);

// Selects the Job's template (`job` given) or the template at `template_path` below the templates
// folder, applying the defaults as the Template Selection page does, then each of `sets`
// (NAME=VALUE) as one more layer in the order given. Returns what is wrong, or the empty text.
std::string ChooseAnswers(TWizard& wizard, const std::string& job, const std::string& template_path,
                          const std::vector<std::string>& sets);

// What is wrong with --config NAME (a path, or no such configuration file), or the empty text.
std::string CheckConfigName(const TWizard& wizard, const std::string& config);

}  // namespace tsaw::app
