#pragma once
// Carrying out an update plan on the Project Set, and undoing the last update. Before the first
// write the undo record holds the earlier content of every file the update changes or removes
// and the names of the files it adds; every write goes to a temporary file that is then renamed,
// so an interruption leaves the old or the new content in each file, and the next update or undo
// still works. An update that was interrupted keeps the undo record of the first attempt, so that
// undo goes back to the state before it.

#include <filesystem>
#include <string>

#include "generations/store.h"
#include "update/plan.h"

namespace tsaw::update {

struct TApplyInput {
  const TUpdatePlan& Plan;
  std::filesystem::path ProjectSet;
  std::filesystem::path Staging;     // the new generation; its files are moved out of it
  const generations::TFiles& Theirs;
  generations::TObjectPack& Pack;     // holds the new generation's contents
  generations::TGenerationMeta Meta;  // of the new generation
};

// Records the undo state, writes the plan, then records the new generation as the newest. On
// failure returns false with `error` set; what was written stays undoable.
bool ApplyUpdate(generations::TGenerationStore& store, const TApplyInput& input, std::string& error);

// Puts the Project Set back as it was before the last update: byte for byte, the files it added
// removed, and the generation it recorded dropped. False with `error` set when there is nothing
// to undo or a file cannot be written.
bool UndoLastUpdate(generations::TGenerationStore& store, const std::filesystem::path& project_set,
                    std::string& error);

// Writes `bytes` to a temporary file beside `file`, then renames it over `file`; parent folders
// are made as needed. Throws std::runtime_error naming the file on failure.
void WriteFileAtomically(const std::filesystem::path& file, std::string_view bytes);

}  // namespace tsaw::update
