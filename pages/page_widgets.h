#pragma once
// The data-entry pages as the wizard frame builds them, one function per step. Each returns a new
// page owned by `parent` (by the caller when `parent` is null), already loaded from the wizard and
// validated, so the frame's step buttons are up to date before it is shown.

#include <QWidget>

#include "pages/page_widget.h"

namespace tsaw {

TPageWidget* NewLanguagesPage(const TPageServices& services, QWidget* parent);
TPageWidget* NewCommonPage(const TPageServices& services, QWidget* parent);
TPageWidget* NewManagerPage(const TPageServices& services, QWidget* parent);
TPageWidget* NewPluginPage(const TPageServices& services, QWidget* parent);
TPageWidget* NewLoggingPage(const TPageServices& services, QWidget* parent);
TPageWidget* NewCosmeticsPage(const TPageServices& services, QWidget* parent);
TPageWidget* NewOutputPage(const TPageServices& services, QWidget* parent);
// The Custom page step's placeholder: only its centred text, no fields and no validation.
QWidget* NewCustomPage(QWidget* parent);

}  // namespace tsaw
