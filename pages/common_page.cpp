#include "pages/common_page.h"

#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/expand.h"
#include "model/variables.h"
#include "pages/variable_edit.h"
#include "platform/runtime_text.h"

namespace tsaw {

namespace {

constexpr std::array<TField, 7> kFields{{
    {"Company:", "ediCompanyName", "btnLookupCompanyName", viCompanyName},
    {"Product:", "ediProductName", "btnLookupProductName", viProductName},
    {"Author:", "ediAuthor", "btnLookupAuthor", viAuthor},
    {"Copyright:", "ediCopyright", "btnLookupCopyright", viCopyright},
    {"Projects Prefix:", "ediProjectsPrefix", "btnLookupProjectsPrefix", viProjectsPrefix},
    {"Host Project Name:", "ediHostProjectName", "btnLookupHostProjectName", viHostProjectName},
    {"Plugin Project Name:", "ediPluginProjectName", "btnLookupPluginProjectName", viPluginProjectName},
}};

constexpr std::string_view kAuthorAdvice =
    "\"Author\" and \"Copyright\" are usually referenced in the respective properties of the "
    "manager/plugin object (in the next pages).\"However, it's not mandatory to use them that way. You "
    "may chose to have fixed values especific to the manager and host objects (defined in the next "
    "pages).";
constexpr std::string_view kProjectNameAdvice =
    "\"Host Project Name\" and \"Plugin Project Name\" are exactly what the names suggest: the file name "
    "of the host application and plugin projects, respectivelly.\r\n\r\nIf the template provides more "
    "than a single plugin, you should switch the current plugin index in the combo on the right side of "
    "the field.";

const std::array<TAdvice, 9> kAdvice{{
    {"cbxExpand", kExpandVariablesAdvice},
    {"ediCompanyName",
     "\"Company\" is not directly related to a manager/plugin object, but might be referenced in a Wizard "
     "Variable somewhere. For instance, in the \"Copyright\" property of the manager and/or plugin "
     "objects."},
    {"ediProductName",
     "\"Product\" will be used as the root folder of the Project Set, and will be created below the Base "
     "Folder especified in the Output Settings page. As any other field, it may also be referenced in "
     "Wizard Variables."},
    {"ediAuthor", kAuthorAdvice},
    {"ediCopyright", kAuthorAdvice},
    {"ediProjectsPrefix",
     "\"Projects Prefix\" may be optionally referenced in the \"Host Project Name\" and \"Plugin Project "
     "Name\"."},
    {"cboPluginIdx", kProjectNameAdvice},
    {"ediHostProjectName", kProjectNameAdvice},
    {"ediPluginProjectName", kProjectNameAdvice},
}};

constexpr std::string_view kNumberReason =
    "It may contains numbers, but the first character must be a letter.";

std::string Quoted(std::string_view subject, std::string_view value) {
  return std::string(subject) + " (expanded to \"" + std::string(value) + "\")";
}

std::string PinSubject(std::size_t i) { return "Plugin[" + std::to_string(i) + "] Project Name"; }

// The blank and leading-number rules of one name; `blank_reason` says why a blank one matters.
void CheckStart(TPageErrors& errors, std::string_view subject, std::string_view value,
                std::string_view blank_reason) {
  if (value.empty()) {
    errors.Add_Error(Quoted(subject, value) + " cannot be blank.\r\n" + std::string(blank_reason));
  }
  if (StartsWithNumber(value)) {
    errors.Add_Error(Quoted(subject, value) + " cannot start with a number.\r\n" +
                     std::string(kNumberReason));
  }
}

// The rules of the prefix and the host name, which may hold underscores.
void CheckIdentifier(TPageErrors& errors, std::string_view subject, std::string_view value,
                     std::string_view blank_reason) {
  CheckStart(errors, subject, value, blank_reason);
  if (HasInvalidChars(value)) {
    errors.Add_Error(Quoted(subject, value) + " should contain only letters, numbers and underscore chars.");
  }
}

// The plug-ins of each name ignoring letter case, in ascending order: with many plug-ins, looking
// for the namesakes of each among all the others would take long.
using TNamesakes = std::unordered_map<std::string, std::vector<std::size_t>>;

TNamesakes NamesakesOf(const std::vector<std::string>& names) {
  TNamesakes namesakes;
  for (std::size_t i = 1; i < names.size(); ++i) namesakes[platform::LowerAscii(names[i])].push_back(i);
  return namesakes;
}

// The rules of plug-in `i`'s name `names[i]`: its form, then clashes with the host and with the
// plug-ins after it (so each pair is compared once and a clash is told at the lower index).
void CheckPluginName(TPageErrors& errors, const std::vector<std::string>& names,
                     const TNamesakes& namesakes, std::size_t i, std::string_view host) {
  const std::string& name = names[i];
  const std::string index = std::to_string(i);
  CheckStart(errors, PinSubject(i), name,
             "It will be used to replace the name the plugin project(s) at creation stage.");
  // Two blanks, and no word of the underscore it accepts: the message reads as it always has.
  if (HasInvalidChars(name)) {
    errors.Add_Error("Plugin[" + index + "] " + Quoted(" Project Name", name) +
                     " should contain only letters and numbers.");
  }
  const std::string unique = Quoted(PinSubject(i), name) + " must be unique in the Project Set.\r\n";
  if (platform::SameText(name, host)) errors.Add_Error(unique + "It's currently equal to the Host Project Name.");
  for (const std::size_t j : namesakes.at(platform::LowerAscii(name))) {
    if (j <= i) continue;
    errors.Add_Error(unique + "It's currently equal to the Plugin[" + std::to_string(j) + "] Project Name.");
  }
}

// The expanded project name of every plug-in (index 0 unused), each expanded with `Plugin.Index`
// set to its own number, as the creation run will see it.
std::vector<std::string> ExpandedPluginNames(TWizard& wizard) {
  const uint16_t count = PluginCountOf(wizard);
  std::vector<std::string> names(count + 1);
  TPluginIndexGuard guard(wizard);
  const TExpansionTable table(wizard);
  for (uint16_t i = 1; i <= count; ++i) {
    Set_Plugin_Index_Var(wizard, i);
    names[i] = ExpandPinValue(table, viPluginProjectName, i);
  }
  return names;
}

}  // namespace

TCommonPage::TCommonPage(TWizard& wizard, TPageRecall& recall)
    : TFieldPage(wizard, recall, kFields, " Lookup for a value in a list ") {}

std::string_view TCommonPage::Introduction() const {
  return "These common fields are the basis for the other pages. Some of these fields are not directly "
         "related to manager or plugin objects, but may be referenced in any other field (in this same or "
         "another page) through Wizard Variables.\r\n\r\nAll fields in this page have a lookup button for "
         "you to chose a predefined value from a list.";
}

std::optional<std::string> TCommonPage::AdviceFor(std::string_view control) const {
  return FindAdvice(kAdvice, control);
}

void TCommonPage::CheckRules(TPageErrors& errors) {
  CheckIdentifier(errors, "Projects Prefix", ExpandedValue(wizard_, viProjectsPrefix),
                  "It will be used to replace the Template Prefix at creation stage.");
  const std::string host = ExpandedValue(wizard_, viHostProjectName);
  CheckIdentifier(errors, "Host Project Name", host,
                  "It will be used to replace the name the host project(s) at creation stage.");
  const std::vector<std::string> names = ExpandedPluginNames(wizard_);
  const TNamesakes namesakes = NamesakesOf(names);
  for (std::size_t i = 1; i < names.size(); ++i) CheckPluginName(errors, names, namesakes, i, host);
}

}  // namespace tsaw
