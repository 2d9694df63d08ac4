#include "generations/creation_recorder.h"

#include <pthread.h>
#include <signal.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "generations/record.h"
#include "generations/snapshot.h"
#include "generations/template_fingerprint.h"
#include "templates/template_info.h"

namespace tsaw::generations {
namespace fs = std::filesystem;
namespace {

// How far the helper may fall behind before the run waits: enough to keep it busy while the run
// expands the next files, little enough to keep memory flat.
constexpr size_t kQueuedBytes = size_t{4} << 20;
constexpr size_t kQueuedFiles = 1024;
// The helper is woken once this much waits, not for every file: each wake-up costs the system.
constexpr size_t kWakeBytes = size_t{1} << 20;
constexpr size_t kWakeFiles = 128;
// Folder entries of the template looked at between two looks at the queue.
constexpr size_t kFingerprintEntries = 64;

std::unique_ptr<TGenerationStore> OpenStore(const fs::path& project_set) {
  const std::optional<fs::path> state = StateFolder();
  if (!state) throw std::runtime_error("no state folder: neither $XDG_STATE_HOME nor $HOME is set");
  std::string error;
  auto store = TGenerationStore::Open(*state, project_set, true, error);
  if (!store) throw std::runtime_error(error);
  return store;
}

// Adds one written file to the pack, under its path below `folder`, with the limits a snapshot
// of the folder would apply.
void TakeFile(const fs::path& folder, const fs::path& file, const std::optional<std::string>& bytes,
              TObjectPack& pack, TFiles& files) {
  std::string relative = file.lexically_normal().lexically_relative(folder).generic_string();
  // A file written again replaces its entry and counts once.
  if (files.count(relative) == 0) CheckRecordableCount(folder, files.size());
  if (bytes) {
    CheckRecordableSize(file, bytes->size());
    files[std::move(relative)] = pack.Add(GIT_OBJECT_BLOB, *bytes);
  } else {
    files[std::move(relative)] = pack.Add(GIT_OBJECT_BLOB, ReadRegularFile(file));
  }
}

// The mark stays until a creation of the folder is recorded, so that the store never offers as
// the base of an update a generation that is not the folder's.
std::string MarkFolderMadeAnew(const fs::path& folder) {
  const std::optional<fs::path> state = StateFolder();
  return state ? MarkMadeAnew(*state, folder) : std::string();
}

}  // namespace

TCreationRecorder::TCreationRecorder(const TWizard& wizard) : wizard_(wizard) {}

TCreationRecorder::~TCreationRecorder() { StopWorker(true); }

std::string TCreationRecorder::MakingAnew(const fs::path& folder) { return MarkFolderMadeAnew(folder); }

std::string TUnrecordedCreation::MakingAnew(const fs::path& folder) { return MarkFolderMadeAnew(folder); }

void TCreationRecorder::Started(const fs::path& folder) {
  const fs::path template_folder = wizard_.SelectedTemplate ? wizard_.SelectedTemplate->FolderPath : "";
  // The helper takes no signals, so they reach the run's thread as they did before it had one.
  sigset_t all, before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  try {
    worker_ = std::thread([this, folder, template_folder] { Work(folder, template_folder); });
  } catch (const std::system_error& failure) {
    error_ = std::string("no thread to record with: ") + failure.what();
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void TCreationRecorder::Written(const fs::path& file, std::string bytes) { Enqueue({file.native(), std::move(bytes)}); }

void TCreationRecorder::Copied(const fs::path& file) { Enqueue({file.native(), std::nullopt}); }

void TCreationRecorder::Enqueue(TQueued item) {
  if (!worker_.joinable()) return;
  const size_t size = item.Size();
  std::vector<TQueued> spent;
  std::unique_lock lock(mutex_);
  for (;;) {
    // The files the helper is done with are freed here, by the thread that made them: freeing
    // them on the helper would make both threads contend for the allocator.
    for (TQueued& done : spent_) {
      held_bytes_ -= done.Size();
      spent.push_back(std::move(done));
    }
    spent_.clear();
    if (queue_.empty() || (held_bytes_ + size <= kQueuedBytes && queue_.size() < kQueuedFiles)) break;
    changed_.wait(lock);
  }
  held_bytes_ += size;
  queued_bytes_ += size;
  queue_.push_back(std::move(item));
  const bool wake = queue_.size() >= kWakeFiles || queued_bytes_ >= kWakeBytes;
  lock.unlock();
  if (wake) changed_.notify_all();
}

// Every file waiting for the helper, taken at once so that the two threads seldom meet at the
// lock; none once the run is over (or its files are not wanted), or at once when none is waiting
// and `wait` is false. `done` are the files the helper has just taken.
std::vector<TCreationRecorder::TQueued> TCreationRecorder::TakeWaiting(bool wait, std::vector<TQueued> done) {
  std::vector<TQueued> taken;
  std::unique_lock lock(mutex_);
  std::move(done.begin(), done.end(), std::back_inserter(spent_));
  if (wait) changed_.wait(lock, [this] { return !queue_.empty() || closing_; });
  if (discard_) return taken;
  taken.swap(queue_);
  queued_bytes_ = 0;
  lock.unlock();
  changed_.notify_all();
  return taken;
}

// The helper thread: the store is opened, filled and closed here, and after a failure the files
// still told are taken off the queue unread, so the run never waits for nothing.
void TCreationRecorder::Work(const fs::path& folder, const fs::path& template_folder) {
  try {
    const std::unique_ptr<TGenerationStore> store = OpenStore(folder);
    TTemplateFingerprint fingerprint(template_folder);
    bool walking = true;
    std::string digest;
    TObjectPack pack = store->NewPack();
    TFiles files;
    // The template is walked only while no file waits, so that the run is not held up by it.
    std::vector<TQueued> batch;
    for (;;) {
      batch = TakeWaiting(!walking, std::move(batch));
      if (!batch.empty()) {
        for (const TQueued& item : batch) TakeFile(folder, fs::path(item.File), item.Bytes, pack, files);
      } else if (walking) {
        walking = fingerprint.Step(kFingerprintEntries);
        if (!walking) digest = fingerprint.Digest();
      } else {
        break;
      }
    }
    std::optional<TGenerationMeta> meta;
    {
      const std::lock_guard lock(mutex_);
      if (!discard_) meta = meta_;
    }
    if (!meta) {
      store->RemoveIfLeftEmpty();
      return;
    }
    if (!template_folder.empty()) meta->Fingerprint = digest;
    std::string error;
    if (!store->AddGeneration(pack, files, *meta, error) || !store->DropUndo(error) || !store->Prune(error)) {
      throw std::runtime_error(error);
    }
    error_.clear();
  } catch (const std::exception& failure) {
    error_ = failure.what();
    while (!TakeWaiting(true, {}).empty()) {
    }
  }
}

std::string TCreationRecorder::Finish() {
  try {
    TGenerationMeta meta = MetaWithoutFingerprint(wizard_, "creation");
    const std::lock_guard lock(mutex_);
    meta_ = std::move(meta);
  } catch (const std::exception& failure) {
    return failure.what();
  }
  StopWorker(false);
  return error_;
}

void TCreationRecorder::StopWorker(bool discard) {
  {
    const std::lock_guard lock(mutex_);
    closing_ = true;
    discard_ = discard_ || discard;
  }
  changed_.notify_all();
  if (worker_.joinable()) worker_.join();
}

}  // namespace tsaw::generations
