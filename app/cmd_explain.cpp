// tsaw explain: every answer as a run would use it (value, expanded value, identifier form), the
// source of default values that set it, and the template's read-only marks; --keys lists the keys
// --set takes, as NAME=VALUE lines.

#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "app/command.h"
#include "app/create_answers.h"
#include "app/root.h"
#include "explain/answers.h"
#include "model/expand.h"
#include "templates/template_info.h"

namespace tsaw::app {
namespace {

struct ExplainOptions : AnswerOptions {
  bool keys = false;
  bool json = false;
};

// A value on one line: its line breaks written as " ¶ ", as the files write them.
std::string OneLine(const std::string& text) {
  return ReplaceAll(ReplaceAll(text, "\r\n", " \xC2\xB6 "), "\n", " \xC2\xB6 ");
}

// The letter a target's state is written with in "Default Values".
const char* TargetLetter(const std::string& state) {
  if (state == "required") return "R";
  if (state == "selected") return "1";
  return state == "allowed" ? "0" : "D";
}

void PrintAnswers(const std::vector<explain::TAnswer>& answers) {
  for (const explain::TAnswer& answer : answers) {
    std::cout << answer.Name << " = " << OneLine(answer.Value) << "  [" << explain::LayerName(answer.Layer)
              << (answer.ReadOnly ? ", read-only" : "") << "]\n"
              << "    expanded: " << OneLine(answer.Expanded) << "  identifier: " << answer.Identifier << "\n";
  }
}

void PrintKeys(const std::vector<explain::TAnswer>& answers) {
  for (const explain::TAnswer& answer : answers) {
    if (!answer.Settable) continue;
    std::cout << answer.Name << "=" << (answer.Target != 0 ? TargetLetter(answer.Value) : OneLine(answer.Value))
              << (answer.ReadOnly ? "  (read-only in the window)" : "") << "\n";
  }
}

std::string AnswersJson(const TWizard& wizard, const std::vector<explain::TAnswer>& answers) {
  nlohmann::json list = nlohmann::json::array();
  for (const explain::TAnswer& answer : answers) {
    list.push_back({{"name", answer.Name},
                    {"value", answer.Value},
                    {"expanded", answer.Expanded},
                    {"identifier", answer.Identifier},
                    {"layer", explain::LayerName(answer.Layer)},
                    {"read_only", answer.ReadOnly},
                    {"settable", answer.Settable}});
  }
  const nlohmann::json document = {
      {"template", wizard.SelectedTemplate ? wizard.SelectedTemplate->PartialPath : std::string()},
      {"job", wizard.ActiveJobFile},
      {"configuration", wizard.ConfigFile},
      {"answers", list}};
  return document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
}

int RunExplain(const ExplainOptions& options, const GlobalOptions& global) {
  auto session = StartWithAnswers(global, options, "explain");
  if (!session) return kExitFailed;
  TWizard& wizard = session->Wizard;
  std::vector<std::pair<std::string, std::string>> sets;
  for (const std::string& set : options.sets) {
    const auto equals = set.find('=');
    sets.emplace_back(set.substr(0, equals), set.substr(equals + 1));
  }
  explain::TAnswerLayers layers;
  if (std::string error = layers.Replay(wizard, sets); !error.empty()) {
    std::cerr << "tsaw: explain: " << error << "\n";
    return kExitFailed;
  }
  const std::vector<explain::TAnswer> answers = explain::ListAnswers(wizard, layers);
  if (options.json) {
    std::cout << AnswersJson(wizard, answers) << "\n";
  } else if (options.keys) {
    PrintKeys(answers);
  } else {
    PrintAnswers(answers);
  }
  return kExitOk;
}

}  // namespace

Command MakeExplainCommand() {
  return {"explain", "Show every answer a run would use and where its value came from",
          [](CLI::App& sub, const GlobalOptions& global) -> std::function<int()> {
            auto options = std::make_shared<ExplainOptions>();
            AddAnswerOptions(sub, *options);
            sub.add_flag("--keys", options->keys, "List only the keys --set takes, as NAME=VALUE lines");
            sub.add_flag("--json", options->json, "Print the answers as one JSON document");
            return [options, &global] {
              if (options->job.empty() && options->template_path.empty()) {
                std::cerr << "tsaw: explain: give --job FILE or --template PATH\n";
                return kExitUsage;
              }
              return RunExplain(*options, global);
            };
          }};
}

}  // namespace tsaw::app
