#include "update/apply.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <set>
#include <stdexcept>

#include "generations/snapshot.h"

namespace tsaw::update {
namespace fs = std::filesystem;
using generations::TUndoRecord;
namespace {

// Removes the folders above `file` that are left empty, up to `root`.
void RemoveEmptyParents(const fs::path& file, const fs::path& root) {
  std::error_code io;
  for (fs::path folder = file.parent_path(); folder != root && folder.string().size() > root.string().size();
       folder = folder.parent_path()) {
    if (!fs::is_empty(folder, io) || io || !fs::remove(folder, io)) return;
  }
}

void MoveIntoPlace(const fs::path& from, const fs::path& to) {
  std::error_code io;
  fs::create_directories(to.parent_path(), io);
  fs::rename(from, to, io);
  if (io) throw std::runtime_error("'" + to.string() + "' could not be written: " + io.message());
}

void RemoveFile(const fs::path& file, const fs::path& root) {
  std::error_code io;
  if (!fs::is_regular_file(fs::symlink_status(file, io))) return;
  if (!fs::remove(file, io) && io) throw std::runtime_error("'" + file.string() + "' could not be removed: " + io.message());
  RemoveEmptyParents(file, root);
}

// The undo record this update keeps: a new one, or the one of an interrupted update extended by
// the files this attempt touches that the first did not.
TUndoRecord UndoRecordFor(generations::TGenerationStore& store, const TApplyInput& input) {
  std::optional<TUndoRecord> earlier = store.Undo();
  TUndoRecord record;
  if (earlier && !earlier->Finished) {
    record = std::move(*earlier);
  } else {
    const auto generations = store.Generations();
    record.Base = generations.empty() ? 0 : generations.back().Number;
  }
  std::set<std::string> known(record.Added.begin(), record.Added.end());
  for (const auto& [path, id] : record.Saved) known.insert(path);
  for (const TFileAction& action : input.Plan.Files) {
    const std::string target = action.Target();
    if (target.empty() || !known.insert(target).second) continue;
    std::error_code io;
    const fs::path file = input.ProjectSet / target;
    if (fs::is_regular_file(fs::symlink_status(file, io))) {
      record.Saved[target] = input.Pack.Add(GIT_OBJECT_BLOB, generations::ReadRegularFile(file));
    } else {
      record.Added.push_back(target);
    }
  }
  record.Finished = false;
  return record;
}

void Write(const TFileAction& action, const TApplyInput& input) {
  const fs::path target = input.ProjectSet / action.Target();
  switch (action.Write) {
    case TWrite::Nothing: return;
    case TWrite::Theirs:
    case TWrite::Beside: MoveIntoPlace(input.Staging / action.Path, target); return;
    case TWrite::Merged: WriteFileAtomically(target, action.Merged); return;
    case TWrite::Remove: RemoveFile(target, input.ProjectSet); return;
  }
}

}  // namespace

void WriteFileAtomically(const fs::path& file, std::string_view bytes) {
  std::error_code io;
  fs::create_directories(file.parent_path(), io);
  const fs::path temporary = file.parent_path() / ("." + file.filename().string() + ".tsaw-tmp");
  const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  bool written = fd >= 0;
  for (size_t at = 0; written && at < bytes.size();) {
    const ssize_t n = ::write(fd, bytes.data() + at, bytes.size() - at);
    written = n > 0;
    at += written ? static_cast<size_t>(n) : 0;
  }
  if (fd >= 0 && ::close(fd) != 0) written = false;
  if (written) {
    struct stat old;
    if (::stat(file.c_str(), &old) == 0) ::chmod(temporary.c_str(), old.st_mode & 07777);
    written = ::rename(temporary.c_str(), file.c_str()) == 0;
  }
  if (!written) {
    fs::remove(temporary, io);
    throw std::runtime_error("'" + file.string() + "' could not be written");
  }
}

bool ApplyUpdate(generations::TGenerationStore& store, const TApplyInput& input, std::string& error) {
  try {
    TUndoRecord record = UndoRecordFor(store, input);
    if (!store.SetUndo(input.Pack, record, error)) return false;
    for (const TFileAction& action : input.Plan.Files) Write(action, input);
    generations::TObjectPack pack = store.NewPack();
    record.Finished = true;
    return store.AddGeneration(pack, input.Theirs, input.Meta, error) && store.SetUndo(pack, record, error) &&
           store.Prune(error);
  } catch (const std::exception& failure) {
    error = failure.what();
    return false;
  }
}

bool UndoLastUpdate(generations::TGenerationStore& store, const fs::path& project_set, std::string& error) {
  try {
    const std::optional<TUndoRecord> record = store.Undo();
    if (!record) {
      error = "nothing to undo: no update of '" + project_set.string() + "' is recorded";
      return false;
    }
    for (const auto& [path, id] : record->Saved) WriteFileAtomically(project_set / path, store.Read(id));
    for (const std::string& path : record->Added) RemoveFile(project_set / path, project_set);
    return store.DropGenerationsAfter(record->Base, error) && store.DropUndo(error);
  } catch (const std::exception& failure) {
    error = failure.what();
    return false;
  }
}

}  // namespace tsaw::update
