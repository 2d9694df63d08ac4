#pragma once
// Taking the wizard's own names out of the conditional defines of project-settings files, so that
// the generated projects compile without them.

#include <functional>
#include <string>
#include <vector>

namespace tsaw::creation {

// The defines text with the seven wizard names removed (case-sensitive, also inside longer
// names), ";;" collapsed and ";" trimmed from both ends.
std::string CleanDefines(std::string text);

// Remove_Template_Directives: rewrites the defines entry of a ".cfg", ".dof", ".bdsproj" or
// ".dproj" file (`file_ext` lower-cased, with its dot) in `lines`. A file without the entry, or
// with an empty one, is left unchanged (a debug line says so). Progress lines go to `report`.
void Remove_Template_Directives(std::vector<std::string>& lines, const std::string& file_ext,
                                const std::function<void(const std::string&)>& report);

}  // namespace tsaw::creation
