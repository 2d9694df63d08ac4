#pragma once
// Expand_System_Variables: the variables built from other answers, computed once before a run.

#include "model/wizard.h"

namespace tsaw::creation {

// Selects no target, expands in place the variables whose values are built from other variables
// (Path.TsaProjects, Copyright, Host.ProjectName, Manager.Author, Manager.Copyright,
// Output.BaseFolder, every plug-in's texts with that plug-in current, and the custom variables),
// renewing their identifier values (folders and descriptions keep none); then sets
// Host.Source.Prefix (when empty) to the identifier value of Projects.Prefix and the plug-ins'
// Plugin.Source.Prefix to "%sp%.2d" of it ("Acme", plug-in 3: "Acmep03"). Project.Group stays
// as it is: it names the current target.
void Expand_System_Variables(TWizard& wizard);

}  // namespace tsaw::creation
