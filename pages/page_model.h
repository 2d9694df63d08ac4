#pragma once
// The widget-free part of every wizard page: introduction, advice on focus, information tabs and
// the validation outcome. A Qt page binds its widgets to one of these; the command line runs the
// same rules without any window.

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "model/wizard.h"
#include "pages/page_errors.h"
#include "pages/page_memory.h"

namespace tsaw {

// One row of a page's advice table: the control entered and the text shown for it.
struct TAdvice {
  std::string_view Control;
  std::string_view Text;
};

// The information area's fixed texts: the advice before any control has been entered, the tab
// labels and the captions over the two memos before the first validation.
inline constexpr std::string_view kInitialAdvice = "Click on a field above to get a sensitive advice.";
inline constexpr std::string_view kValidationTabCaption = "Validation";
inline constexpr std::string_view kAdviceTabCaption = "Advice";
inline constexpr std::string_view kInitialValidationCaption = "Error";
inline constexpr std::string_view kAdviceCaption = "Advice";

class TPageModel {
 public:
  // `recall` is the frame's memory of this page type; both must outlive the page.
  TPageModel(TWizard& wizard, TPageRecall& recall);
  virtual ~TPageModel() = default;
  TPageModel(const TPageModel&) = delete;
  TPageModel& operator=(const TPageModel&) = delete;

  // The page's introduction text.
  virtual std::string_view Introduction() const = 0;

  // The page's creation: prepares the controls, loads them and validates, then picks the
  // information tab (the Advice tab on the first visit, unless validation chose Validation).
  void Open();
  // Reloads the page's state from the wizard and validates.
  void Update_Controls();
  // Prepares and loads the page like Open, then runs its rules alone: the numbered errors, with
  // nothing published (no caption, tab or step-button change).
  TPageErrors CheckAnswers();

  // A control received the focus: it becomes the last entered control and, when the advice table
  // has a text for it, that text becomes the advice shown. Returns whether the advice changed.
  bool Controls_OnEnter(std::string_view control);
  const std::string& AdviceText() const { return advice_; }
  const std::string& LastEnteredControl() const { return recall_.LastEnteredControl; }

  // A tab label was clicked: kInfoTabValidation or kInfoTabAdvice becomes the tab shown.
  void labTabInfo_OnClick(int tab);
  int InfoTab() const { return recall_.LastInfoTab; }

  // Runs the page's rules and publishes the outcome: caption, error list, the wizard's step
  // buttons, and the Validation tab when something failed. True when no rule failed.
  bool Validate_Page();
  // Runs the page's rules into `errors` (which it does not clear) and publishes nothing.
  virtual void CheckRules(TPageErrors& errors) = 0;
  const TPageErrors& Errors() const { return errors_; }
  virtual std::string Caption() const { return ValidationCaption(errors_.Count()); }

 protected:
  // The advice for `control`, if the page has one.
  virtual std::optional<std::string> AdviceFor(std::string_view control) const = 0;
  // Prepares the page's controls; pages without preparation keep this.
  virtual void Init_Controls() {}
  // Loads the page's own state from the wizard; field pages read their fields on demand instead.
  virtual void Load_Controls() {}
  // Finds `control` in `table`.
  static std::optional<std::string> FindAdvice(std::span<const TAdvice> table, std::string_view control);

  TWizard& wizard_;

 private:
  void Show_Result(bool ok);

  TPageRecall& recall_;
  TPageErrors errors_;
  std::string advice_{kInitialAdvice};
};

}  // namespace tsaw
