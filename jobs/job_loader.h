#pragma once
// Loading and closing a Job: which Job is active and which template it names. The Job's values
// themselves are applied later, by the template catalogue, when its template is selected.

#include <filesystem>
#include <string>

#include "model/wizard.h"

namespace tsaw {

// Makes `job_file` the active Job: forgets the selected template, reads "Job"/Template and sets
// the selected template path to the templates folder + that value (either separator accepted),
// and clears the Job-values-applied flag. When the file cannot be read, names no template, names
// a path that leaves the templates folder (".." or an absolute path) or a template that is no
// longer there, no template is selected, no Job stays active, and the returned message says what
// was wrong and where. Returns an empty text when the Job is active. Never throws.
std::string Load_Job(TWizard& wizard, const std::filesystem::path& job_file);

// Ends the active Job: no Job file, flag cleared, and the last applied template forgotten so that
// selecting a template applies its defaults afresh (discarding the Job's values).
void Close_Job(TWizard& wizard);

}  // namespace tsaw
