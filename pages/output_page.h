#pragma once
// The Output settings page: the Base Folder under which the Project Set root is created.

#include <string>
#include <string_view>

#include "pages/field_page.h"

namespace tsaw {

// The hint of the button that browses for the folder.
inline constexpr std::string_view kBrowseHint = " Browse for a base folder ";

class TOutputPage : public TFieldPage {
 public:
  TOutputPage(TWizard& wizard, TPageRecall& recall);
  std::string_view Introduction() const override;
  std::string_view PanelCaption() const override { return "Output Settings:"; }
  // One rule: the expanded `Output.BaseFolder` must not be blank. Existence is not checked.
  void CheckRules(TPageErrors& errors) override;

 protected:
  std::optional<std::string> AdviceFor(std::string_view control) const override;
};

// The text a browsed `folder` is stored as: the first path variable (Path.Delphi,
// Path.TsaProjects, Path.TsaRoot, Path.WindowsSystem, Path.Windows, Path.ProgramFiles) whose
// expansion begins `folder` (ignoring case) stands in for that beginning. The result ends in
// exactly one backslash; doubled backslashes are made single.
std::string EmbedVar(const TWizard& wizard, std::string_view folder);

}  // namespace tsaw
