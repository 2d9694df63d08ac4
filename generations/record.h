#pragma once
// Where the generation stores live, what a generation records besides its files (the answers,
// the template and the template's fingerprint), and whether a folder has a recorded generation.

#include <filesystem>
#include <optional>
#include <string>

#include "generations/store.h"
#include "model/wizard.h"

namespace tsaw::generations {

// "$XDG_STATE_HOME/tsaw" (else ~/.local/state/tsaw); nullopt when neither can be had.
std::optional<std::filesystem::path> StateFolder();

// What a generation made from the wizard's answers records besides its files.
TGenerationMeta MetaOf(const TWizard& wizard, const std::string& kind);
// The same without the template's fingerprint, for a caller that takes it at another time.
TGenerationMeta MetaWithoutFingerprint(const TWizard& wizard, const std::string& kind);

// True when a generation of `project_set` is recorded (and no other run holds its store).
bool HasRecordedGeneration(const std::filesystem::path& project_set);

}  // namespace tsaw::generations
