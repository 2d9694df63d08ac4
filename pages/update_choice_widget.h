#pragma once
// The Creation Process page's choice, when the Project Set folder exists, between Replace (the old
// folder goes to the trash) and Update (the new generation is merged into the folder, keeping the
// developer's edits), and the conflicts an update left, each with a button that opens the file.

#include <QWidget>

#include <functional>
#include <optional>
#include <string>

#include "creation/creation_run.h"
#include "model/wizard.h"
#include "platform/dialogs.h"

class QGroupBox;
class QLabel;
class QRadioButton;
class QVBoxLayout;

namespace tsaw {

class TUpdateChoice : public QWidget {
  Q_OBJECT
 public:
  // `open_document` opens a file in the desktop's viewer and tells whether that worked; messages
  // go through `dialogs`. Both outlive the widget.
  TUpdateChoice(std::function<bool(const std::string&)> open_document, platform::Dialogs& dialogs,
                QWidget* parent);

  // Offers the choice for the Project Set folder the answers name: nothing when the folder does
  // not exist; Replace and Update, Update chosen, when a generation of it is recorded; otherwise
  // Replace only, saying why.
  void Refresh(const TWizard& wizard);
  // True when Update is offered and chosen.
  bool UpdateChosen() const;
  // Runs the update with `run` making the new generation and lists the conflicts. Returns the
  // creation run's outcome, or nullopt when the update was refused or failed after the run
  // finished (a message has said why).
  std::optional<creation::TRunOutcome> RunUpdate(TWizard& wizard, creation::TCreationRun& run);

 private:
  void ClearConflicts();

  std::function<bool(const std::string&)> open_document_;
  platform::Dialogs& dialogs_;
  QRadioButton* radReplace_ = nullptr;
  QRadioButton* radUpdate_ = nullptr;
  QLabel* labWhy_ = nullptr;
  QGroupBox* panConflicts_ = nullptr;
  QVBoxLayout* conflict_rows_ = nullptr;
};

}  // namespace tsaw
