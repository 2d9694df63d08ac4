#pragma once
// The starting values of the wizard variables: the internal defaults, then the "Default Values"
// sections of the configuration file, the template's "Template.ini" and the active Job, each
// overriding the one before. Every routine acts only when a valid template is selected
// (wizard.SelectedTemplate) and otherwise changes nothing. A missing or unreadable file reads as
// empty: nothing changes.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/ini_file.h"
#include "model/wizard.h"

namespace tsaw {

// Sets every common, plug-in, logging and output variable to the wizard's own default, and makes
// every target allowed and pre-selected, "Delphi.7.Win32" alone required.
void Apply_Internal_Default_Values(TWizard& wizard);
// Applies wizard.ConfigFile's "Default Values", with the unindexed plug-in keys
// ("Plugin.Version") applied to every plug-in.
void Apply_Config_Default_Values(TWizard& wizard);
// Applies the selected template's "Default Values", with the indexed plug-in keys
// ("Plugin[2].Version").
void Apply_Template_Values(TWizard& wizard);
// As Apply_Template_Values on wizard.ActiveJobFile; nothing when no Job is active.
void Apply_Job_Default_Values(TWizard& wizard);

// The part common to every source: custom and look-up variables, the common keys, the target
// flags, the logging flags (Logging.UseTLG false forces the other four false), the cosmetic flag
// and the output folder. Plug-in keys are not read here.
void Apply_Values(TWizard& wizard, const TIniFile& ini, std::string_view section);

// Reads one key into variable `var_idx` (plug-in `plugin` for a plug-in variable). An absent or
// blank key changes nothing. Booleans read "yes", "y", "true", "t", "1" (any case) as "True",
// anything else as "False". A text "value ¦ options" stores the value and sets the variable's
// read-only mark when "$ReadOnly" follows the "¦". A plug-in sub-item's value becomes the
// variable's own default value, not the text read.
void Read(TWizard& wizard, const TIniFile& ini, std::string_view section, std::string_view key,
          bool is_description, uint16_t plugin, uint16_t var_idx);

// Sets "Template.Prefix" from the selected valid template, or clears it when there is none.
void Update_Wizard_Variables(TWizard& wizard);

// Empty when `key` is one of the "Default Values" keys (any letter case; plug-in keys indexed up
// to `plugin_count` or unindexed) for a template with `plugin_count` plug-ins; otherwise what is
// wrong with it.
std::string CheckDefaultValuesKey(std::string_view key, uint16_t plugin_count);

// Applies the key=value pairs in order, each as one more "Default Values" layer of its own (same
// keys and reading rules, so "Logging.UseTLG=no" clears the other logging switches set before it
// but not those set after it; plug-in keys indexed, "Plugin[2].Version", or unindexed for every
// plug-in). Unlike the files, an override of a plug-in key also sets the plug-in's value, since
// nothing later would. Returns an empty text, or what is wrong (no valid template, an unknown key,
// a plug-in number out of range, a line break in a value); on error nothing is applied.
std::string Apply_Value_Overrides(TWizard& wizard,
                                  const std::vector<std::pair<std::string, std::string>>& values);

// One warning, "<file>:<line>: ...", for each key of the "Default Values" section of `ini` that
// reading it would ignore, for a template with `plugin_count` plug-ins: an unknown key, a plug-in
// number out of range, or the plug-in key form the file does not take (`indexed`: Job and template
// files take "Plugin[2].Version"; configuration files take "Plugin.Version").
std::vector<std::string> Ignored_Default_Keys(const TIniFile& ini, uint16_t plugin_count, bool indexed);

}  // namespace tsaw
