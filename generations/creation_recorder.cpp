#include "generations/creation_recorder.h"

#include <git2.h>
#include <pthread.h>
#include <signal.h>

#include <algorithm>
#include <stdexcept>
#include <system_error>

#include "generations/record.h"
#include "generations/snapshot.h"
#include "generations/template_fingerprint.h"
#include "templates/template_info.h"

namespace tsaw::generations {
namespace fs = std::filesystem;
namespace {

// How much may wait for the writer's spare time before the run's thread takes files itself, down
// to half of it: enough for the writer to take while the run expands the next files, little
// enough to keep memory flat and to leave little for the end of the run.
constexpr size_t kQueuedBytes = size_t{4} << 20;
constexpr size_t kQueuedFiles = 1024;
// How much may wait before the run's thread takes files while it waits for the writer: less, and
// it would take the writer's spare work away; more, and more would be left for Finish.
constexpr size_t kBehindBytes = size_t{1} << 20;
constexpr size_t kBehindFiles = 256;

std::unique_ptr<TGenerationStore> OpenStore(const fs::path& project_set) {
  const std::optional<fs::path> state = StateFolder();
  if (!state) throw std::runtime_error("no state folder: neither $XDG_STATE_HOME nor $HOME is set");
  std::string error;
  auto store = TGenerationStore::Open(*state, project_set, true, error);
  if (!store) throw std::runtime_error(error);
  return store;
}

// Whether `path` is already as lexically_normal would make it: no empty, "." or ".." part.
bool IsNormal(std::string_view path) {
  for (size_t start = 0; start <= path.size();) {
    const size_t end = std::min(path.find('/', start), path.size());
    const std::string_view part = path.substr(start, end - start);
    if (part.empty() || part == "." || part == "..") return false;
    start = end + 1;
  }
  return true;
}

// `file`'s path below `folder`, with '/' between its parts. The run tells the files it writes by
// their plain paths below its folder, which are cut as text: path objects cost the recording
// more than any other step of a small file.
std::string PathBelow(const fs::path& folder, const std::string& file) {
  const std::string& root = folder.native();
  if (!root.empty() && root.back() != '/' && file.size() > root.size() + 1 && file.starts_with(root) &&
      file[root.size()] == '/') {
    const std::string_view below = std::string_view(file).substr(root.size() + 1);
    if (IsNormal(below)) return std::string(below);
  }
  return fs::path(file).lexically_normal().lexically_relative(folder).generic_string();
}

// Adds one written file to the pack, under its path below `folder`, with the limits a snapshot
// of the folder would apply.
void TakeFile(const fs::path& folder, const std::string& file, const std::optional<std::string>& bytes,
              TObjectPack& pack, TFiles& files) {
  const auto [entry, added] = files.try_emplace(PathBelow(folder, file));
  // A file written again replaces its entry and counts once.
  if (added) CheckRecordableCount(folder, files.size() - 1);
  if (bytes) {
    CheckRecordableSize(file, bytes->size());
    entry->second = pack.Add(GIT_OBJECT_BLOB, *bytes);
  } else {
    entry->second = pack.Add(GIT_OBJECT_BLOB, ReadRegularFile(file));
  }
}

// The mark stays until a creation of the folder is recorded, so that the store never offers as
// the base of an update a generation that is not the folder's.
std::string MarkFolderMadeAnew(const fs::path& folder) {
  const std::optional<fs::path> state = StateFolder();
  return state ? MarkMadeAnew(*state, folder) : std::string();
}

}  // namespace

// What the recording holds while the run goes on.
struct TCreationRecorder::TWork {
  explicit TWork(const fs::path& folder) : store(OpenStore(folder)), pack(store->NewPack()) {}

