#pragma once
// The wizard frame: one page at a time, its title and step caption, Previous and Next, the
// "change template" link and the active-Job mark; it owns the order of the eleven pages.

#include <QPointer>
#include <QWidget>

#include <filesystem>

#include "model/wizard.h"
#include "pages/page_memory.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/machine_folders.h"
#include "shell/page_table.h"

class QLabel;
class QPushButton;

namespace tsaw {

// What the frame works with; all of it must outlive the frame.
struct TFrameServices {
  TWizard& Wizard;
  const platform::Clock& Clock;
  const platform::MachineFolders& Machine;
  platform::Dialogs& Dialogs;
  // Where the window's size and place are kept between sessions; empty: nowhere, it opens fitted.
  std::filesystem::path WindowSettings = {};
};

// The frame (`TfrmMain`). Creating it starts the wizard session (folders below the framework
// root, the active configuration, the fixed variables) and shows the Welcome page; what the user
// should be told about the start (a missing wizard folder, say) is shown once the frame is up.
// Pages report their validity through wizard.RefreshStepButtons, which the frame binds.
class TfrmMain : public QWidget {
  Q_OBJECT
 public:
  // Button tags, as the shared click handler tells them apart.
  static constexpr int kTagPrev = 1;
  static constexpr int kTagNext = 2;

  explicit TfrmMain(TFrameServices services, QWidget* parent = nullptr, const TPageTable& pages = WizardPages());
  ~TfrmMain() override;

  int PageNumber() const { return page_number_; }
  QWidget* CurrentPage() const { return current_; }
  const TFrameServices& Services() const { return services_; }

  // Refreshes the buttons, the step caption and the link for the current page's validity.
  void UpdateStepButtons(bool page_valid);
  // Previous (kTagPrev) or Next (kTagNext); any other tag rebuilds the current page.
  void btnPrevNext_OnClick(int tag);
  // Goes to the Template Selection page unless already there.
  void btnTemplates_OnClick();
  // Hides Previous, Next and the "change template" link while the page runs something that must
  // not be left (the creation run); showing them again refreshes them as for a valid page.
  void ShowNavigation(bool visible);
  // The active-Job mark, with the active Job's file in its hint.
  void ShowJobMark();
  void HideJobMark();

 protected:
  void closeEvent(QCloseEvent* event) override;
  // Enter that no control took (a multi-line field takes it) means Next where Next is enabled;
  // on a focused push or tool button it presses that button.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* MakeHeader();
  QWidget* MakeButtons();
  void ChangePage();
  void UpdatePage();
  void KillPages();
  // Gives the new page the focus: Next when it is enabled, else the page's first control (none on
  // the last page, where Enter must not start anything).
  void PutFocusOn(QWidget& page);
  // The keyboard reaches Previous and Next after the last control of `page`.
  void PutNavigationAfter(const QWidget& page);

  TFrameServices services_;
  const TPageTable& pages_;
  TPageMemory memory_;
  TPageContext context_;
  int page_number_ = kFirstPage;
  QPointer<QWidget> current_;
  QLabel* labPageTitle_ = nullptr;
  QLabel* labSteps_ = nullptr;
  QLabel* labChangeTemplate_ = nullptr;
  QLabel* imgJobActive_ = nullptr;
  QWidget* panPages_ = nullptr;
  QPushButton* btnPrev_ = nullptr;
  QPushButton* btnNext_ = nullptr;
};

}  // namespace tsaw
