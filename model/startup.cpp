#include "model/startup.h"

#include <optional>
#include <stdexcept>
#include <unordered_map>
#include <string_view>
#include <vector>

#include "model/expand.h"
#include "model/folders.h"
#include "model/format.h"
#include "model/text_file.h"
#include "model/variables.h"
#include "platform/runtime_text.h"
#include "platform/debug_log.h"

namespace tsaw {
namespace {

constexpr std::string_view kBrokenBar = "\xC2\xA6";  // "¦"
constexpr std::string_view kPilcrow = "\xC2\xB6";    // "¶"
constexpr uint16_t kNineKeptDirectives = 9;
// Variable numbers are 16-bit and loops over the table run to the last number inclusive; the
// highest number stays below the type's largest value so that no such loop can wrap.
constexpr size_t kHighestVariableNumber = 0xFFFE;

void EnsureVariableTable(TWizard& wizard) {
  if (wizard.Variables.size() < kInitialVariableCount) Init_Variables(wizard);
}

void SetFixed(TWizard& wizard, uint16_t var_idx, const std::string& value,
              const std::optional<std::string>& idf_value = std::nullopt) {
  TVariableItem& item = wizard.Variables[var_idx];
  item.Value = value;
  item.DefaultValue = value;
  item.IdfValue = idf_value ? *idf_value : Str2Idf(value);
}

// The trimmed value of the first "name=value" line of `lines` with that name; empty when none.
std::string AttributeOf(const std::vector<std::string>& lines, std::string_view name) {
  for (const std::string& line : lines) {
    const size_t equals = line.find('=');
    const std::string_view text = line;
    if (equals != std::string::npos && platform::SameText(platform::Trim(text.substr(0, equals)), name)) {
      return std::string(platform::Trim(text.substr(equals + 1)));
    }
  }
  return "";
}

// One declared value taken apart: attributes before the last "¦", line breaks written as "¶".
struct TDeclaredValue {
  std::string Value, Title, Kind, Hint;
  int32_t ListCount = 0;
};

// The stored line count is that of the one list the reading builds: the attribute lines, replaced
// by the value's lines when the value is multi-line.
TDeclaredValue ParseDeclaredValue(const std::string& raw) {
  TDeclaredValue declared{raw, {}, {}, {}, 0};
  std::vector<std::string> list;
  const size_t bar = raw.rfind(kBrokenBar);
  if (bar != std::string::npos) {
    declared.Value = std::string(platform::Trim(std::string_view(raw).substr(bar + kBrokenBar.size())));
    list = SplitLines(Piped2Text(raw.substr(0, bar), kBrokenBar));
    declared.Title = AttributeOf(list, "Title");
    declared.Kind = AttributeOf(list, "Kind");
    declared.Hint = AttributeOf(list, "Hint");
  }
  if (declared.Value.find(kPilcrow) != std::string::npos) {
    declared.Value = Piped2Text(declared.Value, kPilcrow);
    list = SplitLines(declared.Value);
  }
  declared.ListCount = static_cast<int32_t>(list.size());
  return declared;
}

// The variables' numbers by name (the lowest number of each name, as FindVarByName finds it), so
// that reading tens of thousands of declarations does not search the table for each one.
using TNumbersByName = std::unordered_map<std::string, uint16_t>;

TNumbersByName NumbersByName(const TWizard& wizard) {
  TNumbersByName numbers;
  for (uint16_t v = 1; v <= LastSearchedVar(wizard); ++v) numbers.emplace(wizard.Variables[v].Name, v);
  return numbers;
}

uint16_t NumberOf(const TNumbersByName& numbers, const std::string& name) {
  const auto found = numbers.find(name);
  return found == numbers.end() ? 0 : found->second;
}

// Refuses a section that would take the table beyond the highest number a variable can have.
void CheckRoomFor(const TWizard& wizard, const TIniFile& ini, const std::string& section,
                  const std::vector<std::pair<std::string, std::string>>& entries, const TNumbersByName& numbers,
                  const std::string& prefix) {
  size_t added = 0;
  for (const auto& [key, raw] : entries) {
    if (!raw.empty() && numbers.find(prefix + key) == numbers.end()) ++added;
  }
  const size_t count = wizard.Variables.size() - 1;
  if (count + added <= kHighestVariableNumber) return;
  throw std::length_error("\"" + ini.Path().string() + "\" declares " + std::to_string(entries.size()) +
                          " variables in [" + section + "]; the wizard holds at most " +
                          std::to_string(kHighestVariableNumber) + " variables in all (" + std::to_string(count) +
                          " are already declared).");
}

std::string TokenOf(std::string name) {
  for (char& c : name) {
    if (c == '.') c = '_';
  }
  return "vr" + name;
}

void FillDeclaredVariable(TWizard& wizard, uint16_t var_idx, const std::string& name,
                          const TDeclaredValue& declared, bool lookup_mode, const TNumbersByName& numbers) {
  TVariableItem& item = wizard.Variables[var_idx];
  item.Name = name;
  item.Value = declared.Value;
  item.DefaultValue = declared.Value;
  item.IdfValue = Str2Idf(declared.Value);
  if (!declared.Title.empty()) item.Title = declared.Title;
  if (lookup_mode && !declared.Kind.empty()) item.Kind = declared.Kind;
  if (lookup_mode && !declared.Hint.empty()) item.Hint = declared.Hint;
  item.UserDefined = true;
  item.IsPluginArray = false;
  item.IsLookup = lookup_mode;
  item.Token = TokenOf(name);
  if (!lookup_mode) return;
  item.LookedUpVar = NumberOf(numbers, name.substr(std::min<size_t>(7, name.size())));
  item.ListCount = declared.ListCount;
  if (item.LookedUpVar != 0) wizard.Variables[item.LookedUpVar].LookupVar = var_idx;
}

}  // namespace

void Set_Fixed_Variables(TWizard& wizard, const TProgramInfo& program, const platform::Clock& clock,
                         const platform::MachineFolders& machine) {
  platform::ScopedRoutine routine("TSaW_Common.Set_Fixed_Variables");
  EnsureVariableTable(wizard);
  const platform::ClockReading now = clock.Now();
  SetFixed(wizard, viTsaVersion, "2.2.05", "2205");
  SetFixed(wizard, viTsawDeepName, program.DeepName);
  SetFixed(wizard, viTsawVersion, program.Version);
  SetFixed(wizard, viCreationDate, FormatShortDate(now));
  SetFixed(wizard, viCreationTime, FormatTime(now));
  SetFixed(wizard, viCreationYear, FormatYear(now));
  SetFixed(wizard, viProjectGroup, "vrProjects_Prefix_vrTarget", "vrProjects_Prefix_vrTarget");
  SetFixed(wizard, viPathDelphi, Get_Delphi_Folder(machine));
  SetFixed(wizard, viPathTsaRoot, Get_TSA_RootFolder(machine) + "/TSA");
  // Kept as a reference so that it follows later changes of Path.TsaRoot.
  SetFixed(wizard, viPathTsaProjects, "#Path.TsaRoot#/User Projects");
  SetFixed(wizard, viPathWindows, Get_Windows_Folder(machine));
  SetFixed(wizard, viPathWindowsSystem, Get_WindowsSys_Folder(machine));
  SetFixed(wizard, viPathProgramFiles, Get_ProgramFiles_Folder(machine));
}

void Clear_NonFixed_Directive_Constants(TWizard& wizard) {
  platform::ScopedRoutine routine("TSaW_Common.Clear_NonFixed_Directive_Constants");
  if (wizard.Directives.size() != kNineKeptDirectives) wizard.Directives.resize(kNineKeptDirectives);
  wizard.DirectivesHigh = kNineKeptDirectives - 1;
  wizard.RunDirectives = TRunDirectiveNumbers{};
}

void Set_Fixed_Directives(TWizard& wizard, const TProgramInfo& program) {
  platform::ScopedRoutine routine("TSaW_Common.Set_Fixed_Directives");
  Clear_NonFixed_Directive_Constants(wizard);
  std::string version = program.Version;
  if (const size_t dot = version.find('.'); dot != std::string::npos) version.erase(dot, 1);
  MakeNewDirective(wizard, viTsaVersion, "Tsa2205");
  MakeNewDirective(wizard, viTsawVersion, "Tsaw" + version);
  MakeNewDirective(wizard, viLoggingUseTLG, "UseTLG");
  MakeNewDirective(wizard, viLoggingLogComments, "LogComments");
  MakeNewDirective(wizard, viLoggingLogInitFinit, "LogInitFinit");
  MakeNewDirective(wizard, viLoggingLogPinCreation, "LogPinCreation");
  MakeNewDirective(wizard, viLoggingLogFunctionResults, "LogFunctionResults");
  MakeNewDirective(wizard, viCosmeticCommentedHeaders, "CommentedHeaders");
  wizard.LastFixedDirective = wizard.DirectivesHigh;
}

void Custom_or_Lookup_Variables(TWizard& wizard, const TIniFile& ini, bool LookupMode) {
  platform::ScopedRoutine routine("TSaW_Common.Custom_or_Lookup_Variables");
  EnsureVariableTable(wizard);
  const std::string prefix = LookupMode ? "Lookup." : "Custom.";
  const std::string section = LookupMode ? "Lookup Variables" : "Custom Variables";
  const auto entries = ini.ReadSection(section);
  if (entries.empty()) return;
  TNumbersByName numbers = NumbersByName(wizard);
  CheckRoomFor(wizard, ini, section, entries, numbers, prefix);
  for (const auto& [key, raw] : entries) {
    if (raw.empty()) continue;
    const std::string name = prefix + key;
    uint16_t var_idx = NumberOf(numbers, name);
    if (var_idx == 0) {
      wizard.Variables.emplace_back();
      var_idx = wizard.VarCount = static_cast<uint16_t>(wizard.Variables.size() - 1);
      numbers.emplace(name, var_idx);
    }
    const TDeclaredValue declared = ParseDeclaredValue(raw);
    FillDeclaredVariable(wizard, var_idx, name, declared, LookupMode, numbers);
    if (platform::DebugEnabled()) {
      platform::DebugLine("  " + name + " = '" + declared.Value + "'  Title: '" + declared.Title + "'");
    }
  }
}

}  // namespace tsaw