  const std::unique_ptr<TGenerationStore> store;
  TObjectPack pack;
  TFiles files;
};

// Started with the recorder, while the run reads the template: libgit2's start, which reads the
// system's certificates (some milliseconds, though the store never goes online), and the
// template's fingerprint.
TCreationRecorder::TCreationRecorder(const TWizard& wizard) : wizard_(wizard) {
  const fs::path template_folder = wizard.SelectedTemplate ? wizard.SelectedTemplate->FolderPath : "";
  // The thread takes no signals, so they reach the run's thread as they did before it had one.
  sigset_t all, before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  try {
    start_up_ = std::thread([this, template_folder] { StartUp(template_folder); });
  } catch (const std::system_error& failure) {
    start_up_error_ = std::string("no thread to record with: ") + failure.what();
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TCreationRecorder::~TCreationRecorder() {
  if (work_ && !recorded_) work_->store->RemoveIfLeftEmpty();
  work_.reset();
  if (start_up_.joinable()) start_up_.join();
  if (library_started_) git_libgit2_shutdown();
}

void TCreationRecorder::StartUp(const fs::path& template_folder) {
  library_started_ = git_libgit2_init() > 0;
  try {
    if (!template_folder.empty()) fingerprint_ = TemplateFingerprint(template_folder);
  } catch (const std::exception& failure) {
    start_up_error_ = failure.what();
  }
}

std::string TCreationRecorder::MakingAnew(const fs::path& folder) { return MarkFolderMadeAnew(folder); }

std::string TUnrecordedCreation::MakingAnew(const fs::path& folder) { return MarkFolderMadeAnew(folder); }

void TCreationRecorder::Started(const fs::path& folder) {
  folder_ = folder;
  started_ = true;
}

void TCreationRecorder::Written(const fs::path& file, std::string bytes) { Enqueue({file.native(), std::move(bytes)}); }

void TCreationRecorder::Copied(const fs::path& file) { Enqueue({file.native(), std::nullopt}); }

void TCreationRecorder::Enqueue(TQueued item) {
  if (!started_) return;
  std::vector<TQueued> spent;
  bool behind = false;
  {
    const std::lock_guard lock(queue_mutex_);
    if (failed_) return;
    // The files already taken are freed here, by the thread that made them: freeing them on the
    // writer would make both threads contend for the allocator.
    spent.swap(spent_);
    queued_bytes_ += item.Size();
    queue_.push_back(std::move(item));
    behind = queued_bytes_ > kQueuedBytes || queue_.size() > kQueuedFiles;
  }
  if (!behind) return;
  // The writer has had too little spare time: the run's thread takes files itself until half
  // as many wait.
  const std::lock_guard work(work_mutex_);
  for (bool more = true; more;) {
    {
      const std::lock_guard lock(queue_mutex_);
      more = queued_bytes_ > kQueuedBytes / 2 || queue_.size() > kQueuedFiles / 2;
    }
    more = more && Step();
  }
}

bool TCreationRecorder::WorkAWhile(bool run_waits) {
  if (run_waits) {
    const std::lock_guard lock(queue_mutex_);
    if (queued_bytes_ <= kBehindBytes && queue_.size() <= kBehindFiles) return false;
  }
  const std::unique_lock work(work_mutex_, std::try_to_lock);
  return work.owns_lock() && Step();
}

// One piece of the recording, with the work's mutex held: the store opened, or one file taken.
// False when nothing waits, or the recording has failed.
bool TCreationRecorder::Step() {
  if (!started_) return false;
  try {
    if (!work_) {
      {
        const std::lock_guard lock(queue_mutex_);
        if (failed_) return false;
      }
      work_ = std::make_unique<TWork>(folder_);
      return true;
    }
    std::optional<TQueued> item = TakeNext();
    if (!item) return false;
    TakeFile(folder_, item->File, item->Bytes, work_->pack, work_->files);
    Spend(std::move(*item));
    return true;
  } catch (const std::exception& failure) {
    Fail(failure.what());
  } catch (...) {
    Fail("recording the run failed");
  }
  return false;
}

// The oldest file waiting, unless there is none or the recording has failed.
std::optional<TCreationRecorder::TQueued> TCreationRecorder::TakeNext() {
  const std::lock_guard lock(queue_mutex_);
  if (failed_ || queue_.empty()) return std::nullopt;
  TQueued item = std::move(queue_.front());
  queue_.pop_front();
  queued_bytes_ -= item.Size();
  return item;
}

void TCreationRecorder::Spend(TQueued item) {
  const std::lock_guard lock(queue_mutex_);
  spent_.push_back(std::move(item));
}

// Nothing will be recorded: the files waiting are dropped, and no more are queued.
void TCreationRecorder::Fail(const std::string& why) {
  error_ = why;
  std::deque<TQueued> dropped;
  const std::lock_guard lock(queue_mutex_);
  failed_ = true;
  dropped.swap(queue_);
  queued_bytes_ = 0;
}

std::string TCreationRecorder::Finish() {
  TGenerationMeta meta;
  try {
    meta = MetaWithoutFingerprint(wizard_, "creation");
  } catch (const std::exception& failure) {
    return failure.what();
  }
  const std::lock_guard work(work_mutex_);
  while (Step()) {
  }
  {
    const std::lock_guard lock(queue_mutex_);
    if (!work_ || failed_) return error_;
  }
  if (start_up_.joinable()) start_up_.join();
  if (!start_up_error_.empty()) return error_ = start_up_error_;
  try {
    meta.Fingerprint = fingerprint_;
    std::string error;
    TGenerationStore& store = *work_->store;
    if (!store.AddGeneration(work_->pack, work_->files, meta, error) || !store.DropUndo(error) ||
        !store.Prune(error)) {
      throw std::runtime_error(error);
    }
    recorded_ = true;
    error_.clear();
  } catch (const std::exception& failure) {
    error_ = failure.what();
  }
  return error_;
}

}  // namespace tsaw::generations
