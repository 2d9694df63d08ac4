#pragma once
// Saving a Job: the Jobs folder's "Job Model.txt" filled with the current answers and written as
// a Job file that Load_Job and the template catalogue read back.

#include <filesystem>
#include <string>
#include <string_view>

#include "model/wizard.h"

namespace tsaw {

inline constexpr const char* kJobModelFileName = "Job Model.txt";
inline constexpr const char* kDefaultJobFileName = "Job.001.ini";

// The Job text for `model_text`: the preamble up to the first line starting with ";;;;" dropped,
// the "Job.Plugin.ProjectName" and "Job.Plugin.Properties" blocks repeated once per plug-in of
// the selected template, and the first occurrence of each "#Job.…#" placeholder replaced by the
// current answer. Lines end in CR LF. A model without a ";;;;" line gives the empty text.
std::string Fill_Job_Model(const TWizard& wizard, std::string_view model_text);

// Whether Save_Job may replace an existing file: only when the user has said so.
enum class TOverwrite { Refuse, Confirmed };

// Why Save_Job would not write `job_file`, asked before work whose answers are to be saved: its
// folder is missing or cannot take files, it is a folder, it exists and `overwrite` is Refuse,
// or the Jobs folder has no model. The empty text when nothing stands in the way.
std::string Check_Job_File(const TWizard& wizard, const std::filesystem::path& job_file, TOverwrite overwrite);

// Fills the Jobs folder's model and writes the result to `job_file` in UTF-8. Returns the empty
// text on success, otherwise the message to show and nothing is written: "Job Model could not be
// loaded:" CR LF CR LF + the model's full name, or why the file cannot be written (what
// Check_Job_File finds, or the write failed).
std::string Save_Job(const TWizard& wizard, const std::filesystem::path& job_file, TOverwrite overwrite);

// The file a save proposes: the active Job's when its values have been applied, otherwise
// "Job.001.ini" in the Jobs folder.
std::filesystem::path Proposed_Job_File(const TWizard& wizard);

}  // namespace tsaw
