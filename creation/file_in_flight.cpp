#include "creation/file_in_flight.h"

#include <utility>
#include <vector>

#include "model/file_bytes.h"

namespace tsaw::creation {
namespace fs = std::filesystem;
namespace {

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

// SettleFileInFlight but for showing the held steps, which it leaves in `held`.
bool EndFileInFlight(TRunContext& run, std::vector<THeldStep>& held) {
  if (!run.in_flight) return true;
  // Taken first, so that if the write threw, the exception leaves nothing in flight behind it.
  const std::unique_ptr<TFileInFlight> file = std::move(run.in_flight);
  held = std::exchange(run.held, {});
  std::string error;
  const bool written = run.writer->Wait(error);
  // A stop reason set since belongs to the next file, which comes after this one's end.
  std::string later_stop = std::exchange(run.stop_reason, {});
  if (!CountFile(run, Land(run, *file, written, error))) return false;
  run.stop_reason = std::move(later_stop);
  return true;
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

// Ends the file in flight, hands `file` to the writer, and only then shows what was held, which
// no pump point comes between: the writer need not wait for that.
TFileOutcome Hand(TRunContext& run, TFileInFlight file) {
  std::vector<THeldStep> held;
  if (!EndFileInFlight(run, held)) return TFileOutcome::Aborted;
  if (!run.writer) run.writer = std::make_unique<TBackgroundWriter>();
  auto in_flight = std::make_unique<TFileInFlight>(std::move(file));
  run.writer->Start([&file = *in_flight](std::string& error) {
    // The Project Set folder is new, so its files are too.
    if (file.copy) return CopyFileBytes(file.source, file.dest, &error, TPlacement::Fresh);
    return WriteFileBytes(file.dest, file.bytes, &error, TPlacement::Fresh);
  });
  run.in_flight = std::move(in_flight);
  Show(run, held);
  return TFileOutcome::InFlight;
}

}  // namespace

TFileOutcome WriteBehind(TRunContext& run, const fs::path& dest, std::string bytes) {
  return Hand(run, {{}, dest, std::move(bytes), false});
}

TFileOutcome CopyBehind(TRunContext& run, const fs::path& source, const fs::path& dest) {
  return Hand(run, {source, dest, {}, true});
}

bool SettleFileInFlight(TRunContext& run) {
  std::vector<THeldStep> held;
  if (!EndFileInFlight(run, held)) return false;
  Show(run, held);
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
