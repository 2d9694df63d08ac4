#pragma once
// What the look-up button of a field offers: the values of the field's related look-up variable,
// sorted and each once, under that variable's title.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/wizard.h"

namespace tsaw {

struct TLookupRequest {
  std::string Caption;              // the look-up variable's title
  std::vector<std::string> Values;  // ascending, without duplicates, never empty
};

// The values of `list_text` (one a line, CR LF or LF), ascending with ASCII letter case ignored;
// a value equal to an earlier one but for letter case is dropped, and so are empty lines.
std::vector<std::string> LookupValues(std::string_view list_text);

// The look-up offered for variable `var_idx`: nullopt when the variable does not exist, has no
// related look-up variable, or that variable's expansion holds no value.
std::optional<TLookupRequest> LookupFor(const TWizard& wizard, uint16_t var_idx);

}  // namespace tsaw
