#pragma once
// The user's answers kept across a creation run. The run expands and computes variables in place
// (Copyright, the project names, the source prefixes, the current plug-in and target); the pages
// and a Job saved afterwards must still hold what the user wrote ("#Projects.Prefix#Host"), so
// that changing an answer and running again follows through.

#include <optional>
#include <string>
#include <vector>

#include "model/wizard.h"

namespace tsaw::creation {

// Records every variable's value, default and identifier value (each plug-in's element too) and
// the current plug-in index when made, and puts them back into the same wizard when it goes out
// of scope. Variables added in between keep their values.
class TKeptAnswers {
 public:
  explicit TKeptAnswers(TWizard& wizard);
  ~TKeptAnswers();
  TKeptAnswers(const TKeptAnswers&) = delete;
  TKeptAnswers& operator=(const TKeptAnswers&) = delete;

 private:
  struct TValues {
    std::string Value;
    std::string DefaultValue;
    std::string IdfValue;
    std::vector<std::optional<TValues>> Pins;
  };

  static TValues Take(const TVariableItem& item);
  static void Put(const TValues& values, TVariableItem& item);

  TWizard& wizard_;
  uint16_t plugin_index_;
  std::vector<TValues> variables_;
};

}  // namespace tsaw::creation
