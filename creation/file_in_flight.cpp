#include "creation/file_in_flight.h"

#include <memory>
#include <utility>
#include <vector>

#include "model/file_bytes.h"

namespace tsaw::creation {
namespace fs = std::filesystem;
namespace {

// While a file's end is shown, with later files in flight, nothing is held.
class TSettling {
 public:
  explicit TSettling(TRunContext& run) : run_(run) { run_.settling = true; }
  ~TSettling() { run_.settling = false; }
  TSettling(const TSettling&) = delete;
  TSettling& operator=(const TSettling&) = delete;

 private:
  TRunContext& run_;
};

// What the run does after writing `file`: tells the listener, or reports why it failed.
TFileOutcome Land(TRunContext& run, TFileInFlight& file, bool written, const std::string& error) {
  if (written && run.written) {
    if (file.copy) {
      run.written->Copied(file.dest);
    } else {
      run.written->Written(file.dest, std::move(file.bytes));
    }
  }
  if (written) return TFileOutcome::Processed;
  if (file.copy) {
    run.Report("Non-expandable file could not be copied.  Source: '" + file.source.string() +
               "'  Destination: '" + file.dest.string() + "' (" + error + ")");
  } else {
    run.Report("      ERROR: File could not be saved: " + error);
  }
  return TFileOutcome::Failed;
}

// The run stops before the files still in flight: none of them is ever seen, and what was held
// after them is dropped.
void GiveUpAll(TRunContext& run) {
  run.writer->GiveUpRest();
  run.in_flight.clear();
}

void Show(TRunContext& run, const std::vector<THeldStep>& held) {
  for (const THeldStep& step : held) {
    if (step.gauge) {
      run.ShowGaugeStep();
    } else {
      run.ShowLine(step.line);
    }
  }
}

TFreshFile FreshFileOf(const TFileInFlight& file) {
  return file.copy ? TFreshFile::CopyOf(file.source, file.dest) : TFreshFile::OfBytes(file.dest, file.bytes);
}

// Ends the oldest file in flight as a run that waits would have right after writing it, lets the
// next one be seen, and shows what was held after it. False when the run stops at its pump point;
// the later files are then given up.
bool EndOldest(TRunContext& run) {
  TFileInFlight file;
  std::string later_stop;
  bool goes_on = false;
  try {
    std::string error;
    const bool written = run.writer->Wait(error);
    file = std::move(run.in_flight.front());
    run.in_flight.pop_front();
    // A stop reason set since belongs to a later file, which comes after this one's end.
    later_stop = std::exchange(run.stop_reason, {});
    const TSettling settling(run);
    goes_on = CountFile(run, Land(run, file, written, error));
  } catch (...) {
    GiveUpAll(run);
    throw;
  }
  if (!goes_on) {
    GiveUpAll(run);
    return false;
  }
  run.stop_reason = std::move(later_stop);
  if (!run.in_flight.empty()) run.writer->Let(true);
  Show(run, file.held);
  return true;
}

// The writer does the listener's own work whenever it has no file to write.
std::unique_ptr<TBackgroundWriter> MakeWriter(TWrittenFiles* listener) {
  if (!listener) return std::make_unique<TBackgroundWriter>();
  return std::make_unique<TBackgroundWriter>([listener](bool run_waits) { return listener->WorkAWhile(run_waits); });
}

// Hands `record` to the writer, which fills it unseen at once. It is let be seen when the file
// before it has ended, or now if none is in flight. The files the writer is done with are ended
// now, and the oldest is waited for while too many are in flight.
TFileOutcome Hand(TRunContext& run, TFileInFlight record) {
  if (!run.writer) run.writer = MakeWriter(run.written);
  while (run.in_flight.size() >= TBackgroundWriter::kMostFiles) {
    if (!EndOldest(run)) return TFileOutcome::Aborted;
  }
  // The writer reads the bytes where they lie in the deque, which does not move its elements.
  const TFileInFlight& file = run.in_flight.emplace_back(std::move(record));
  try {
    run.writer->Start(FreshFileOf(file));
  } catch (...) {
    run.in_flight.pop_back();
    throw;
  }
  if (run.in_flight.size() == 1) run.writer->Let(true);
  while (!run.in_flight.empty() && run.writer->Done()) {
    if (!EndOldest(run)) return TFileOutcome::Aborted;
  }
  return TFileOutcome::InFlight;
}

// Hands `file` to the writer, or without one writes it here and now.
TFileOutcome Write(TRunContext& run, TFileInFlight file) {
  if (run.write_behind) return Hand(run, std::move(file));
  std::string error;
  const bool written = FreshFileOf(file).Show(&error);
  return Land(run, file, written, error);
}

}  // namespace

TFileOutcome WriteBehind(TRunContext& run, const fs::path& dest, std::string bytes) {
  return Write(run, {{}, dest, std::move(bytes), false, {}});
}

TFileOutcome CopyBehind(TRunContext& run, const fs::path& source, const fs::path& dest) {
  return Write(run, {source, dest, {}, true, {}});
}

bool WritesBehind(unsigned cores) { return cores >= 2; }

bool SettleFileInFlight(TRunContext& run) {
  while (!run.in_flight.empty()) {
    if (!EndOldest(run)) return false;
  }
  return true;
}

bool CountFile(TRunContext& run, TFileOutcome outcome) {
  if (outcome == TFileOutcome::Aborted) return false;
  ++(outcome == TFileOutcome::Processed ? run.counters.FilesProcessed : run.counters.FilesFailed);
  // A file that broke a bound stops the run: the next would most likely break it too.
  if (!run.stop_reason.empty()) return false;
  run.ShowCounters();
  return run.Pump();
}

}  // namespace tsaw::creation
