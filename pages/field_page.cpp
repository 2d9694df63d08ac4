#include "pages/field_page.h"

#include "model/variables.h"
#include "pages/variable_edit.h"
#include "platform/debug_log.h"
#include "platform/runtime_text.h"

namespace tsaw {

std::string PropertyAdvice(std::string_view owner, std::string_view property) {
  const std::string name(property);
  return "\"" + name + "\" will be used as the value for the " + std::string(owner) + "'s " + name +
         " property. Although it would not make much sense the use of Wizard Variables here, you are free "
         "to do that.";
}

std::string PropertyValueAdvice(std::string_view owner, std::string_view property, std::string_view example) {
  const std::string name(property);
  return "\"" + name + "\" will be used as the value for the " + std::string(owner) + "'s " + name +
         " property. You may chose to enter a fixed value (eg: '" + std::string(example) +
         "'), a Wizard Variable (eg: #" + name +
         "# from the Common Properties page) or even a mix of literals and variables.";
}

namespace {

// Reads a selector item such as " 2"; 0 when it is not a number.
int ItemToIndex(std::string_view item) {
  item = platform::Trim(item);
  if (item.empty() || item.size() > 4) return 0;
  int value = 0;
  for (char c : item) {
    if (c < '0' || c > '9') return 0;
    value = value * 10 + (c - '0');
  }
  return value;
}

}  // namespace

TFieldPage::TFieldPage(TWizard& wizard, TPageRecall& recall, std::span<const TField> fields,
                       std::string_view lookup_hint)
    : TPageModel(wizard, recall), fields_(fields), lookup_hint_(lookup_hint) {}

const TField* TFieldPage::FieldOf(uint16_t var_idx) const {
  for (const TField& field : fields_) {
    if (field.VarIdx == var_idx) return &field;
  }
  return nullptr;
}

std::string TFieldPage::LookupHint(const TField& field) const {
  const auto& vars = wizard_.Variables;
  if (field.VarIdx < vars.size()) {
    uint16_t lookup = vars[field.VarIdx].LookupVar;
    if (lookup != 0 && lookup < vars.size()) return " " + vars[lookup].Hint + " ";
  }
  return std::string(lookup_hint_);
}

std::string TFieldPage::FieldText(const TField& field) const {
  if (field.VarIdx >= wizard_.Variables.size()) return {};
  const std::string& raw = CurrentItem(wizard_, field.VarIdx).Value;
  return expanded_ ? ExpandVar(wizard_, raw) : raw;
}

void TFieldPage::edi_OnChange(uint16_t var_idx, std::string_view text) {
  platform::ScopedRoutine log("TSaW_Pages.TFieldPage.edi_OnChange");
  if (expanded_ || var_idx < 1 || var_idx > kFixedVariableCount || var_idx >= wizard_.Variables.size())
    return;
  Assign_Value(CurrentItem(wizard_, var_idx), platform::Trim(text));
  Validate_Page();
}

bool TFieldPage::cbxExpand_OnClick(bool checked, const TCvrNotifier& notify) {
  platform::ScopedRoutine log("TSaW_Pages.TFieldPage.cbxExpand_OnClick");
  const bool circular = AnyCvrError(wizard_, notify) != 0;
  expanded_ = checked && !circular;
  Update_Controls();
  return expanded_;
}

std::vector<std::string> TFieldPage::PluginItems() const {
  std::vector<std::string> items;
  for (uint16_t i = 1; i <= PluginCountOf(wizard_); ++i) items.push_back(" " + std::to_string(i));
  return items;
}

bool TFieldPage::PluginSelectorVisible() const { return PluginCountOf(wizard_) >= 2; }

bool TFieldPage::PluginSelectorEnabled() const { return PluginCountOf(wizard_) > 0; }

std::string TFieldPage::CurrentPluginItem() const { return " " + std::to_string(wizard_.PluginIndex); }

void TFieldPage::cboPluginIdx_OnChange(std::optional<std::string_view> item) {
  platform::ScopedRoutine log("TSaW_Pages.TFieldPage.cboPluginIdx_OnChange");
  wizard_.PluginIndex = static_cast<uint16_t>(item ? ItemToIndex(*item) : 1);
  Set_Plugin_Index_Var(wizard_, wizard_.PluginIndex);
  Update_Controls();
}

}  // namespace tsaw
