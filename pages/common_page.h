#pragma once
// The Common properties page: company, product, author, copyright, the projects prefix and the
// host and plug-in project names, with the rules that make the names usable as file names.

#include "pages/field_page.h"

namespace tsaw {

class TCommonPage : public TFieldPage {
 public:
  TCommonPage(TWizard& wizard, TPageRecall& recall);
  std::string_view Introduction() const override;
  std::string_view PanelCaption() const override { return "Common Fields:"; }
  // The prefix and host name rules, then each plug-in's name rules and uniqueness (each pair of
  // plug-ins compared once). `Plugin.Index` is stepped through the plug-ins and restored.
  void CheckRules(TPageErrors& errors) override;

 protected:
  std::optional<std::string> AdviceFor(std::string_view control) const override;
};

}  // namespace tsaw
