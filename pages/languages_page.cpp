#include "pages/languages_page.h"

#include <algorithm>
#include <array>

#include "model/target_selection.h"
#include "model/targets.h"
#include "platform/debug_log.h"

namespace tsaw {

namespace {

constexpr std::array<std::string_view, 4> kPlatformWords{"", "Win", "VclNet", "NetFcl"};
constexpr std::array<std::string_view, 10> kIdeWords{"",      "D5",    "D6",    "D7",     "D8",
                                                     "D2005", "D2006", "D2007", "TD2006", "Chrome"};

// The boxes the page has; Delphi 2007 for the .NET platforms has none.
constexpr std::array<std::string_view, 16> kBoxNames{
    "cbxWinD5",       "cbxWinD6",        "cbxWinD7",        "cbxVclNetD8",    "cbxNetFclD8",    "cbxWinD2005",
    "cbxVclNetD2005", "cbxNetFclD2005",  "cbxWinD2006",     "cbxVclNetD2006", "cbxNetFclD2006", "cbxWinD2007",
    "cbxWinTD2006",   "cbxVclNetTD2006", "cbxNetFclTD2006", "cbxNetFclChrome"};

// Targets whose boxes reload from the wizard: Win32 and the VCL.NET boxes other than Delphi 2007's.
constexpr std::array<uint16_t, 11> kLoadedTargets{1, 2, 3, 4, 6, 7, 9, 10, 12, 15, 16};

constexpr uint16_t kPlatformVclNet = 2;
constexpr uint16_t kPlatformNetFcl = 3;
constexpr uint16_t kLanguageChrome = 9;

template <typename List, typename Item>
bool Contains(const List& list, const Item& item) {
  return std::find(list.begin(), list.end(), item) != list.end();
}

TClickStep Show(std::string_view message) {
  return {TClickStep::TKind::ShowMessage, TBoxState::Unchecked, std::string(message)};
}

TClickStep Set(TBoxState state) { return {TClickStep::TKind::SetState, state, {}}; }

}  // namespace

std::string_view IdeWord(uint16_t ide) { return ide < kIdeWords.size() ? kIdeWords[ide] : std::string_view{}; }

TLanguagesPage::TLanguagesPage(TWizard& wizard, TPageRecall& recall) : TPageModel(wizard, recall) {}

std::string_view TLanguagesPage::Introduction() const {
  return "Define which platforms and languages the Project Set should be created for. Notice that these "
         "options depend on support provided by the template selected.\r\n\r\nAs of Tessera 2.2.xx, the only "
         "platform available is Win32. VCL.NET will be supported in v3.0 and, in v4.0, we'll have Pure .NET "
         "FCL, along with Chrome.";
}

void TLanguagesPage::Init_Controls() {
  boxes_.clear();
  for (uint16_t ide = 0; ide < kIdeWords.size(); ++ide) {
    for (uint16_t platform = 0; platform < kPlatformWords.size(); ++platform) {
      std::string name = "cbx" + std::string(kPlatformWords[platform]) + std::string(kIdeWords[ide]);
      if (!Contains(kBoxNames, name)) continue;
      const uint16_t target = TargetOf(ide, platform);
      boxes_.push_back({name, ide, platform, target, Contains(kLoadedTargets, target), TBoxState::Unchecked});
    }
  }
}

std::size_t TLanguagesPage::BoxIndex(std::string_view name) const {
  auto it = std::find_if(boxes_.begin(), boxes_.end(), [&](const TTargetBox& b) { return b.Name == name; });
  return static_cast<std::size_t>(it - boxes_.begin());
}

const TTargetBox* TLanguagesPage::Box(std::string_view name) const {
  const std::size_t i = BoxIndex(name);
  return i < boxes_.size() ? &boxes_[i] : nullptr;
}

std::string TLanguagesPage::Hint(const TTargetBox& box) {
  return " " + std::string(TargetInfo(box.Target).Title) + " ";
}

std::optional<std::string> TLanguagesPage::AdviceFor(std::string_view control) const {
  const TTargetBox* box = Box(control);
  if (box == nullptr) return std::nullopt;
  return "Includes " + std::string(TargetInfo(box->Target).Title) +
         " as target, if the template provides the corresponding folder and files.";
}

void TLanguagesPage::Load_Controls() {
  for (TTargetBox& box : boxes_) {
    if (box.Loaded) {
      box.State = wizard_.Targets[box.Target].Checked ? TBoxState::Checked : TBoxState::Unchecked;
    }
  }
}

std::vector<TClickStep> TLanguagesPage::cbx_OnClick(std::string_view name, bool checked) {
  platform::ScopedRoutine log("TSaW_frmLanguages.TfrmLanguages.cbx_OnClick");
  const std::size_t i = BoxIndex(name);
  if (i >= boxes_.size()) return {};
  TTargetBox* box = &boxes_[i];
  box->State = checked ? TBoxState::Checked : TBoxState::Unchecked;
  const TTargetInfo& info = TargetInfo(box->Target);
  if (info.Platform == kPlatformVclNet || info.Platform == kPlatformNetFcl ||
      info.Language == kLanguageChrome) {
    box->State = TBoxState::Unchecked;
    if (info.Platform == kPlatformVclNet && info.Language != kLanguageChrome) {
      return {Show("VCL.NET will be available in Tessera 3.0"), Set(TBoxState::Unchecked)};
    }
    return {Show("Pure .NET FCL and Chrome are planned for Tessera 4.0"), Set(TBoxState::Unchecked)};
  }
  if (box->Target == 0) return {};
  return ApplyTemplateRules(*box);
}

std::vector<TClickStep> TLanguagesPage::ApplyTemplateRules(TTargetBox& box) {
  const TTargetChoice& choice = wizard_.Targets[box.Target];
  if (choice.Required) {
    box.State = TBoxState::Grayed;
    return {Set(TBoxState::Grayed), Show("This item is required in the selected template.")};
  }
  if (choice.Allowed) {
    wizard_.Targets[box.Target].Checked = box.State == TBoxState::Checked;
    Update_Target_Variables(wizard_);
    Update_Controls();
    return {};
  }
  box.State = TBoxState::Unchecked;
  return {Set(TBoxState::Unchecked), Show("This item is disallowed in the selected template.")};
}

void TLanguagesPage::CheckRules(TPageErrors& errors) {
  const auto checked = std::count_if(boxes_.begin(), boxes_.end(),
                                     [](const TTargetBox& b) { return b.State == TBoxState::Checked; });
  if (checked < 1) errors.Add_Error("At least one target language/platform must be chosen.");
}

}  // namespace tsaw
