#include "creation/file_names.h"

#include <cctype>

#include "model/expand.h"
#include "model/variables.h"

namespace tsaw::creation {
namespace {

std::string Expanded(const TExpansionTable& table, std::string_view text) {
  std::string expanded;
  ExpandVar(table, text, false, expanded);
  return expanded;
}

std::string IdentifierValue(const TExpansionTable& table, uint16_t var_idx) {
  const TVariableItem& item = CurrentItem(table.Wizard(), var_idx);
  if (!item.IdfValue.empty()) return item.IdfValue;
  return Str2Idf(Expanded(table, item.Value));
}

// The replacement of the name's leading prefix part, and how long that part is.
std::pair<std::string, std::size_t> PrefixReplacement(const TExpansionTable& table, const std::string& name,
                                                      const std::string& prefix) {
  const std::pair<const char*, int> parts[] = {{"_Host", 1}, {"_Pin", 2}, {"_Group", 3}};
  for (const auto& [suffix, kind] : parts) {
    const std::string lead = prefix + suffix;
    if (name.rfind(lead, 0) != 0) continue;
    if (kind == 1) return {IdentifierValue(table, viHostProjectName), lead.size()};
    if (kind == 2) {
      // The plug-in's own number may follow ("T201_Pin2.dpr"): the project name carries it.
      std::size_t end = lead.size();
      while (end < name.size() && std::isdigit(static_cast<unsigned char>(name[end]))) ++end;
      return {IdentifierValue(table, viPluginProjectName), end};
    }
    return {Expanded(table, "#Project.Group#"), lead.size()};
  }
  return {IdentifierValue(table, viProjectsPrefix), prefix.size()};
}

}  // namespace

std::string ProjectFileName(const TWizard& wizard, const std::string& template_name) {
  return ProjectFileName(TExpansionTable(wizard), template_name);
}

std::string ProjectFileName(const TExpansionTable& table, const std::string& template_name) {
  const TWizard& wizard = table.Wizard();
  const std::string& prefix = wizard.Variables.size() > viTemplatePrefix
                                  ? wizard.Variables[viTemplatePrefix].Value
                                  : std::string();
  std::string name = template_name;
  if (!prefix.empty() && name.rfind(prefix, 0) == 0) {
    const auto [replacement, length] = PrefixReplacement(table, name, prefix);
    name = replacement + name.substr(length);
  }
  std::string expanded = Expanded(table, name);
  for (char& c : expanded) {
    if (c == '/') c = '_';
  }
  return expanded;
}

int PluginNumberOfFolder(const std::string& folder_name) {
  std::size_t start = folder_name.size();
  while (start > 0 && std::isdigit(static_cast<unsigned char>(folder_name[start - 1]))) --start;
  const std::string digits = folder_name.substr(start);
  if (digits.empty()) return folder_name == "Host" ? 1 : 0;
  if (digits.size() > 6) return 0;
  return std::stoi(digits);
}

}  // namespace tsaw::creation
