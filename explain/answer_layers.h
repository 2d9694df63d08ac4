#pragma once
// Which source of default values set each answer: the wizard's internal defaults, the
// configuration, the template, the Job, or a --set on the command line. The last source to set an
// answer is the one that counts.

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "model/wizard.h"

namespace tsaw::explain {

enum class TLayer { Internal, Configuration, Template, Job, Set };

// "internal", "configuration", "template", "Job", "--set".
const char* LayerName(TLayer layer);

class TAnswerLayers {
 public:
  // Applies the sources again, in the order selecting the template applied them (internal
  // defaults, configuration, template, the active Job if any), then `sets` as the command line's
  // layers, noting which source set each answer. The wizard must have its template selected and
  // its defaults applied already: applying them again in the same order leaves the same answers.
  // Returns what is wrong with `sets` (as Apply_Value_Overrides tells it), or an empty text.
  std::string Replay(TWizard& wizard, const std::vector<std::pair<std::string, std::string>>& sets);

  // The source that set variable `var_idx` (plug-in `plugin`'s item, 0 for the variable itself);
  // Internal when none did.
  TLayer Of(uint16_t var_idx, uint16_t plugin = 0) const;
  // The source that set target `target`'s flags.
  TLayer OfTarget(uint16_t target) const;

 private:
  void Note(TLayer layer, const TWizard& wizard, const std::string& file);

  std::map<std::pair<uint16_t, uint16_t>, TLayer> layers_;  // (var_idx, plugin); var_idx 0: targets
};

}  // namespace tsaw::explain
