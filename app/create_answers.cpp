#include "app/create_answers.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <utility>

#include "app/name_value_option.h"
#include "jobs/job_loader.h"
#include "model/ini_file.h"
#include "model/variables.h"
#include "templates/catalogue.h"
#include "templates/defaults.h"
#include "templates/template_paths.h"

namespace tsaw::app {
namespace {

constexpr size_t kSuggestions = 3;

std::string NoSuchTemplate(const TWizard& wizard, const TCatalogue& catalogue, const std::string& given,
                           const std::string& relative) {
  std::string message = "no template \"" + given + "\" in " + wizard.TemplatesFolder;
  const std::vector<std::string> nearest = NearestPaths(TemplatePaths(wizard, catalogue), relative, kSuggestions);
  for (size_t i = 0; i < nearest.size(); ++i) message += (i == 0 ? "; did you mean \"" : "\", \"") + nearest[i];
  return nearest.empty() ? message : message + "\"?";
}

std::string SelectNamedTemplate(TWizard& wizard, TCatalogue& catalogue, const std::string& template_path) {
  catalogue.Refresh_Tree();
  const std::string relative = RelativeTemplatePath(template_path);
  TCatalogueNode* node = relative.empty() ? nullptr : catalogue.Find_Node(wizard.TemplatesFolder + relative);
  if (!node || !node->Record || !node->Record->IsTemplate) {
    return NoSuchTemplate(wizard, catalogue, template_path, relative);
  }
  catalogue.Select(node);
  return {};
}

}  // namespace

std::string ChooseAnswers(TWizard& wizard, const std::string& job, const std::string& template_path,
                          const std::vector<std::string>& sets) {
  TCatalogue catalogue(wizard);
  if (!job.empty()) {
    if (std::string error = Load_Job(wizard, job); !error.empty()) return error;
    catalogue.Open();
  } else if (std::string error = SelectNamedTemplate(wizard, catalogue, template_path); !error.empty()) {
    return error;
  }
  if (!catalogue.PageValid()) return "the selected template is not valid (see `tsaw validate`)";
  std::vector<std::pair<std::string, std::string>> layers;
  for (const std::string& set : sets) {
    const auto equals = set.find('=');
    layers.emplace_back(set.substr(0, equals), set.substr(equals + 1));
  }
  return layers.empty() ? std::string() : Apply_Value_Overrides(wizard, layers);
}

std::vector<std::string> AnswerFileWarnings(const TWizard& wizard) {
  std::vector<std::string> warnings;
  const auto add = [&warnings](const std::vector<std::string>& more) {
    warnings.insert(warnings.end(), more.begin(), more.end());
  };
  for (const std::string& file : {wizard.ConfigFile, wizard.SelectedTemplate->IniFile, wizard.ActiveJobFile}) {
    if (!file.empty()) add(TIniFile::Load(file).Warnings());
  }
  if (!wizard.ActiveJobFile.empty()) {
    add(Ignored_Default_Keys(TIniFile::Load(wizard.ActiveJobFile), wizard.SelectedTemplate->PluginCount, true));
  }
  return warnings;
}

void ResolveBaseFolder(TWizard& wizard) {
  const char* home = std::getenv("HOME");
  std::error_code ignored;
  const std::filesystem::path current = std::filesystem::current_path(ignored);
  TVariableItem& base = wizard.Variables[viOutputBaseFolder];
  std::string value = base.Value;
  const bool tilde = value == "~" || value.starts_with("~/") || value.starts_with("~\\");
  if (tilde && home && *home) {
    value = home + value.substr(1);
  } else if (!value.empty() && value.find_first_of("/\\#%") != 0) {
    value = (current / value).string();
  }
  base.Value = base.DefaultValue = value;
}

std::pair<CLI::Option*, CLI::Option*> AddAnswerOptions(CLI::App& sub, AnswerOptions& options) {
  auto* job = sub.add_option("--job", options.job, "A Job file whose answers to use");
  auto* tpl = sub.add_option("--template", options.template_path,
                             "A template, as a path below the templates folder ('/' or '\\' between folders)");
  job->excludes(tpl);
  tpl->excludes(job);
  sub.add_option("--config", options.config, "The configuration to use (TSaW.NAME.ini)");
  // --set and -o feed one list as they are read, so that their layers keep the order given.
  sub.add_option_function<std::string>(
         "--set", [&options](const std::string& set) { options.sets.push_back(set); },
         "One more default value, NAME=VALUE (repeatable; each a layer of its own, in the order given)")
      ->check(NameValueCheck())
      ->trigger_on_parse();
  sub.add_option_function<std::string>(
         "-o,--output", [&options](const std::string& dir) { options.sets.push_back("Output.BaseFolder=" + dir); },
         "The Base Folder: short for --set Output.BaseFolder=DIR")
      ->type_name("DIR")
      ->trigger_on_parse();
  return {job, tpl};
}

std::unique_ptr<WizardSession> StartWithAnswers(const GlobalOptions& global, const AnswerOptions& options,
                                                const char* command) {
  auto session = ResolveWizardSession(global, std::cerr, options.config);
  if (!session) return nullptr;
  TWizard& wizard = session->Wizard;
  if (std::string error = ChooseAnswers(wizard, options.job, options.template_path, options.sets); !error.empty()) {
    std::cerr << "tsaw: " << command << ": " << error << "\n";
    return nullptr;
  }
  for (const std::string& warning : AnswerFileWarnings(wizard)) std::cerr << "tsaw: warning: " << warning << "\n";
  ResolveBaseFolder(wizard);
  return session;
}

}  // namespace tsaw::app
