#pragma once
// The one path by which a finished creation run, in the window or on the command line, is
// remembered: attached to the run, it takes each file as the run writes it, hashing it and adding
// it to the generation's pack, so that the Project Set is never read again. That work waits in a
// queue and is done a file at a time by the run's writer whenever it has no file to write; the
// run's thread does it while it waits for the writer once much is waiting, and when the run has
// no writer. The template's fingerprint is taken on a thread of its own from the start, while the
// run reads the template. Finish does what is left and makes the newest generation of the
// Project Set, with the answers, the template and its fingerprint; a recorder destroyed without
// Finish (the run was aborted, stopped or failed) adds nothing to the store. The recorder must
// outlive the runs it is attached to.

#include <deque>
#include <filesystem>
#include <memory>
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
  // The store of `folder` is opened by the first piece of work; once per recorder.
  void Started(const std::filesystem::path& folder) override;
  void Written(const std::filesystem::path& file, std::string bytes) override;
  void Copied(const std::filesystem::path& file) override;
  // One piece of the recording, unless another thread is doing one, or the run waits and the
  // work is not behind.
  bool WorkAWhile(bool run_waits) override;

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
  struct TWork;
  void StartUp(const std::filesystem::path& template_folder);
  void Enqueue(TQueued item);
  bool Step();
  std::optional<TQueued> TakeNext();
  void Spend(TQueued item);
  void Fail(const std::string& why);

  const TWizard& wizard_;
  // The start-up thread's, until it is joined.
  std::thread start_up_;
  bool library_started_ = false;
  std::string fingerprint_;      // of the template, empty without one
  std::string start_up_error_;  // why the fingerprint could not be taken
  // Set by Started, before the run has a writer.
  std::filesystem::path folder_;
  bool started_ = false;
  // The queue, under its mutex.
  std::mutex queue_mutex_;
  std::deque<TQueued> queue_;
  std::vector<TQueued> spent_;  // taken by the work, to be freed by the run's thread
  size_t queued_bytes_ = 0;     // the bytes of the files in the queue
  bool failed_ = false;         // nothing more is queued
  // The work, under its mutex: whichever thread holds it does the next piece.
  std::mutex work_mutex_;
  std::unique_ptr<TWork> work_;  // made by the first piece
  bool recorded_ = false;
  std::string error_ = "the run made no Project Set folder";  // why nothing is recorded
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
