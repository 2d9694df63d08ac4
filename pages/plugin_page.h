#pragma once
// The Plug-in properties page: the property values of each plug-in's component, shown for the
// current plug-in index.

#include "pages/field_page.h"

namespace tsaw {

class TPluginPage : public TFieldPage {
 public:
  TPluginPage(TWizard& wizard, TPageRecall& recall);
  std::string_view Introduction() const override;
  std::string_view PanelCaption() const override { return "Plugin's Fields:"; }
  // One rule per plug-in, shown or not: its expanded `Plugin.Version` must not be blank.
  // `Plugin.Index` is stepped through the plug-ins and restored.
  void CheckRules(TPageErrors& errors) override;

 protected:
  std::optional<std::string> AdviceFor(std::string_view control) const override;
};

}  // namespace tsaw
