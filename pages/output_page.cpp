#include "pages/output_page.h"

#include <array>

#include "model/expand.h"
#include "pages/variable_edit.h"
#include "platform/runtime_text.h"

namespace tsaw {

namespace {

constexpr std::array<TField, 1> kFields{{
    {"Base Folder:", "ediBaseFolder", "btnLookupBaseFolder", viOutputBaseFolder},
}};

constexpr std::string_view kBaseFolderAdvice =
    "\"Base Folder\" will be the parent of the Project Set ROOT folder. For instance, if the Projects "
    "Prefix is \"MySystem\" and the Base Folder is \"C:\\Self Made Plugins\", the Project Set ROOT folder "
    "will be \"C:\\Self Made Plugins\\MySystem\". \r\n\r\n"
    "The Base Folder itself is never deltree'ed. Only the folder structure below it is cleared, from the "
    "Project Set ROOT folder on.\r\n\r\n"
    "If the Project Set ROOT folder is not empty, it will be entirely moved to the Recycle Bin when "
    "removed, so nothing will be lost.";

// The path variables in the order they are tried: the most specific folders first.
constexpr std::array<uint16_t, 6> kPathVariables{viPathDelphi,        viPathTsaProjects, viPathTsaRoot,
                                                 viPathWindowsSystem, viPathWindows,     viPathProgramFiles};

bool StartsWithIgnoringCase(std::string_view s, std::string_view prefix) {
  return prefix.size() <= s.size() && platform::SameText(s.substr(0, prefix.size()), prefix);
}

// `folder` with the first fitting path variable in place of its beginning.
std::string WithPathVariable(const TWizard& wizard, std::string_view folder) {
  for (uint16_t var : kPathVariables) {
    if (var >= wizard.Variables.size()) continue;
    const std::string reference = "#" + wizard.Variables[var].Name + "#";
    const std::string expanded = ExpandVar(wizard, reference);
    // A folder that is unknown on this machine stands for nothing.
    if (expanded.empty() || expanded == reference) continue;
    if (StartsWithIgnoringCase(folder, expanded))
      return reference + std::string(folder.substr(expanded.size()));
  }
  return std::string(folder);
}

}  // namespace

std::string EmbedVar(const TWizard& wizard, std::string_view folder) {
  const std::string text = WithPathVariable(wizard, folder) + "/";
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    result += text[i];
    if (text[i] == '/' && i + 1 < text.size() && text[i + 1] == '/') ++i;
  }
  return result;
}

TOutputPage::TOutputPage(TWizard& wizard, TPageRecall& recall)
    : TFieldPage(wizard, recall, kFields, " Lookup for a value in a list ") {}

std::string_view TOutputPage::Introduction() const {
  return "Here you define which location to use as the base folder for the Project Set root.";
}

std::optional<std::string> TOutputPage::AdviceFor(std::string_view control) const {
  if (control == "cbxExpand") return std::string(kExpandVariablesAdvice);
  if (control == "ediBaseFolder") return std::string(kBaseFolderAdvice);
  return std::nullopt;
}

void TOutputPage::CheckRules(TPageErrors& errors) {
  const std::string folder = ExpandedValue(wizard_, viOutputBaseFolder);
  if (folder.empty()) {
    errors.Add_Error("Base Folder (expanded to \"" + folder +
                     "\") cannot be blank.\r\nIt will be the parent of the Project Set root folder.");
  }
}

}  // namespace tsaw
