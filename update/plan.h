#pragma once
// The three-way plan of an update: for each file of the last generation (base) or the new one
// (theirs), what becomes of the developer's file on disk (ours). Files only the developer made
// are not in the plan: they stay as they are.

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "generations/store.h"

namespace tsaw::update {

enum class TFate { Kept, Updated, Merged, Conflict, Added, Removed };
inline constexpr std::array<const char*, 6> kFateWords = {"kept", "updated", "merged", "conflict", "added", "removed"};

enum class TWrite {
  Nothing,  // the file stays as it is
  Theirs,   // the new generation's file takes its place
  Merged,   // the merged text (with conflict markers, for a conflict) takes its place
  Beside,   // ours stays; theirs goes beside it as "<name>.tsaw-new"
  Remove,   // the file is removed
};

inline constexpr const char* kBesideSuffix = ".tsaw-new";

struct TFileAction {
  std::string Path;  // relative to the Project Set folder, '/' between names
  TFate Fate = TFate::Kept;
  TWrite Write = TWrite::Nothing;
  std::string Merged;  // the text for TWrite::Merged

  // The file the action writes or removes; empty for TWrite::Nothing.
  std::string Target() const;
};

struct TUpdatePlan {
  std::vector<TFileAction> Files;  // in path order
  int Count(TFate fate) const;
};

// Where the plan reads its three sides.
struct TUpdateSides {
  const generations::TFiles& Base;
  std::function<std::string(const generations::TObjectId&)> ReadBase;
  std::filesystem::path Ours;  // the Project Set folder
  const generations::TFiles& Theirs;
  std::filesystem::path TheirsFolder;  // the staging folder holding the new generation
};

// Plans the update; reads every side but writes nothing. Throws std::runtime_error naming the
// file when one cannot be read.
TUpdatePlan PlanUpdate(const TUpdateSides& sides);

}  // namespace tsaw::update
