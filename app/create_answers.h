#pragma once
// The answers of `tsaw create`, `tsaw update` and `tsaw explain`: the Job's or the named template,
// the defaults with each --set as a layer of its own, and the Base Folder as a user types it.

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

// Adds --job and --template (each excluding the other), --config, --set and -o to `sub` (--set and
// -o feed one list in the order given, each a layer of its own); returns --job and --template, for
// options that exclude them in turn.
std::pair<CLI::Option*, CLI::Option*> AddAnswerOptions(CLI::App& sub, AnswerOptions& options);

// Starts the session, chooses its answers (ChooseAnswers), warns of what the answer files hold that
// is ignored, and resolves the Base Folder as typed. On failure tells why on standard error
// ("tsaw: COMMAND: ...") and returns nullptr.
std::unique_ptr<WizardSession> StartWithAnswers(const GlobalOptions& global, const AnswerOptions& options,
                                                const char* command);

// Selects the Job's template (`job` given) or the template at `template_path` below the templates
// folder ("/" or "\" between folders), applying the defaults as the Template Selection page does,
// then each of `sets` (NAME=VALUE, as the option parser checked) as one more layer in the order
// given. Returns what is wrong, or the empty text; a template path that names no template gets the
// nearest names there are.
std::string ChooseAnswers(TWizard& wizard, const std::string& job, const std::string& template_path,
                          const std::vector<std::string>& sets);

// What a user should know about the files the answers came from: lines of the configuration,
// the template's Template.ini and the Job that are no INI lines, and keys of the Job's
// "Default Values" that are ignored; each "<file>:<line>: ...".
std::vector<std::string> AnswerFileWarnings(const TWizard& wizard);

// The Base Folder answer as a user means it: "~" at its start is $HOME, and a relative folder lies
// below the current folder. A value starting with a variable ("#Path.Delphi#/x") is left as it is.
void ResolveBaseFolder(TWizard& wizard);

}  // namespace tsaw::app
