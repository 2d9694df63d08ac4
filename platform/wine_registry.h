#pragma once
// Reading string values from a Wine registry file (system.reg, user.reg): "[key\\path] stamp"
// lines open keys, "\"name\"=\"text\"" lines hold values, both with backslash escapes.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tsaw::platform {

// The text of string value `name` (REG_SZ or REG_EXPAND_SZ; "@" is the default value) under the
// first of `keys` that has it; keys and names match without regard to ASCII letter case. nullopt
// when no key has the value, the value is of another type, or the file cannot be read.
std::optional<std::string> ReadWineRegistryString(const std::filesystem::path& reg_file,
                                                  const std::vector<std::string>& keys, std::string_view name);

}  // namespace tsaw::platform
