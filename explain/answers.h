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
  std::string Expanded;    // the value with its variables expanded
  std::string Identifier;  // the identifier form the "vr" token stands for
  TLayer Layer = TLayer::Internal;
  bool ReadOnly = false;  // marked "$ReadOnly" by the template
  bool Settable = false;  // a "Default Values" key, which --set takes
  uint16_t Target = 0;    // the target's number for a target's answer, else 0

  bool operator==(const TAnswer&) const = default;
};

// The variables in number order (a plug-in variable as one answer per plug-in), then the 18
// targets. Expanding a plug-in's answer makes that plug-in current for the moment; the current
// plug-in is put back.
std::vector<TAnswer> ListAnswers(TWizard& wizard, const TAnswerLayers& layers);

}  // namespace tsaw::explain
