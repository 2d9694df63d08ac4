#pragma once
// The pages whose fields are edit boxes bound to wizard variables: the field pair table, the
// "Expand variables" preview, the look-up hints and the plug-in selector.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/expand.h"
#include "pages/page_model.h"

namespace tsaw {

// One field: its caption, its edit box, its look-up button (empty when it has none) and the
// number of the variable it shows. A per-plug-in variable shows the current plug-in's element.
struct TField {
  std::string_view Caption;
  std::string_view Edit;
  std::string_view Lookup;
  uint16_t VarIdx = 0;
};

// The fixed texts of the field pages' common controls: the preview box, the plug-in selector and
// the label that stands in for it when the template has a single plug-in.
inline constexpr std::string_view kExpandCaption = "Expand variables";
inline constexpr std::string_view kPluginSelectorHint =
    " Select the Plugin to show/change the properties of ";
inline constexpr std::string_view kSinglePluginCaption = "  1";
inline constexpr std::string_view kSinglePluginHint =
    " The template selected provides support for a single plugin. ";

// The advice of the "Expand variables" check box, shared by every field page.
inline constexpr std::string_view kExpandVariablesAdvice =
    "By checking \"Expand variables\", you have a preview of the fields in this page with their values "
    "expanded. Obviously, this only affects fields containing embeded Wizard Variables.\r\n\r\n"
    "When embeding or editing Wizard Variables in the fields, take care not to cause a CVR (Circular "
    "Variable Reference). Although the wizard is prepared to prevent infinite loops from occurring (that "
    "could hang the Tessera Desktop and possibly the IDE), the resulting values would surely be messed "
    "up.\r\n\r\nIf a CVR occurs, however, a message dialog will pop up to allert you.";

// Advice for a field that holds `property` of the `owner` component ("Manager", "Plugin"), where
// variables make little sense but are allowed.
std::string PropertyAdvice(std::string_view owner, std::string_view property);
// Advice for a field that holds `property` of `owner`, typed as a fixed value like `example`, as
// the Common Properties variable of the same name, or as a mix.
std::string PropertyValueAdvice(std::string_view owner, std::string_view property, std::string_view example);

class TFieldPage : public TPageModel {
 public:
  virtual std::string_view PanelCaption() const = 0;
  std::span<const TField> Fields() const { return fields_; }
  // The field pair table: the field showing variable `var_idx` on this page, or nullptr.
  const TField* FieldOf(uint16_t var_idx) const;
  // The hint of `field`'s look-up button: the related look-up variable's hint between blanks,
  // else the page's own hint.
  std::string LookupHint(const TField& field) const;

  // What the field shows: its variable's raw value, or its expansion while previewing.
  std::string FieldText(const TField& field) const;
  // The user changed the field of `var_idx` to `text`: stores it trimmed and re-validates.
  // Ignored while previewing and for numbers outside 1..47.
  void edi_OnChange(uint16_t var_idx, std::string_view text);

  // The "Expand variables" box was clicked to `checked`. A circular reference (reported through
  // `notify`) forces it back to unchecked. Re-validates; returns the box's resulting state.
  bool cbxExpand_OnClick(bool checked, const TCvrNotifier& notify);
  bool Expanded() const { return expanded_; }

  // The plug-in selector: " 1" .. " N" for the template's plug-in count.
  std::vector<std::string> PluginItems() const;
  bool PluginSelectorVisible() const;
  bool PluginSelectorEnabled() const;
  // The item that shows the current plug-in index.
  std::string CurrentPluginItem() const;
  // `item` was chosen (nullopt: none): it becomes the current plug-in index; re-validates.
  void cboPluginIdx_OnChange(std::optional<std::string_view> item);

 protected:
  TFieldPage(TWizard& wizard, TPageRecall& recall, std::span<const TField> fields,
             std::string_view lookup_hint);

 private:
  std::span<const TField> fields_;
  std::string_view lookup_hint_;
  bool expanded_ = false;
};

}  // namespace tsaw
