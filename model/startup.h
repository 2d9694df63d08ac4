#pragma once
// Start-up values: the fixed variables that do not come from the user (versions, clock, machine
// folders, derived names), the fixed directives, and the custom and look-up variables that a
// template or a configuration declares.

#include <string>

#include "model/ini_file.h"
#include "model/wizard.h"
#include "platform/clock.h"
#include "platform/machine_folders.h"

namespace tsaw {

// What the plug-in object reports about itself.
struct TProgramInfo {
  std::string DeepName;
  std::string Version;  // "6.01"
};

// Sets variables 1 to 13 ("TSA.Version" .. "Path.ProgramFiles") in value, default value and
// identifier value, from one reading of `clock`. Folders that cannot be found give empty
// folders; nothing is reported. Builds the variable table first when it has not been built.
void Set_Fixed_Variables(TWizard& wizard, const TProgramInfo& program, const platform::Clock& clock,
                         const platform::MachineFolders& machine);

// Makes the directive table exactly nine items long (numbers 0 to 8, existing items kept) and
// resets the eight run directive numbers to ddUndef.
void Clear_NonFixed_Directive_Constants(TWizard& wizard);

// Clears the non-fixed directives, then appends the eight fixed directives (numbers 9 to 16) and
// records the last of them. Calling it again gives the same table.
void Set_Fixed_Directives(TWizard& wizard, const TProgramInfo& program);

// Reads the "Custom Variables" (or, with `LookupMode`, "Lookup Variables") section of `ini` into
// "Custom."/"Lookup." variables, creating those not yet in the table. A value may carry
// attributes before its last "¦" ("Title=..", and for look-ups "Kind=..", "Hint=..", separated by
// "¦") and line breaks written as "¶". A look-up variable is linked to the variable it names.
// Lines with an empty value are skipped. A section that would number a variable beyond 65534
// (numbers are 16-bit) is refused whole with std::length_error naming the file and the count.
void Custom_or_Lookup_Variables(TWizard& wizard, const TIniFile& ini, bool LookupMode);

}  // namespace tsaw
