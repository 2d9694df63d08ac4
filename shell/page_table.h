#pragma once
// The wizard's eleven pages in step order: their titles and names, and how each page is built.

#include <QWidget>

#include <array>
#include <functional>

#include "model/wizard.h"
#include "pages/page_memory.h"
#include "platform/dialogs.h"

namespace tsaw {

class TfrmMain;

// What a page is built with: the frame that shows it and the services it may use.
struct TPageContext {
  TfrmMain& Frame;
  TWizard& Wizard;
  platform::Dialogs& Dialogs;
  TPageMemory& Memory;
};

// Builds a page as a child of `parent`, which owns it.
using TPageFactory = std::function<QWidget*(TPageContext& context, QWidget* parent)>;

struct TPageEntry {
  const char* Title;      // shown over the page and in the step caption
  const char* Name;
  const char* PageClass;  // the page's form class
  TPageFactory Make;
};

inline constexpr int kFirstPage = 0;
inline constexpr int kLastPage = 10;
using TPageTable = std::array<TPageEntry, kLastPage + 1>;

// The wizard's pages.
const TPageTable& WizardPages();

}  // namespace tsaw
