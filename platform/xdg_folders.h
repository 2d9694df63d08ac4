#pragma once
// The per-user folders of the XDG Base Directory rules: data, state and config. A variable that is
// unset, empty or relative is ignored, as the rules say, and the home folder's default is used.

#include <filesystem>
#include <optional>
#include <string_view>

namespace tsaw::platform {

// $XDG_DATA_HOME, else ~/.local/share; nullopt when neither is usable.
std::optional<std::filesystem::path> XdgDataHome();
// $XDG_STATE_HOME, else ~/.local/state; nullopt when neither is usable.
std::optional<std::filesystem::path> XdgStateHome();
// $XDG_CONFIG_HOME, else ~/.config; nullopt when neither is usable.
std::optional<std::filesystem::path> XdgConfigHome();

// The data folder by the same rule from given texts (`xdg_data_home` and `home` as the variables
// would hold them), for callers that take their environment as a value.
std::optional<std::filesystem::path> XdgDataHomeFrom(std::string_view xdg_data_home, std::string_view home);

}  // namespace tsaw::platform
