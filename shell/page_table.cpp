#include "shell/page_table.h"

#include <QLabel>

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

// Temporary stand-in for the data-entry and creation pages until their widgets exist.
TPageFactory Placeholder(const char* page_class) {
  return [page_class](TPageContext&, QWidget* parent) -> QWidget* {
    auto* label = new QLabel(QString("The page %1 is not built yet.").arg(page_class), parent);
    label->setObjectName("labPlaceholder");
    label->setAlignment(Qt::AlignCenter);
    return label;
  };
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
      {"Creation Process", "Creation Process", "TfrmCreation", Placeholder("TfrmCreation")},
  }};
  return pages;
}

}  // namespace tsaw
