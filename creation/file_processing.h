#pragma once
// Process_File: one template file written into the Project Set.

#include <filesystem>

#include "creation/run_context.h"

namespace tsaw::creation {

// What became of one file. InFlight: handed to the background writer (file_in_flight.h).
enum class TFileOutcome { Processed, Failed, Aborted, InFlight };

// The folder the files of one template folder go to, with whether it lies inside the Project Set
// (a plain file name then keeps a file there): looked at once for all of those files.
struct TDestFolder {
  std::filesystem::path Path;
  bool Inside = false;
};
TDestFolder DestFolderOf(const TRunContext& run, const std::filesystem::path& path);

// Copies or expands `source` into `dest_folder` under its Project Set name, by extension: plain
// copy; expansion (".rc" and ".dfm" with their quoting); project-settings cleaning; DCI renewal;
// the preprocessor for ".dpr", ".pas" and ".inc". A file that cannot be read, refused (binary
// form, a name leading out of the Project Set) is Failed with an ERROR line; one whose
// expansion breaks the expansion's bounds is Failed and sets the run's stop reason as well; the
// preprocessor's error is thrown on to the run. A file ready to be written is handed to the
// background writer (InFlight) once the file in flight before it is settled, which the renewal of
// a DCI waits for as well; Aborted when the run stops there. Writing errors come with the
// settling. `is_link` says whether the walk's listing found `source` to be a link, which must not
// lead out of the template.
TFileOutcome Process_File(TRunContext& run, const std::filesystem::path& source, bool is_link,
                          const TDestFolder& dest_folder);

// True when the file named `name` is one the walk skips (by extension or name).
bool SkippedFile(const std::string& name);

// The lower-cased extension with its dot ("" for none), as the walk's lists test it.
std::string LowerExtension(const std::string& name);

// True when the file named `name` has its variables expanded (otherwise it is copied as it is).
bool ExpandableFile(const std::string& name);
// True when the file named `name` goes through the template preprocessor.
bool DirectiveAwareFile(const std::string& name);
// True when a form file's bytes are the binary form, which the run refuses.
bool BinaryFormBytes(const std::string& bytes);

}  // namespace tsaw::creation
