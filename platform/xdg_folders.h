#pragma once
// The per-user folders of the XDG Base Directory rules: data, state and config. A variable that is
// unset, empty or relative is ignored, as the rules say, and the home folder's default is used.

#include <filesystem>
#include <optional>

namespace tsaw::platform {

// $XDG_DATA_HOME, else ~/.local/share; nullopt when neither is usable.
std::optional<std::filesystem::path> XdgDataHome();
// $XDG_STATE_HOME, else ~/.local/state; nullopt when neither is usable.
std::optional<std::filesystem::path> XdgStateHome();
// $XDG_CONFIG_HOME, else ~/.config; nullopt when neither is usable.
std::optional<std::filesystem::path> XdgConfigHome();

}  // namespace tsaw::platform
