#include "update/plan.h"

#include <algorithm>
#include <optional>

#include "generations/snapshot.h"
#include "update/merge.h"

namespace tsaw::update {
namespace fs = std::filesystem;
using generations::TObjectId;
namespace {

struct Ours {
  bool Regular = false;  // a regular file stands at the path
  bool Other = false;    // something else does (a folder, a link)
  TObjectId Id{};
  std::string Bytes;
};

Ours ReadOurs(const fs::path& file) {
  Ours ours;
  std::error_code io;
  const fs::file_status status = fs::symlink_status(file, io);
  if (!fs::exists(status)) return ours;
  if (!fs::is_regular_file(status)) {
    ours.Other = true;
    return ours;
  }
  ours.Regular = true;
  ours.Bytes = generations::ReadRegularFile(file);
  ours.Id = generations::HashObject("blob", ours.Bytes);
  return ours;
}

TFileAction Act(const std::string& path, TFate fate, TWrite write) { return {path, fate, write, {}}; }

// Both sides changed the file, differently.
TFileAction MergeBoth(const std::string& path, const TUpdateSides& sides, const TObjectId& base, const Ours& ours) {
  const std::string base_bytes = sides.ReadBase(base);
  const std::string theirs = generations::ReadRegularFile(sides.TheirsFolder / path);
  if (LooksBinary(base_bytes) || LooksBinary(ours.Bytes) || LooksBinary(theirs)) {
    return Act(path, TFate::Conflict, TWrite::Beside);
  }
  TMergeResult merged = MergeText(base_bytes, ours.Bytes, theirs);
  return {path, merged.Clean ? TFate::Merged : TFate::Conflict, TWrite::Merged, std::move(merged.Text)};
}

std::optional<TFileAction> PlanFile(const std::string& path, const TUpdateSides& sides) {
  const auto base = sides.Base.find(path);
  const auto theirs = sides.Theirs.find(path);
  const bool in_base = base != sides.Base.end(), in_theirs = theirs != sides.Theirs.end();
  const Ours ours = ReadOurs(sides.Ours / path);
  if (ours.Other) return Act(path, in_theirs ? TFate::Conflict : TFate::Kept, in_theirs ? TWrite::Beside : TWrite::Nothing);
  if (!in_theirs) {  // the template no longer makes it
    if (!ours.Regular) return std::nullopt;
    if (ours.Id == base->second) return Act(path, TFate::Removed, TWrite::Remove);
    return Act(path, TFate::Kept, TWrite::Nothing);
  }
  if (!in_base) {  // new in the template
    if (!ours.Regular) return Act(path, TFate::Added, TWrite::Theirs);
    return ours.Id == theirs->second ? Act(path, TFate::Kept, TWrite::Nothing)
                                     : Act(path, TFate::Conflict, TWrite::Beside);
  }
  if (!ours.Regular) {  // the developer removed it
    return theirs->second == base->second ? Act(path, TFate::Kept, TWrite::Nothing)
                                          : Act(path, TFate::Conflict, TWrite::Beside);
  }
  if (ours.Id == theirs->second || theirs->second == base->second) return Act(path, TFate::Kept, TWrite::Nothing);
  if (ours.Id == base->second) return Act(path, TFate::Updated, TWrite::Theirs);
  return MergeBoth(path, sides, base->second, ours);
}

}  // namespace

std::string TFileAction::Target() const {
  switch (Write) {
    case TWrite::Nothing: return {};
    case TWrite::Beside: return Path + kBesideSuffix;
    default: return Path;
  }
}

int TUpdatePlan::Count(TFate fate) const {
  return static_cast<int>(std::count_if(Files.begin(), Files.end(), [fate](const TFileAction& f) { return f.Fate == fate; }));
}

TUpdatePlan PlanUpdate(const TUpdateSides& sides) {
  std::vector<std::string> paths;
  for (const auto& [path, id] : sides.Base) paths.push_back(path);
  for (const auto& [path, id] : sides.Theirs) {
    if (!sides.Base.count(path)) paths.push_back(path);
  }
  std::sort(paths.begin(), paths.end());
  TUpdatePlan plan;
  for (const std::string& path : paths) {
    if (std::optional<TFileAction> action = PlanFile(path, sides)) plan.Files.push_back(std::move(*action));
  }
  return plan;
}

}  // namespace tsaw::update
