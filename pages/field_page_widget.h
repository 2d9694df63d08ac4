#pragma once
// The widget of a page whose fields are edit boxes bound to wizard variables (Common, Manager,
// Plug-in and Output properties): each field with its caption and look-up button, the
// "Expand variables" preview and the plug-in selector.

#include <memory>
#include <string_view>
#include <vector>

#include "pages/field_page.h"
#include "pages/page_widget.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QToolButton;

namespace tsaw {

// Where a page shows its plug-in selector: not at all, in the last field's row (the field of a
// per-plug-in variable), or on a row of its own above the fields with `SelectorCaption`.
enum class TSelectorPlace { None, BesideLastField, OwnRow };

class TFieldPageWidget : public TPageWidget {
  Q_OBJECT
 public:
  // Builds the fields of `model` and opens the page: fields loaded, page validated.
  TFieldPageWidget(const TPageServices& services, std::unique_ptr<TFieldPage> model, TSelectorPlace selector,
                   QWidget* parent);

  TFieldPage& Page() { return page_; }

 protected:
  // Puts `control` after the look-up button of the field showing `var_idx`; without such a
  // field, `control` stays where its parent put it.
  void AddBesideField(uint16_t var_idx, QWidget* control);
  // The one-line editor of the field showing `var_idx`, or nullptr.
  QLineEdit* LineEdit(uint16_t var_idx) const;
  // Makes every field editable or read-only (the preview, the template's marks), with its
  // look-up and the controls beside it enabled to match.
  void ShowEditability();

 private:
  struct TFieldControls {
    const TField* Field;
    QWidget* Editor;       // a QLineEdit, or a QPlainTextEdit for a "mem" field
    QToolButton* Lookup;   // nullptr for a field without look-up
    int Row;
    bool Locked;                   // the template marked the variable read-only
    std::vector<QWidget*> Extras;  // controls beside the field that change it (Browse...)
  };

  void AddField(const TField& field, int row);
  QWidget* MakeSelector();
  void LoadFields();
  void edi_OnChange(const TFieldControls& field);
  void btnLookup_OnClick(const TFieldControls& field);
  void cbxExpand_OnClick(bool checked);
  void cboPluginIdx_OnChange();

  TFieldPage& page_;
  QGridLayout* grid_;
  std::vector<TFieldControls> fields_;
  QCheckBox* cbxExpand_;
  QComboBox* cboPluginIdx_ = nullptr;
  QLabel* lab1Pin_ = nullptr;
  bool loading_ = false;  // set while the page itself writes the fields
};

// The second line of the hint of a look-up button whose field has no list to offer.
inline constexpr std::string_view kNoLookupListHint = " No list of values to look up for this field ";

// "Plugin Index:", the caption of a selector on its own row.
inline constexpr std::string_view kSelectorCaption = "Plugin Index:";

}  // namespace tsaw
