#include "shell/page_table.h"

#include "jobs/session.h"
#include "model/startup.h"
#include "pages/creation_page_widget.h"
#include "pages/page_widgets.h"
#include "pages/templates_page.h"
#include "pages/welcome_page.h"
#include "shell/main_frame.h"

namespace tsaw {
namespace {

QWidget* MakeWelcome(TPageContext& context, QWidget* parent) {
  TfrmMain& frame = context.Frame;
  TWelcomeActions actions{[&frame] { frame.btnTemplates_OnClick(); },
                          [&frame] {
                            frame.ShowJobMark();
                            frame.btnTemplates_OnClick();
                          }};
  return new TfrmWelcome(context.Wizard, context.Dialogs, std::move(actions), parent);
}

QWidget* MakeTemplates(TPageContext& context, QWidget* parent) {
  TfrmMain& frame = context.Frame;
  return new TfrmTemplates(context.Wizard, {[&frame] { frame.HideJobMark(); }}, parent);
}

// A data-entry page, built with the services it takes from the frame's context.
TPageFactory DataPage(TPageWidget* (*make)(const TPageServices& services, QWidget* parent)) {
  return [make](TPageContext& context, QWidget* parent) -> QWidget* {
    return make({context.Wizard, context.Memory, context.Dialogs}, parent);
  };
}

QWidget* MakeCustomPage(TPageContext&, QWidget* parent) { return NewCustomPage(parent); }

// The last step: its run sets the fixed variables again from the frame's clock and machine, and
// hides the frame's navigation while it goes on.
QWidget* MakeCreation(TPageContext& context, QWidget* parent) {
  TfrmMain& frame = context.Frame;
  const TFrameServices& services = frame.Services();
  TCreationPageServices page{context.Wizard, context.Dialogs,
                             [&services](TWizard& wizard) {
                               Set_Fixed_Variables(wizard, kWizardProgram, services.Clock, services.Machine);
                             },
                             [&frame](bool visible) { frame.ShowNavigation(visible); }};
  return new TfrmCreation(std::move(page), parent);
}

}  // namespace

const TPageTable& WizardPages() {
  static const TPageTable pages = {{
      {"Welcome", "Welcome", "TfrmWelcome", MakeWelcome},
      {"Template Selection", "Template Selection", "TfrmTemplates", MakeTemplates},
      {"Platforms & Languages", "Platforms Languages", "TfrmLanguages", DataPage(NewLanguagesPage)},
      {"Common Properties", "Common Properties", "TfrmCommonProperties", DataPage(NewCommonPage)},
      {"Manager Properties", "Manager Properties", "TfrmManagerProperties", DataPage(NewManagerPage)},
      {"Plugin Properties", "Plugin Properties", "TfrmPluginProperties", DataPage(NewPluginPage)},
      {"Logging", "Logging", "TfrmLogging", DataPage(NewLoggingPage)},
      {"Cosmetics", "Cosmetics", "TfrmCosmetics", DataPage(NewCosmeticsPage)},
      {"Custom Page", "Custom Page", "TfrmCustomPage", MakeCustomPage},
      {"Output Settings", "Output Settings", "TfrmOutputSettings", DataPage(NewOutputPage)},
      {"Creation Process", "Creation Process", "TfrmCreation", MakeCreation},
  }};
  return pages;
}

}  // namespace tsaw
