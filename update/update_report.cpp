#include "update/update_report.h"

#include "model/format.h"

namespace tsaw::update {
namespace {

const std::string kRule(96, '=');

std::vector<std::string> Title(const std::string& title) {
  return {"", kRule, std::string((96 - title.size()) / 2, ' ') + title, kRule, ""};
}

}  // namespace

std::vector<std::string> UpdateSection(const TUpdatePlan& plan, bool dry_run) {
  std::vector<std::string> lines = Title("UPDATE OF THE PROJECT SET");
  if (dry_run) lines.push_back("  Dry run: nothing was changed; each line says what would happen.");
  for (const TFileAction& action : plan.Files) {
    std::string word = kFateWords[static_cast<size_t>(action.Fate)];
    word.resize(10, ' ');
    lines.push_back("  " + word + "'" + action.Path + "'");
  }
  if (plan.Files.empty()) lines.push_back("  No file to update.");
  return lines;
}

std::vector<std::string> UpdateStatistics(const TUpdatePlan& plan) {
  std::vector<std::string> lines = Title("UPDATE STATISTICS");
  const char* labels[] = {" KEPT:       ", " UPDATED:    ", " MERGED:     ", " CONFLICTS:  ", " ADDED:      ",
                          " REMOVED:    "};
  for (size_t fate = 0; fate < kFateWords.size(); ++fate) {
    const int count = plan.Count(static_cast<TFate>(fate));
    lines.push_back(labels[fate] + FormatCount(count) + " file" + (count == 1 ? "" : "s"));
  }
  lines.push_back("");
  lines.push_back(kRule);
  lines.push_back("");
  return lines;
}

std::vector<std::string> ConflictLines(const TUpdatePlan& plan) {
  std::vector<std::string> lines;
  for (const TFileAction& action : plan.Files) {
    if (action.Fate != TFate::Conflict) continue;
    lines.push_back(action.Write == TWrite::Beside
                        ? "conflict: " + action.Path + " (the new generation is in " + action.Target() + ")"
                        : "conflict: " + action.Path);
  }
  return lines;
}

}  // namespace tsaw::update
