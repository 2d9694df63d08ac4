#pragma once
// How template file and folder names become Project Set names.

#include <string>

#include "model/expand.h"
#include "model/wizard.h"

namespace tsaw::creation {

// The Project Set name of a template file: a leading "<Prefix>_Host" becomes the identifier value
// of Host.ProjectName, "<Prefix>_Pin" (with any digits after it) that of the current plug-in's
// Plugin.ProjectName,
// "<Prefix>_Group" the expansion of #Project.Group#, and any other leading "<Prefix>" the
// identifier value of Projects.Prefix (Prefix: the template's, variable Template.Prefix). Then
// the name is expanded (both forms); a "/" brought in by a value becomes "_".
std::string ProjectFileName(const TWizard& wizard, const std::string& template_name);
// The same over a prepared variable table, as the run names its many files.
std::string ProjectFileName(const TExpansionTable& table, const std::string& template_name);

// The plug-in number of a folder: the decimal digits at the end of its name ("Plugin2" -> 2,
// "Pin 03" -> 3), 1 for "Host", 0 when there are none (or too many to be a plug-in number).
int PluginNumberOfFolder(const std::string& folder_name);

}  // namespace tsaw::creation
