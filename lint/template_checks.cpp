// The checks of "Template.ini": the catalogue's validation, the prefix's form, the "Default Values"
// keys and values, and the folders of the targets the template asks for.

#include <filesystem>

#include "lint/checks.h"
#include "model/ini_file.h"
#include "model/targets.h"
#include "platform/runtime_text.h"
#include "templates/defaults.h"

namespace tsaw::lint {
namespace {

constexpr const char* kIni = "Template.ini";
constexpr std::string_view kDefaults = "Default Values";

std::string FirstLine(const std::string& text) { return text.substr(0, text.find_first_of("\r\n")); }

void CheckValidation(TLintContext& context, const TTemplateInfo& info, const TIniLines& ini) {
  if (info.IsValid) return;
  // The record keeps the first failure's message but the last failure's kind; both are told.
  const std::string message = FirstLine(info.ErrorMessage);
  const bool count_message = message.find("\"PluginCount\"") != std::string::npos;
  const TTemplateError message_kind = count_message ? errInvalidPluginCount : errFieldMissingFromTemplateSection;
  context.Add(kIni, ini.LineOf("Template", count_message ? "PluginCount" : ""), TSeverity::Error,
              message + " (" + kTemplateErrorNames[message_kind] + ")");
  if (info.ErrorKind == errInvalidPluginCount && !count_message) {
    context.Add(kIni, ini.LineOf("Template", "PluginCount"), TSeverity::Error,
                "\"PluginCount\" is not a number from 1 to 999 (" +
                    std::string(kTemplateErrorNames[errInvalidPluginCount]) + ")");
  }
}

bool PrefixHasItsForm(const std::string& prefix) {
  return prefix.size() == 4 && prefix[0] == 'T' && prefix.find_first_not_of("0123456789", 1) == std::string::npos &&
         prefix != "T000";
}

bool IsTargetKey(const std::string& key) {
  for (uint16_t t = 1; t <= kTargetCount; ++t) {
    if (platform::SameText(key, TargetInfo(t).DefaultsKey)) return true;
  }
  return false;
}

bool IsBooleanKey(const std::string& key) {
  for (const char* name : {"Logging.UseTLG", "Logging.LogComments", "Logging.LogInitFinit", "Logging.LogPinCreation",
                           "Logging.LogFunctionResults", "Cosmetic.CommentedHeaders"}) {
    if (platform::SameText(key, name)) return true;
  }
  return false;
}

bool IsBooleanText(const std::string& value) {
  const std::string lowered = platform::LowerAscii(value);
  for (const char* word : {"yes", "y", "true", "t", "1", "no", "n", "false", "f", "0"}) {
    if (lowered == word) return true;
  }
  return false;
}

void CheckDefaultValue(TLintContext& context, const TIniLine& entry, uint16_t plugin_count) {
  if (std::string error = CheckDefaultValuesKey(entry.Key, plugin_count); !error.empty()) {
    context.Add(kIni, entry.Line, TSeverity::Warning, error + "; it is ignored");
  } else if (platform::LowerAscii(entry.Key).starts_with("plugin.")) {
    context.Add(kIni, entry.Line, TSeverity::Warning,
                "\"" + entry.Key + "\" applies only in a configuration file; a template names the plug-in (\"Plugin[1]." +
                    entry.Key.substr(7) + "\")");
  } else if (IsTargetKey(entry.Key) && !entry.Value.empty() && entry.Value != "D" && entry.Value != "R" &&
             entry.Value != "1" && entry.Value != "0") {
    context.Add(kIni, entry.Line, TSeverity::Warning,
                "\"" + entry.Key + "=" + entry.Value +
                    "\": a target takes D (not allowed), R (required) or 1 (selected), letter case as written; "
                    "this value makes the target allowed but not selected");
  } else if (IsBooleanKey(entry.Key) && !entry.Value.empty() && !IsBooleanText(entry.Value)) {
    context.Add(kIni, entry.Line, TSeverity::Warning,
                "\"" + entry.Key + "=" + entry.Value + "\" reads as False (true is yes, y, true, t or 1)");
  }
}

// A required target without its folder is an error of each; the targets selected by default
// without theirs (all eighteen are, unless "Default Values" say otherwise) make one warning.
void CheckTargetFolders(TLintContext& context, const std::vector<TIniLine>& defaults) {
  std::string missing;
  for (uint16_t t = 1; t <= kTargetCount; ++t) {
    const TTargetChoice& choice = context.wizard.Targets[t];
    const TTargetInfo& target = TargetInfo(t);
    std::error_code ec;
    if (!choice.PreSelected || std::filesystem::is_directory(context.folder / target.Folder, ec)) continue;
    if (!choice.Required) {
      missing += (missing.empty() ? "\"" : ", \"") + std::string(target.Folder) + "\"";
      continue;
    }
    int line = 0;
    for (const TIniLine& entry : defaults) {
      if (line == 0 && platform::SameText(entry.Key, target.DefaultsKey)) line = entry.Line;
    }
    context.Add(kIni, line, TSeverity::Error,
                "target \"" + std::string(target.Name) + "\" is required (" + std::string(target.DefaultsKey) +
                    ") but the template has no folder \"" + std::string(target.Folder) + "\"");
  }
  if (!missing.empty()) {
    context.Add(kIni, 0, TSeverity::Warning,
                "targets selected by default have no folder in the template (" + missing +
                    "); a target the template does not offer takes D in \"Default Values\"");
  }
}

}  // namespace

void CheckTemplateIni(TLintContext& context, const TTemplateInfo& info, const TIniLines& ini) {
  CheckValidation(context, info, ini);
  if (!info.Prefix.empty() && !PrefixHasItsForm(info.Prefix)) {
    context.Add(kIni, ini.LineOf("Template", "Prefix"), TSeverity::Error,
                "Prefix \"" + info.Prefix + "\" is not \"T\" followed by a number from 001 to 999 (" +
                    kTemplateErrorNames[errInvalidPrefix] + ")");
  }
  const std::vector<TIniLine> defaults = ini.Section(kDefaults);
  for (const TIniLine& entry : defaults) CheckDefaultValue(context, entry, info.PluginCount);
  CheckTargetFolders(context, defaults);
}

}  // namespace tsaw::lint
