#include "pages/update_choice_widget.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <filesystem>

#include "generations/record.h"
#include "update/update_run.h"

namespace tsaw {
namespace {

constexpr const char* kNotRecorded =
    "Only Replace is possible: no generation of this Project Set folder is recorded (it was made elsewhere, "
    "with --no-record or by a run that did not finish, or the record was removed), so your edits cannot be told "
    "from the template's output.";

}  // namespace

TUpdateChoice::TUpdateChoice(std::function<bool(const std::string&)> open_document, platform::Dialogs& dialogs,
                             QWidget* parent)
    : QWidget(parent), open_document_(std::move(open_document)), dialogs_(dialogs) {
  setObjectName("panUpdateChoice");
  radReplace_ = new QRadioButton("Replace: the existing Project Set folder goes to the trash", this);
  radReplace_->setObjectName("radReplace");
  radUpdate_ = new QRadioButton("Update: make it again and keep my edits", this);
  radUpdate_->setObjectName("radUpdate");
  labWhy_ = new QLabel(kNotRecorded, this);
  labWhy_->setObjectName("labUpdateWhy");
  labWhy_->setWordWrap(true);
  panConflicts_ = new QGroupBox(" Conflicts to resolve ", this);
  panConflicts_->setObjectName("panConflicts");
  conflict_rows_ = new QVBoxLayout(panConflicts_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  for (QWidget* widget : std::initializer_list<QWidget*>{radReplace_, radUpdate_, labWhy_}) {
    // The page keeps its layout when the choice appears after a run.
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    layout->addWidget(widget);
  }
  layout->addWidget(panConflicts_);
  panConflicts_->hide();
}

void TUpdateChoice::Refresh(const TWizard& wizard) {
  const std::filesystem::path project_set = creation::ProjectSetFolderOf(wizard);
  std::error_code io;
  const bool exists = std::filesystem::is_directory(project_set, io);
  const bool recorded = exists && generations::HasRecordedGeneration(project_set);
  radReplace_->setVisible(exists);
  radUpdate_->setVisible(recorded);
  labWhy_->setVisible(exists && !recorded);
  (recorded ? radUpdate_ : radReplace_)->setChecked(true);
}

bool TUpdateChoice::UpdateChosen() const { return !radUpdate_->isHidden() && radUpdate_->isChecked(); }

std::optional<creation::TRunOutcome> TUpdateChoice::RunUpdate(TWizard& wizard, creation::TCreationRun& run) {
  ClearConflicts();
  const update::TUpdateResult result = update::RunUpdate(wizard, run, false);
  if (result.Run != creation::TRunOutcome::Finished) return result.Run;
  if (result.Outcome == update::TUpdateOutcome::Refused || result.Outcome == update::TUpdateOutcome::Failed) {
    dialogs_.ShowMessage(platform::TMessageKind::Error, "The update has stopped: " + result.Message);
    return std::nullopt;
  }
  int row = 0;
  for (const update::TFileAction& action : result.Plan.Files) {
    if (action.Fate != update::TFate::Conflict) continue;
    const std::string file = (result.ProjectSet / action.Path).string();
    auto* line = new QWidget(panConflicts_);
    auto* cells = new QHBoxLayout(line);
    cells->setContentsMargins(0, 0, 0, 0);
    auto* name = new QLabel(QString::fromStdString(action.Path), line);
    name->setObjectName(QString("labConflict%1").arg(++row));
    auto* open = new QPushButton("open", line);
    open->setObjectName(QString("btnOpenConflict%1").arg(row));
    connect(open, &QPushButton::clicked, this, [this, file] {
      if (!open_document_(file)) {
        dialogs_.ShowMessage(platform::TMessageKind::Error, "The file could not be opened: " + file);
      }
    });
    cells->addWidget(name, 1);
    cells->addWidget(open);
    conflict_rows_->addWidget(line);
  }
  panConflicts_->setVisible(row > 0);
  return creation::TRunOutcome::Finished;
}

void TUpdateChoice::ClearConflicts() {
  while (QLayoutItem* item = conflict_rows_->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  panConflicts_->hide();
}

}  // namespace tsaw
