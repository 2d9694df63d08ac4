#pragma once
// Writing behind the run: a file is handed to the background writer, and the run reads and
// expands the next one while the kernel makes it. What the user sees keeps the order of a run
// that waits for each write: until the file in flight is settled, the next file's report lines
// and gauge steps are held, and the run neither counts, pumps, nor writes anything else. So at
// every pump point the report, the counters and the folder are what they would be without it.

#include <filesystem>
#include <string>

#include "creation/file_processing.h"
#include "creation/run_context.h"

namespace tsaw::creation {

// Settles the file in flight, then hands the writing of `bytes` into the new file `dest` to the
// background writer: InFlight, or Aborted (nothing handed) when the run stops at the settling.
TFileOutcome WriteBehind(TRunContext& run, const std::filesystem::path& dest, std::string bytes);
// The same for copying `source` into the new file `dest`.
TFileOutcome CopyBehind(TRunContext& run, const std::filesystem::path& source, const std::filesystem::path& dest);

// Waits for the file in flight, if any, and ends it as a run that waits would have right after
// the write: its ERROR line or the listener told, its count, the counters and the pump point.
// Then the held steps are shown. False when the run stops at that pump point: the held steps,
// and a stop reason set since, are dropped, as the next file would not have been begun.
bool SettleFileInFlight(TRunContext& run);

// The end of one file: counted as processed or failed, the counters shown, and the pump point.
// False when the run stops there (aborted, or a stop reason set by the file).
bool CountFile(TRunContext& run, TFileOutcome outcome);

}  // namespace tsaw::creation
