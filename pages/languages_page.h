#pragma once
// The Platforms and languages page: one check box per target that the user may choose, with the
// rules that decide what a click does. What it edits is the wizard's selection of targets.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pages/page_model.h"

namespace tsaw {

// The grid's heading and its platform rows' captions (Win32, VCL.NET, .NET FCL); the IDE columns
// are captioned with the catalogue's language names.
inline constexpr std::string_view kLanguagesHeading = "   Languages";
inline constexpr std::array<std::string_view, 3> kPlatformRowCaptions{"Win 32", " VCL .NET", ".NET  FCL"};

// The IDE word of IDE `ide` (1 to 9) in the names of the grid's boxes and column captions: "D5" ..
// "Chrome"; empty out of range.
std::string_view IdeWord(uint16_t ide);

enum class TBoxState { Unchecked, Checked, Grayed };

// One check box of the grid of IDE columns and platform rows.
struct TTargetBox {
  std::string Name;  // "cbx" + platform word + IDE word: "cbxWinD5"
  uint16_t Ide = 0;
  uint16_t Platform = 0;
  uint16_t Target = 0;
  bool Loaded = false;  // whether reloading sets it from the wizard's selection
  TBoxState State = TBoxState::Unchecked;
};

// One thing a click makes the page do, in the order given: set the box, or show a message.
struct TClickStep {
  enum class TKind { SetState, ShowMessage };
  TKind Kind = TKind::SetState;
  TBoxState State = TBoxState::Unchecked;
  std::string Message;
  bool operator==(const TClickStep&) const = default;
};

class TLanguagesPage : public TPageModel {
 public:
  TLanguagesPage(TWizard& wizard, TPageRecall& recall);
  std::string_view Introduction() const override;

  // The sixteen boxes in grid order (IDE by IDE); empty before Open.
  const std::vector<TTargetBox>& Boxes() const { return boxes_; }
  // The box named `name`, or nullptr.
  const TTargetBox* Box(std::string_view name) const;
  // " Delphi 5 for Win32 ": the box's target title between blanks.
  static std::string Hint(const TTargetBox& box);

  // The user clicked box `name`, which the click left `checked`. Applies the click rules (only
  // Win32 targets can be chosen; required ones stay selected; disallowed ones are refused) and
  // returns what the page must show, in order. An unknown name does nothing.
  std::vector<TClickStep> cbx_OnClick(std::string_view name, bool checked);

  // One rule: at least one box is checked.
  void CheckRules(TPageErrors& errors) override;

 protected:
  void Init_Controls() override;
  // Sets the loaded boxes from the wizard's selection.
  void Load_Controls() override;
  std::optional<std::string> AdviceFor(std::string_view control) const override;

 private:
  // The position of the box named `name`, or the box count when there is none.
  std::size_t BoxIndex(std::string_view name) const;
  std::vector<TClickStep> ApplyTemplateRules(TTargetBox& box);

  std::vector<TTargetBox> boxes_;
};

}  // namespace tsaw
