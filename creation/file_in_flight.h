#pragma once
// Writing behind the run: each file is handed to the background writer as soon as its bytes are
// ready, and the run reads and expands the next files while the kernel makes it. What the user
// sees keeps the order of a run that waits for each write: the files are ended one by one in
// order, each with its ERROR line or its telling, its count and its pump point, and only after
// that pump point may the next file be seen in the folder; until then the report lines and gauge
// steps made after a file was handed are held. So at every pump point the report, the counters
// and the folder are what they would be without writing behind, and a run stopped there leaves
// none of the later files.

#include <filesystem>
#include <string>

#include "creation/file_processing.h"
#include "creation/run_context.h"

namespace tsaw::creation {

// Hands the writing of `bytes` into the new file `dest` to the background writer, ending the
// files in flight that it is done with (and the oldest, while too many are in flight): InFlight,
// or Aborted when the run stops at one of their pump points (nothing is then written). A run
// that does not write behind writes the file here: Processed, or Failed with its ERROR line.
TFileOutcome WriteBehind(TRunContext& run, const std::filesystem::path& dest, std::string bytes);
// The same for copying `source` into the new file `dest`.
TFileOutcome CopyBehind(TRunContext& run, const std::filesystem::path& source, const std::filesystem::path& dest);

// Waits for each file in flight, oldest first, and ends it as a run that waits would have right
// after the write: its ERROR line or the listener told, its count, the counters and the pump
// point; then the steps held after it are shown. False when the run stops at a pump point: the
// later files are never seen, and the steps held after them, and a stop reason set since, are
// dropped, as those files would not have been begun.
bool SettleFileInFlight(TRunContext& run);

// Whether files are written behind the run: only when a core is free for the writer besides the
// run's own. Otherwise the two threads would take turns on one core, and waiting for each other
// would cost more than the writer saves.
bool WritesBehind(unsigned cores);

// The end of one file: counted as processed or failed, the counters shown, and the pump point.
// False when the run stops there (aborted, or a stop reason set by the file).
bool CountFile(TRunContext& run, TFileOutcome outcome);

}  // namespace tsaw::creation
