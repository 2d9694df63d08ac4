#pragma once
// Every answer as a creation run would use it: its value, the value expanded, its identifier form,
// the source that set it and whether the template made it read-only.

#include <cstdint>
#include <string>
#include <vector>

#include "explain/answer_layers.h"
#include "model/wizard.h"

namespace tsaw::explain {

struct TAnswer {
  std::string Name;        // "Product.Name", "Plugin[2].Version", or a target's key "Delphi.7.Win32"
  std::string Value;       // for a target: "required", "selected", "allowed" or "not allowed"
  std::string Expanded;    // the value with its variables expanded, as the run has it
  std::string Identifier;  // the identifier form the "vr" token stands for in the run
  TLayer Layer = TLayer::Internal;
  bool ReadOnly = false;  // marked "$ReadOnly" by the template
  bool Settable = false;  // a "Default Values" key, which --set takes
  uint16_t Target = 0;    // the target's number for a target's answer, else 0

  bool operator==(const TAnswer&) const = default;
};

// The variables in number order (a plug-in variable as one answer per plug-in), then the 18
// targets. The value is the answer as the sources left it; the expanded value and identifier form
// are those the run uses once it has prepared the wizard (the values built from other answers
// expanded in place, their identifier forms made afresh, no target selected), which this does to
// `wizard`, so it is the last thing done with it.
std::vector<TAnswer> ListAnswers(TWizard& wizard, const TAnswerLayers& layers);

}  // namespace tsaw::explain
