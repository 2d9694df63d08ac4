#include "pages/templates_page.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "jobs/job_loader.h"
#include "platform/handler_guard.h"

namespace tsaw {
namespace {

constexpr const char* kCollapseHint = " Collapse all nodes while keeping the active template selected. ";
constexpr const char* kCloseJobHint =
    " Close the active Job to make the Templates Tree \n enabled and available for manual selection. ";

// The catalogue writes CR LF line breaks, as the files it reads do; Qt breaks lines on LF.
QString Shown(const std::string& text) { return QString::fromStdString(text).replace("\r\n", "\n"); }

TCatalogueNode* NodeOf(const QTreeWidgetItem* item) {
  return item ? reinterpret_cast<TCatalogueNode*>(item->data(0, Qt::UserRole).value<quintptr>()) : nullptr;
}

struct TNodeIcons {
  QIcon Folder, Good, Bad;
};

// Adds `node`'s children below `parent` with their captions, icons and expansion; returns the
// item of `selected` when it is among them.
QTreeWidgetItem* AddNodes(const TCatalogueNode& node, QTreeWidgetItem* parent, const TNodeIcons& icons,
                          const TCatalogueNode* selected) {
  QTreeWidgetItem* found = nullptr;
  for (const auto& child : node.Children) {
    auto* item = new QTreeWidgetItem(parent, QStringList{QString::fromStdString(child->Caption)});
    item->setData(0, Qt::UserRole, QVariant::fromValue(reinterpret_cast<quintptr>(child.get())));
    const TTemplateInfo* record = child->Record;
    if (record && record->IsTemplate) {
      item->setIcon(0, record->IsValid ? icons.Good : icons.Bad);
      if (!record->IsValid) item->setToolTip(0, kTemplateErrorNames[record->ErrorKind]);
    } else {
      item->setIcon(0, icons.Folder);
    }
    if (child.get() == selected) found = item;
    if (QTreeWidgetItem* below = AddNodes(*child, item, icons, selected)) found = below;
    item->setExpanded(child->Expanded);
  }
  return found;
}

QPlainTextEdit* ReadOnlyMemo(const char* name, QWidget* parent) {
  auto* memo = new QPlainTextEdit(parent);
  memo->setObjectName(name);
  memo->setReadOnly(true);
  return memo;
}

QLineEdit* ReadOnlyEdit(const char* name, QWidget* parent) {
  auto* edit = new QLineEdit(parent);
  edit->setObjectName(name);
  edit->setReadOnly(true);
  return edit;
}

// Shows the busy cursor for as long as it lives.
class TBusyCursor {
 public:
  TBusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~TBusyCursor() { QGuiApplication::restoreOverrideCursor(); }
};

}  // namespace

TfrmTemplates::TfrmTemplates(TWizard& wizard, TTemplatesActions actions, QWidget* parent)
    : QWidget(parent), wizard_(wizard), actions_(std::move(actions)), catalogue_(wizard) {
  setObjectName("frmTemplates");
  // Repaints stay alive during a long scan; clicks wait until the tree is complete.
  catalogue_.Pump = [] { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); };
  labCount_ = new QLabel(this);
  labCount_->setObjectName("labCount");
  auto* split = new QSplitter(Qt::Horizontal, this);
  split->addWidget(MakeTreePanel());
  split->addWidget(MakeInfoPanel());
  split->setStretchFactor(0, 1);
  split->setStretchFactor(1, 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(labCount_);
  layout->addWidget(split, 1);
  {
    const TBusyCursor busy;
    catalogue_.Open();
  }
  FillTree();
  ShowSelection();
  ShowTabFor(catalogue_.View());
  ShowJobLock(!wizard_.ActiveJobFile.empty());
}

QWidget* TfrmTemplates::MakeTreePanel() {
  auto* panel = new QWidget(this);
  tvTemplates_ = new QTreeWidget(panel);
  tvTemplates_->setObjectName("tvTemplates");
  tvTemplates_->setHeaderHidden(true);
  connect(tvTemplates_, &QTreeWidget::currentItemChanged, this,
          [this](QTreeWidgetItem* item) { TreeView_OnChange(item); });
  connect(tvTemplates_, &QTreeWidget::itemExpanded, this, [](QTreeWidgetItem* item) { NodeOf(item)->Expanded = true; });
  connect(tvTemplates_, &QTreeWidget::itemCollapsed, this, [](QTreeWidgetItem* item) { NodeOf(item)->Expanded = false; });
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(tvTemplates_, 1);
  column->addLayout(MakeTreeButtons(panel));
  return panel;
}

QLayout* TfrmTemplates::MakeTreeButtons(QWidget* panel) {
  QStyle* look = style();
  btnRefresh_ = new QPushButton(look->standardIcon(QStyle::SP_BrowserReload), "&Refresh", panel);
  btnRefresh_->setObjectName("btnRefresh");
  btnRefresh_->setToolTip(" Scan the templates folder again while keeping the active template selected. ");
  btnExpandAll_ = new QPushButton("&Expand all", panel);
  btnExpandAll_->setObjectName("btnExpandAll");
  btnExpandAll_->setToolTip(" Expand all nodes while keeping the active template selected. ");
  btnCollapseAll_ = new QPushButton("C&ollapse all", panel);
  btnCollapseAll_->setObjectName("btnCollapseAll");
  btnCollapseAll_->setToolTip(kCollapseHint);
  connect(btnRefresh_, &QPushButton::clicked, this, &TfrmTemplates::btnRefresh_OnClick);
  connect(btnExpandAll_, &QPushButton::clicked, this, &TfrmTemplates::btnExpandAll_OnClick);
  connect(btnCollapseAll_, &QPushButton::clicked, this, &TfrmTemplates::btnCollapseAll_OnClick);
  panCloseJob_ = new QWidget(panel);
  panCloseJob_->setObjectName("panCloseJob");
  panCloseJob_->setToolTip(kCloseJobHint);
  auto* close_job = new QPushButton(look->standardIcon(QStyle::SP_DialogCloseButton), "Close active Job", panCloseJob_);
  close_job->setObjectName("btnCloseJob");
  close_job->setToolTip(kCloseJobHint);
  connect(close_job, &QPushButton::clicked, this, &TfrmTemplates::btnCloseJob_OnClick);
  auto* close_row = new QHBoxLayout(panCloseJob_);
  close_row->setContentsMargins(0, 0, 0, 0);
  close_row->addWidget(close_job);
  auto* buttons = new QHBoxLayout;
  for (QWidget* button : std::initializer_list<QWidget*>{btnRefresh_, btnExpandAll_, btnCollapseAll_, panCloseJob_}) {
    buttons->addWidget(button);
  }
  buttons->addStretch(1);
  return buttons;
}

QWidget* TfrmTemplates::MakeInfoPanel() {
  auto* panel = new QWidget(this);
  auto* details = new QGroupBox("Template", panel);
  details->setObjectName("panDetails");
  ediPrefix_ = ReadOnlyEdit("ediPrefix", details);
  ediAuthor_ = ReadOnlyEdit("ediAuthor", details);
  ediPurpose_ = ReadOnlyEdit("ediPurpose", details);
  memDescription_ = ReadOnlyMemo("memDescription", details);
  auto* form = new QFormLayout(details);
  form->addRow("Prefix:", ediPrefix_);
  form->addRow("Author:", ediAuthor_);
  form->addRow("Purpose:", ediPurpose_);
  form->addRow("Description:", memDescription_);
  auto* validation = new QWidget(panel);
  labValidationCap_ = new QLabel(validation);
  labValidationCap_->setObjectName("labValidationCap");
  QFont bold = labValidationCap_->font();
  bold.setBold(true);
  labValidationCap_->setFont(bold);
  labErrorName_ = new QLabel(validation);
  labErrorName_->setObjectName("labErrorName");
  labErrorName_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  memValidation_ = ReadOnlyMemo("memValidation", validation);
  auto* validation_column = new QVBoxLayout(validation);
  validation_column->addWidget(labValidationCap_);
  validation_column->addWidget(labErrorName_);
  validation_column->addWidget(memValidation_, 1);
  memAdvice_ = ReadOnlyMemo("memAdvice", panel);
  tabInfo_ = new QTabWidget(panel);
  tabInfo_->setObjectName("tabInfo");
  tabInfo_->addTab(validation, "Validation");
  tabInfo_->addTab(memAdvice_, "Advice");
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(details, 1);
  column->addWidget(tabInfo_, 1);
  return panel;
}

void TfrmTemplates::TreeView_OnChange(QTreeWidgetItem* item) {
  platform::RunHandler("TSaW_frmTemplates.TfrmTemplates.TreeView_OnChange", [&](int& step) {
    step = 10;
    catalogue_.Select(NodeOf(item));
    step = 20;
    ShowSelection();
    ShowTabFor(catalogue_.View());
  });
}

void TfrmTemplates::btnRefresh_OnClick() { DoAndShow(TTreeAction::Refresh); }
void TfrmTemplates::btnExpandAll_OnClick() { DoAndShow(TTreeAction::ExpandAll); }
void TfrmTemplates::btnCollapseAll_OnClick() { DoAndShow(TTreeAction::CollapseAll); }

void TfrmTemplates::DoAndShow(TTreeAction action) {
  platform::RunHandler("TSaW_frmTemplates.TfrmTemplates.Do_And_Restore_Selection", [&](int& step) {
    step = 10;
    {
      const TBusyCursor busy;
      catalogue_.Do_And_Restore_Selection(action);
    }
    step = 20;
    FillTree();
    ShowSelection();
  });
}

void TfrmTemplates::btnCloseJob_OnClick() {
  platform::RunHandler("TSaW_frmTemplates.TfrmTemplates.btnCloseJob_OnClick", [&](int& step) {
    step = 10;
    Close_Job(wizard_);
    ShowJobLock(false);
    tvTemplates_->setFocus();
    step = 20;
    actions_.JobClosed();
    step = 30;
    // Handled as a new selection: the template's own defaults replace the Job's values.
    catalogue_.Select(catalogue_.Selected());
    ShowSelection();
    ShowTabFor(catalogue_.View());
  });
}

void TfrmTemplates::FillTree() {
  const QSignalBlocker quiet(tvTemplates_);
  tvTemplates_->clear();
  QStyle* look = style();
  const TNodeIcons icons{look->standardIcon(QStyle::SP_DirIcon), look->standardIcon(QStyle::SP_FileIcon),
                         look->standardIcon(QStyle::SP_MessageBoxCritical)};
  QTreeWidgetItem* selected =
      AddNodes(catalogue_.Root(), tvTemplates_->invisibleRootItem(), icons, catalogue_.Selected());
  if (selected) {
    tvTemplates_->setCurrentItem(selected);
    tvTemplates_->scrollToItem(selected);
  }
}

void TfrmTemplates::ShowSelection() {
  const TSelectionView& view = catalogue_.View();
  labCount_->setText(QString::fromStdString(catalogue_.Summary()));
  ediPrefix_->setText(QString::fromStdString(view.Prefix));
  ediAuthor_->setText(QString::fromStdString(view.Author));
  ediPurpose_->setText(QString::fromStdString(view.Purpose));
  memDescription_->setPlainText(Shown(view.Description));
  labValidationCap_->setText(QString::fromStdString(view.Caption));
  labErrorName_->setText(QString::fromStdString(view.ErrorName));
  memValidation_->setPlainText(Shown(view.Message));
  memAdvice_->setPlainText(Shown(view.Advice));
}

void TfrmTemplates::ShowTabFor(const TSelectionView& view) { tabInfo_->setCurrentIndex(view.ErrorName.empty() ? 1 : 0); }

void TfrmTemplates::ShowJobLock(bool locked) {
  tvTemplates_->setEnabled(!locked);
  btnRefresh_->setVisible(!locked);
  btnExpandAll_->setVisible(!locked);
  btnCollapseAll_->setVisible(!locked);
  panCloseJob_->setVisible(locked);
}

}  // namespace tsaw
