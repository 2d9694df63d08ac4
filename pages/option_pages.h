#pragma once
// The Logging and Cosmetics pages: check boxes bound to Boolean variables that decide which
// optional parts of the template source are kept. They have no rules and are never invalid.

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "pages/page_model.h"

namespace tsaw {

// One option: its clickable caption label, the check box and the Boolean variable it sets.
struct TOption {
  std::string_view Label;
  std::string_view Caption;
  std::string_view Box;
  std::string_view Hint;
  uint16_t VarIdx = 0;
};

// What both pages share: the boxes, their variables, label clicks and the fixed caption.
class TOptionsPage : public TPageModel {
 public:
  virtual std::string_view PanelCaption() const = 0;
  std::span<const TOption> Options() const { return options_; }
  // The state of box `box`; false for an unknown name.
  bool Checked(std::string_view box) const;

  // The user clicked box `box`, which the click left `checked`. Unknown names do nothing.
  virtual void cbx_OnClick(std::string_view box, bool checked);
  // The user clicked caption label `label`: its box toggles and is clicked.
  void lab_OnClick(std::string_view label);

  // These pages have no rules.
  void CheckRules(TPageErrors&) override {}
  std::string Caption() const override { return "Page is Ok"; }

 protected:
  TOptionsPage(TWizard& wizard, TPageRecall& recall, std::span<const TOption> options);
  // The position of box `box` among the options, or -1.
  int IndexOf(std::string_view box) const;
  // Sets every box from its variable's flag, then lets the click rule settle them.
  void Load_Controls() override;
  // Writes every option's variable from its box: "True" or "False".
  void WriteVariables();
  // What loading does once the boxes are set.
  virtual void SettleLoadedBoxes() {}

  std::vector<bool> checked_;

 private:
  std::span<const TOption> options_;
};

// "Use TesseraLogger" is the master box: the other four can be checked only while it is, and
// unchecking it clears them.
class TLoggingPage : public TOptionsPage {
 public:
  TLoggingPage(TWizard& wizard, TPageRecall& recall);
  std::string_view Introduction() const override;
  std::string_view PanelCaption() const override { return "Logging Capabilities:"; }
  void cbx_OnClick(std::string_view box, bool checked) override;

 protected:
  std::optional<std::string> AdviceFor(std::string_view control) const override;
  void SettleLoadedBoxes() override;

 private:
  bool master_on_ = false;  // the mark the dependent boxes carry
};

class TCosmeticsPage : public TOptionsPage {
 public:
  TCosmeticsPage(TWizard& wizard, TPageRecall& recall);
  std::string_view Introduction() const override;
  std::string_view PanelCaption() const override { return "Cosmetic Features:"; }

 protected:
  std::optional<std::string> AdviceFor(std::string_view control) const override;
};

}  // namespace tsaw
