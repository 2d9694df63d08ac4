#include "pages/page_model.h"

#include "platform/debug_log.h"

namespace tsaw {

TPageModel::TPageModel(TWizard& wizard, TPageRecall& recall) : wizard_(wizard), recall_(recall) {}

void TPageModel::Open() {
  platform::ScopedRoutine log("TSaW_Pages.TPageModel.Open");
  platform::DebugLine("Initializing visual stuff..");
  Init_Controls();
  Update_Controls();
  if (recall_.LastInfoTab == kInfoTabNone) recall_.LastInfoTab = kInfoTabAdvice;
}

void TPageModel::Update_Controls() {
  Load_Controls();
  Validate_Page();
}

TPageErrors TPageModel::CheckAnswers() {
  Init_Controls();
  Load_Controls();
  TPageErrors errors;
  CheckRules(errors);
  return errors;
}

bool TPageModel::Controls_OnEnter(std::string_view control) {
  recall_.LastEnteredControl = std::string(control);
  std::optional<std::string> text = AdviceFor(control);
  if (!text) return false;
  advice_ = std::move(*text);
  return true;
}

void TPageModel::labTabInfo_OnClick(int tab) {
  if (tab == kInfoTabValidation || tab == kInfoTabAdvice) recall_.LastInfoTab = tab;
}

bool TPageModel::Validate_Page() {
  errors_.Clear();
  CheckRules(errors_);
  Show_Result(errors_.Empty());
  return errors_.Empty();
}

void TPageModel::Show_Result(bool ok) {
  if (wizard_.RefreshStepButtons) wizard_.RefreshStepButtons(ok);
  if (!ok) labTabInfo_OnClick(kInfoTabValidation);
}

std::optional<std::string> TPageModel::FindAdvice(std::span<const TAdvice> table, std::string_view control) {
  for (const TAdvice& row : table) {
    if (row.Control == control) return std::string(row.Text);
  }
  return std::nullopt;
}

}  // namespace tsaw
