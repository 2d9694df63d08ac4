#include "pages/manager_page.h"

#include <array>

#include "pages/variable_edit.h"

namespace tsaw {

namespace {

constexpr std::array<TField, 7> kFields{{
    {"Version:", "ediVersion", "btnLookupVersion", viManagerVersion},
    {"Author:", "ediAuthor", "btnLookupAuthor", viManagerAuthor},
    {"DeepName:", "ediDeepName", "btnLookupDeepName", viManagerDeepName},
    {"Copyright:", "ediCopyright", "btnLookupCopyright", viManagerCopyright},
    {"Plugin Extension:", "ediPluginExtension", "btnLookupPluginExtension", viManagerPluginExtension},
    {"Plugin Folder:", "ediPluginFolder", "btnLookupPluginFolder", viManagerPluginFolder},
    {"Service Folder:", "ediServiceFolder", "btnLookupServiceFolder", viManagerServiceFolder},
}};

constexpr std::string_view kIevAdvice =
    "\r\n\r\nNormally, IEVs (Internal Environment Variables) are used, so they are expanded by the Tessera "
    "Engine upon the load of plugins.\r\nDo not confuse IEVs with Wizard Variables. IEVs are embraced with "
    "\"%\" chars and will be expanded by the Engine at runtime, while Wizard Variables use \"#\" chars and "
    "are expanded during the Projects creation process.";

}  // namespace

TManagerPage::TManagerPage(TWizard& wizard, TPageRecall& recall)
    : TFieldPage(wizard, recall, kFields, " Lookup for a value in a list ") {}

std::string_view TManagerPage::Introduction() const {
  return "These fields are especific to the Manager component, and each field is directly related to a "
         "Manager property. You may embed the value of another field (in the previous pages) by using Wizard "
         "Variables.\r\n\r\nAll fields in this page have a lookup button for you to chose a predefined value "
         "from a list.";
}

std::optional<std::string> TManagerPage::AdviceFor(std::string_view control) const {
  if (control == "cbxExpand") return std::string(kExpandVariablesAdvice);
  if (control == "ediVersion") return PropertyValueAdvice("Manager", "Version", "1.0");
  if (control == "ediAuthor") return PropertyValueAdvice("Manager", "Author", "Ann Doe");
  if (control == "ediDeepName") return PropertyAdvice("Manager", "DeepName");
  if (control == "ediCopyright") {
    return PropertyValueAdvice("Manager", "Copyright", "(C)2007 All rights reserved");
  }
  if (control == "ediPluginExtension") return PropertyAdvice("Manager", "PluginExtension");
  if (control == "ediPluginFolder")
    return PropertyAdvice("Manager", "PluginFolder") + std::string(kIevAdvice);
  if (control == "ediServiceFolder")
    return PropertyAdvice("Manager", "ServiceFolder") + std::string(kIevAdvice);
  return std::nullopt;
}

void TManagerPage::CheckRules(TPageErrors& errors) {
  const std::string version = ExpandedValue(wizard_, viManagerVersion);
  if (version.empty()) {
    errors.Add_Error(
        "Version (expanded to \"" + version +
        "\") cannot be blank.\r\nIt will be used to generate the DCI of the manager at creation stage.");
  }
}

}  // namespace tsaw
