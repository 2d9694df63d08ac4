#pragma once
// The Manager properties page: the property values of the manager component of the host project.

#include "pages/field_page.h"

namespace tsaw {

class TManagerPage : public TFieldPage {
 public:
  TManagerPage(TWizard& wizard, TPageRecall& recall);
  std::string_view Introduction() const override;
  std::string_view PanelCaption() const override { return "Manager's Fields:"; }
  // One rule: the expanded `Manager.Version` must not be blank.
  void CheckRules(TPageErrors& errors) override;

 protected:
  std::optional<std::string> AdviceFor(std::string_view control) const override;
};

}  // namespace tsaw
