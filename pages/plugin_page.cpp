#include "pages/plugin_page.h"

#include <array>

#include "model/variables.h"
#include "pages/variable_edit.h"

namespace tsaw {

namespace {

// The description is a multi-line box without a look-up button.
constexpr std::array<TField, 5> kFields{{
    {"Version:", "ediVersion", "btnLookupVersion", viPluginVersion},
    {"Author:", "ediAuthor", "btnLookupAuthor", viPluginAuthor},
    {"DeepName:", "ediDeepName", "btnLookupDeepName", viPluginDeepName},
    {"Copyright:", "ediCopyright", "btnLookupCopyright", viPluginCopyright},
    {"Description:", "memDescription", "", viPluginDescription},
}};

}  // namespace

TPluginPage::TPluginPage(TWizard& wizard, TPageRecall& recall)
    : TFieldPage(wizard, recall, kFields, " Lookup for a vaue in a list ") {}

std::string_view TPluginPage::Introduction() const {
  return "These fields are especific to the Plugin component(s), and each field is directly related to a "
         "Plugin property. You may embed the value of another field (in the previous pages) by using Wizard "
         "Variables.\r\n\r\nAll fields in this page have a lookup button for you to chose a predefined value "
         "from a list.";
}

std::optional<std::string> TPluginPage::AdviceFor(std::string_view control) const {
  if (control == "cbxExpand") return std::string(kExpandVariablesAdvice);
  if (control == "cboPluginIdx")
    return "\"Plugin Index\" can be used to access the properties of a especific.";
  if (control == "ediVersion") return PropertyValueAdvice("Plugin", "Version", "1.0");
  if (control == "ediAuthor") return PropertyValueAdvice("Plugin", "Author", "Ann Doe");
  if (control == "ediDeepName") return PropertyAdvice("Plugin", "DeepName");
  if (control == "ediCopyright")
    return PropertyValueAdvice("Plugin", "Copyright", "(C)2007 All rights reserved");
  if (control == "memDescription") return PropertyAdvice("Plugin", "Description");
  return std::nullopt;
}

void TPluginPage::CheckRules(TPageErrors& errors) {
  TPluginIndexGuard guard(wizard_);
  const TExpansionTable table(wizard_);
  for (int i = 1; i <= PluginCountOf(wizard_); ++i) {
    Set_Plugin_Index_Var(wizard_, i);
    const std::string version = ExpandPinValue(table, viPluginVersion, i);
    if (version.empty()) {
      errors.Add_Error(
          "Plugin[" + std::to_string(i) + "] Version (expanded to \"" + version +
          "\") cannot be blank.\r\nIt will be used to generate the DCI of the plugin at creation stage.");
    }
  }
}

}  // namespace tsaw
