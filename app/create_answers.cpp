#include "app/create_answers.h"

#include <filesystem>
#include <iostream>
#include <utility>

#include "jobs/job_loader.h"
#include "templates/catalogue.h"
#include "templates/defaults.h"

namespace tsaw::app {

std::string ChooseAnswers(TWizard& wizard, const std::string& job, const std::string& template_path,
                          const std::vector<std::string>& sets) {
  TCatalogue catalogue(wizard);
  if (!job.empty()) {
    if (std::string error = Load_Job(wizard, job); !error.empty()) return error;
    catalogue.Open();
  } else {
    catalogue.Refresh_Tree();
    std::string path = wizard.TemplatesFolder + template_path;
    while (!path.empty() && path.back() == '/') path.pop_back();
    TCatalogueNode* node = catalogue.Find_Node(path);
    if (!node) return "no template '" + template_path + "' in " + wizard.TemplatesFolder;
    catalogue.Select(node);
  }
  if (!catalogue.PageValid()) return "the selected template is not valid (see `tsaw validate`)";
  std::vector<std::pair<std::string, std::string>> values;
  for (const std::string& set : sets) {
    const auto equals = set.find('=');
    if (equals == std::string::npos || equals == 0) return "--set takes NAME=VALUE, not '" + set + "'";
    values.emplace_back(set.substr(0, equals), set.substr(equals + 1));
  }
  return values.empty() ? std::string() : Apply_Value_Overrides(wizard, values);
}

std::string CheckConfigName(const TWizard& wizard, const std::string& config) {
  if (config.empty()) return {};
  if (config.find_first_of("/\\") != std::string::npos) return "--config takes a name, not a path";
  if (!std::filesystem::is_regular_file(wizard.ConfigFile)) return "no configuration file " + wizard.ConfigFile;
  return {};
}

std::pair<CLI::Option*, CLI::Option*> AddAnswerOptions(CLI::App& sub, AnswerOptions& options) {
  auto* job = sub.add_option("--job", options.job, "A Job file whose answers to use");
  auto* tpl = sub.add_option("--template", options.template_path, "A template, as a path below the templates folder");
  job->excludes(tpl);
  tpl->excludes(job);
  sub.add_option("--config", options.config, "The configuration to use (TSaW.NAME.ini)");
  sub.add_option("--set", options.sets, "One more default value, NAME=VALUE (repeatable)");
  return {job, tpl};
}

std::unique_ptr<WizardSession> StartWithAnswers(const GlobalOptions& global, const AnswerOptions& options,
                                                const char* command) {
  auto session = ResolveWizardSession(global, std::cerr, options.config);
  if (!session) return nullptr;
  std::string error = CheckConfigName(session->Wizard, options.config);
  if (error.empty()) error = ChooseAnswers(session->Wizard, options.job, options.template_path, options.sets);
  if (error.empty()) return session;
  std::cerr << "tsaw: " << command << ": " << error << "\n";
  return nullptr;
}

}  // namespace tsaw::app
