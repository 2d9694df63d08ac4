#pragma once
// The one path by which a finished creation run, in the window or on the command line, is
// remembered: attached to the run, it takes each file as the run writes it, hashing it and adding
// it to the generation's pack on one helper thread behind the run, so that the Project Set is
// never read again; the helper also takes the template's fingerprint meanwhile. The run waits for
// that thread only when a few megabytes are queued. Finish makes the newest generation of the
// Project Set, with the answers, the template and its fingerprint; a recorder destroyed without
// Finish (the run was aborted, stopped or failed) adds nothing to the store.

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "creation/written_files.h"
#include "generations/store.h"
#include "model/wizard.h"

namespace tsaw::generations {

class TCreationRecorder final : public creation::TWrittenFiles {
 public:
  // Records the runs of `wizard`, which must outlive the recorder.
  explicit TCreationRecorder(const TWizard& wizard);
  ~TCreationRecorder() override;
  TCreationRecorder(const TCreationRecorder&) = delete;
  TCreationRecorder& operator=(const TCreationRecorder&) = delete;

  // Marks the store of `folder` until this run is recorded; refuses while another run holds it.
  std::string MakingAnew(const std::filesystem::path& folder) override;
  // Opens the store of `folder` (on the helper thread); once per recorder.
  void Started(const std::filesystem::path& folder) override;
  void Written(const std::filesystem::path& file, std::string bytes) override;
  void Copied(const std::filesystem::path& file) override;
  // The helper that hashes and packs the files.
  unsigned BusyThreads() const override { return 1; }

  // After a finished run: records what it wrote as the newest generation, with the answers as
  // they stand; the undo record of an earlier update is dropped, the old folder having gone to
  // the trash. Returns the empty text, or why nothing was recorded (the Project Set is never
  // touched).
  std::string Finish();

 private:
  struct TQueued {
    std::string File;  // its path as text: a path object would cost the run an allocation per part
    std::optional<std::string> Bytes;  // none: the file is read
    size_t Size() const { return Bytes ? Bytes->size() : 0; }
  };
  void Enqueue(TQueued item);
  std::vector<TQueued> TakeWaiting(bool wait, std::vector<TQueued> done);
  void Work(const std::filesystem::path& folder, const std::filesystem::path& template_folder);
  void StopWorker(bool discard);

  const TWizard& wizard_;
  std::thread worker_;
  std::mutex mutex_;
  std::condition_variable changed_;
  // Shared with the helper, under the mutex.
  std::vector<TQueued> queue_;
  std::vector<TQueued> spent_;  // taken by the helper, to be freed by the run's thread
  size_t queued_bytes_ = 0;     // the bytes of the files in the queue
  size_t held_bytes_ = 0;       // ... in the queue, with the helper and spent
  bool closing_ = false;                  // nothing more comes
  bool discard_ = false;                  // what remains is not wanted
  std::optional<TGenerationMeta> meta_;   // set by Finish: the helper records the generation
  // The helper's until it is joined: why nothing is recorded.
  std::string error_ = "the run made no Project Set folder";
};

// For a creation that is not recorded (--no-record): the store of the folder it makes anew no
// longer describes that folder, which the store is told; nothing else is kept.
class TUnrecordedCreation final : public creation::TWrittenFiles {
 public:
  std::string MakingAnew(const std::filesystem::path& folder) override;
  void Started(const std::filesystem::path&) override {}
  void Written(const std::filesystem::path&, std::string) override {}
  void Copied(const std::filesystem::path&) override {}
};

}  // namespace tsaw::generations
