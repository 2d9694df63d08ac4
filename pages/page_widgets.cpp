#include "pages/page_widgets.h"

#include <QLabel>
#include <QVBoxLayout>

#include "pages/common_page.h"
#include "pages/custom_page.h"
#include "pages/field_page_widget.h"
#include "pages/languages_page_widget.h"
#include "pages/manager_page.h"
#include "pages/option_pages_widget.h"
#include "pages/output_page_widget.h"
#include "pages/plugin_page.h"

namespace tsaw {

TPageWidget* NewLanguagesPage(const TPageServices& services, QWidget* parent) {
  return new TLanguagesPageWidget(services, parent);
}

TPageWidget* NewCommonPage(const TPageServices& services, QWidget* parent) {
  return new TFieldPageWidget(services,
                              std::make_unique<TCommonPage>(services.Wizard, services.Memory.For(TPageKind::Common)),
                              TSelectorPlace::BesideLastField, parent);
}

TPageWidget* NewManagerPage(const TPageServices& services, QWidget* parent) {
  return new TFieldPageWidget(services,
                              std::make_unique<TManagerPage>(services.Wizard, services.Memory.For(TPageKind::Manager)),
                              TSelectorPlace::None, parent);
}

TPageWidget* NewPluginPage(const TPageServices& services, QWidget* parent) {
  return new TFieldPageWidget(services,
                              std::make_unique<TPluginPage>(services.Wizard, services.Memory.For(TPageKind::Plugin)),
                              TSelectorPlace::OwnRow, parent);
}

TPageWidget* NewLoggingPage(const TPageServices& services, QWidget* parent) {
  return new TOptionsPageWidget(
      services, std::make_unique<TLoggingPage>(services.Wizard, services.Memory.For(TPageKind::Logging)), parent);
}

TPageWidget* NewCosmeticsPage(const TPageServices& services, QWidget* parent) {
  return new TOptionsPageWidget(
      services, std::make_unique<TCosmeticsPage>(services.Wizard, services.Memory.For(TPageKind::Cosmetics)), parent);
}

TPageWidget* NewOutputPage(const TPageServices& services, QWidget* parent) {
  return new TOutputPageWidget(services, parent);
}

QWidget* NewCustomPage(QWidget* parent) {
  auto* page = new QWidget(parent);
  page->setObjectName("frmCustomPage");
  QPalette palette = page->palette();
  palette.setColor(QPalette::Window, Qt::white);
  page->setPalette(palette);
  page->setAutoFillBackground(true);
  auto* text = new QLabel(ToQt(kCustomPageText), page);
  text->setObjectName("labMainText");
  text->setAlignment(Qt::AlignCenter);
  text->setWordWrap(true);
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(text);
  return page;
}

}  // namespace tsaw
