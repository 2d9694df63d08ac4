#pragma once
// The Template Selection page: the catalogue's tree of folders and templates, the selected
// record's details, validation result and advice, and the lock that an active Job puts on it.

#include <QWidget>

#include <functional>

#include "model/wizard.h"
#include "templates/catalogue.h"

class QLabel;
class QLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace tsaw {

// What the page asks of the wizard frame.
struct TTemplatesActions {
  std::function<void()> JobClosed;  // hide the frame's active-Job mark
};

// The page (`TfrmTemplates`). Building it scans the templates folder and restores the wizard's
// selection (with an active Job: selects the Job's template and applies its values once, then
// locks the tree). Every selection goes through the catalogue, which writes the wizard state and
// reports the page's validity through wizard.RefreshStepButtons. Unreadable folders simply
// contribute nothing; the page never throws out of a handler.
class TfrmTemplates : public QWidget {
  Q_OBJECT
 public:
  TfrmTemplates(TWizard& wizard, TTemplatesActions actions, QWidget* parent);

  void btnRefresh_OnClick();
  void btnExpandAll_OnClick();
  void btnCollapseAll_OnClick();
  void btnCloseJob_OnClick();

 private:
  QWidget* MakeTreePanel();
  QLayout* MakeTreeButtons(QWidget* panel);
  QWidget* MakeInfoPanel();
  void TreeView_OnChange(QTreeWidgetItem* item);
  void DoAndShow(TTreeAction action);
  void FillTree();
  // Fills the details, the validation result and the advice; the tab shown stays as it is.
  void ShowSelection();
  // Shows the Validation tab for a bad template, else the Advice tab: what a new selection needs.
  void ShowTabFor(const TSelectionView& view);
  void ShowJobLock(bool locked);

  TWizard& wizard_;
  TTemplatesActions actions_;
  TCatalogue catalogue_;
  QLabel* labCount_;
  QTreeWidget* tvTemplates_;
  QPushButton* btnRefresh_;
  QPushButton* btnExpandAll_;
  QPushButton* btnCollapseAll_;
  QWidget* panCloseJob_;
  QLineEdit* ediPrefix_;
  QLineEdit* ediAuthor_;
  QLineEdit* ediPurpose_;
  QPlainTextEdit* memDescription_;
  QTabWidget* tabInfo_;
  QLabel* labValidationCap_;
  QLabel* labErrorName_;
  QPlainTextEdit* memValidation_;
  QPlainTextEdit* memAdvice_;
};

}  // namespace tsaw
