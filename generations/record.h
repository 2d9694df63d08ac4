#pragma once
// The one path by which a finished creation run, in the window or on the command line, is
// remembered: the Project Set it wrote becomes the newest generation of its folder, with the
// answers, the template and the template's fingerprint.

#include <filesystem>
#include <optional>
#include <string>

#include "generations/store.h"
#include "model/wizard.h"

namespace tsaw::generations {

// "$XDG_STATE_HOME/tsaw" (else ~/.local/state/tsaw); nullopt when neither can be had.
std::optional<std::filesystem::path> StateFolder();

// A digest of the names, sizes and change times of every regular file below `folder`.
std::string TemplateFingerprint(const std::filesystem::path& folder);

// What a generation made from the wizard's answers records besides its files.
TGenerationMeta MetaOf(const TWizard& wizard, const std::string& kind);

// True when a generation of `project_set` is recorded (and no other run holds its store).
bool HasRecordedGeneration(const std::filesystem::path& project_set);

// Records the files below `project_set`, just written by a finished run, as its newest
// generation; the undo record of an earlier update is dropped, the old folder having gone to the
// trash. Returns the empty text, or why nothing was recorded (the Project Set is never touched).
std::string RecordCreation(const TWizard& wizard, const std::filesystem::path& project_set);

}  // namespace tsaw::generations
