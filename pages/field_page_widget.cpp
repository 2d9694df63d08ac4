#include "pages/field_page_widget.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QToolButton>

#include "model/variables.h"
#include "pages/lookup_list.h"
#include "pages/lookup_popup.h"
#include "platform/handler_guard.h"

namespace tsaw {

namespace {

constexpr int kCaptionColumn = 0;
constexpr int kEditorColumn = 1;
constexpr int kLookupColumn = 2;
constexpr int kExtraColumn = 3;

QString NameOf(std::string_view name) { return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())); }

// "ediAuthor" -> "labAuthor": the caption label of an editor.
QString CaptionName(std::string_view editor) { return "lab" + NameOf(editor.substr(3)); }

void SetEditorText(QWidget* editor, const QString& text) {
  if (auto* line = qobject_cast<QLineEdit*>(editor)) {
    line->setText(text);
    line->setCursorPosition(0);
  } else if (auto* memo = qobject_cast<QPlainTextEdit*>(editor)) {
    memo->setPlainText(text);
  }
}

QString EditorText(const QWidget* editor) {
  if (auto* line = qobject_cast<const QLineEdit*>(editor)) return line->text();
  if (auto* memo = qobject_cast<const QPlainTextEdit*>(editor)) return memo->toPlainText();
  return {};
}

// A read-only editor takes the window's colour, so that it does not invite typing.
void SetEditorReadOnly(QWidget* editor, bool read_only) {
  if (auto* line = qobject_cast<QLineEdit*>(editor)) line->setReadOnly(read_only);
  if (auto* memo = qobject_cast<QPlainTextEdit*>(editor)) memo->setReadOnly(read_only);
  QPalette palette = editor->palette();
  const QPalette normal = QApplication::palette(editor);
  palette.setColor(QPalette::Base, read_only ? normal.color(QPalette::Window) : normal.color(QPalette::Base));
  editor->setPalette(palette);
}


// The editor named `name`: a multi-line box for a "mem" name, else a one-line edit box.
QWidget* MakeEditor(std::string_view name, QWidget* parent) {
  QWidget* editor = nullptr;
  if (name.starts_with("mem")) {
    auto* memo = new QPlainTextEdit(parent);
    memo->setTabChangesFocus(true);
    memo->setMaximumHeight(memo->fontMetrics().lineSpacing() * 5);
    editor = memo;
  } else {
    editor = new QLineEdit(parent);
  }
  editor->setObjectName(NameOf(name));
  return editor;
}

}  // namespace

TFieldPageWidget::TFieldPageWidget(const TPageServices& services, std::unique_ptr<TFieldPage> model,
                                   TSelectorPlace selector, QWidget* parent)
    : TPageWidget(services, std::move(model), parent), page_(static_cast<TFieldPage&>(Model())) {
  FieldsPanel()->setTitle(ToQt(page_.PanelCaption()));
  grid_ = new QGridLayout(FieldsPanel());
  grid_->setColumnStretch(kEditorColumn, 1);
  int row = 0;
  if (selector == TSelectorPlace::OwnRow) {
    auto* caption = new QLabel(ToQt(kSelectorCaption), FieldsPanel());
    caption->setObjectName("labPluginIdx");
    grid_->addWidget(caption, row, kCaptionColumn);
    grid_->addWidget(MakeSelector(), row++, kEditorColumn, Qt::AlignLeft);
  }
  for (const TField& field : page_.Fields()) AddField(field, row++);
  if (selector == TSelectorPlace::BesideLastField)
    grid_->addWidget(MakeSelector(), row - 1, kExtraColumn, Qt::AlignLeft);

  cbxExpand_ = new QCheckBox(ToQt(kExpandCaption), FieldsPanel());
  cbxExpand_->setObjectName("cbxExpand");
  WatchFocus(cbxExpand_);
  connect(cbxExpand_, &QCheckBox::clicked, this, &TFieldPageWidget::cbxExpand_OnClick);
  grid_->addWidget(cbxExpand_, row, kEditorColumn, Qt::AlignLeft);
  OpenPage();
  LoadFields();
  ShowEditability();
}

QWidget* TFieldPageWidget::MakeSelector() {
  auto* box = new QWidget(FieldsPanel());
  cboPluginIdx_ = new QComboBox(box);
  cboPluginIdx_->setObjectName("cboPluginIdx");
  cboPluginIdx_->setToolTip(ToQt(kPluginSelectorHint));
  for (const std::string& item : page_.PluginItems()) cboPluginIdx_->addItem(ToQt(item));
  cboPluginIdx_->setEnabled(page_.PluginSelectorEnabled());
  cboPluginIdx_->setVisible(page_.PluginSelectorVisible());
  WatchFocus(cboPluginIdx_);
  connect(cboPluginIdx_, &QComboBox::currentIndexChanged, this, &TFieldPageWidget::cboPluginIdx_OnChange);
  lab1Pin_ = new QLabel(ToQt(kSinglePluginCaption), box);
  lab1Pin_->setObjectName("lab1Pin");
  lab1Pin_->setToolTip(ToQt(kSinglePluginHint));
  lab1Pin_->setVisible(!page_.PluginSelectorVisible());
  auto* layout = new QHBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(cboPluginIdx_);
  layout->addWidget(lab1Pin_);
  return box;
}

void TFieldPageWidget::AddField(const TField& field, int row) {
  auto* caption = new QLabel(ToQt(field.Caption), FieldsPanel());
  caption->setObjectName(CaptionName(field.Edit));
  QWidget* editor = MakeEditor(field.Edit, FieldsPanel());
  caption->setBuddy(editor);
  const std::string locker = LockingTemplate(Services().Wizard, field.VarIdx);
  const bool locked = !locker.empty();
  if (locked) editor->setToolTip(ToQt(" Read-only: set by the template \"" + locker + "\" "));
  const Qt::Alignment beside = qobject_cast<QLineEdit*>(editor) ? Qt::AlignVCenter : Qt::AlignTop;
  grid_->addWidget(caption, row, kCaptionColumn, Qt::AlignLeft | beside);
  grid_->addWidget(editor, row, kEditorColumn);
  WatchFocus(editor);

  QToolButton* lookup = nullptr;
  if (!field.Lookup.empty()) {
    lookup = new QToolButton(FieldsPanel());
    lookup->setObjectName(NameOf(field.Lookup));
    lookup->setIcon(QIcon::fromTheme("edit-find"));
    lookup->setText("...");
    grid_->addWidget(lookup, row, kLookupColumn);
  }
  fields_.push_back({&field, editor, lookup, row, locked, {}});
  const std::size_t index = fields_.size() - 1;
  if (auto* line = qobject_cast<QLineEdit*>(editor))
    connect(line, &QLineEdit::textChanged, this, [this, index] { edi_OnChange(fields_[index]); });
  else
    connect(static_cast<QPlainTextEdit*>(editor), &QPlainTextEdit::textChanged, this,
            [this, index] { edi_OnChange(fields_[index]); });
  if (lookup != nullptr)
    connect(lookup, &QToolButton::clicked, this, [this, index] { btnLookup_OnClick(fields_[index]); });
}

void TFieldPageWidget::AddBesideField(uint16_t var_idx, QWidget* control) {
  for (TFieldControls& field : fields_) {
    if (field.Field->VarIdx != var_idx) continue;
    grid_->addWidget(control, field.Row, kExtraColumn, Qt::AlignLeft);
    field.Extras.push_back(control);
  }
  ShowEditability();
}

void TFieldPageWidget::ShowEditability() {
  const bool expanded = page_.Expanded();
  for (const TFieldControls& field : fields_) {
    const bool read_only = expanded || field.Locked;
    SetEditorReadOnly(field.Editor, read_only);
    if (field.Lookup != nullptr) {
      const bool has_list = LookupFor(Services().Wizard, field.Field->VarIdx).has_value();
      field.Lookup->setEnabled(!read_only && has_list);
      const std::string hint = page_.LookupHint(*field.Field);
      field.Lookup->setToolTip(ToQt(has_list ? hint : hint + "\n" + std::string(kNoLookupListHint)));
    }
    for (QWidget* extra : field.Extras) extra->setEnabled(!read_only);
  }
}

QLineEdit* TFieldPageWidget::LineEdit(uint16_t var_idx) const {
  for (const TFieldControls& field : fields_) {
    if (field.Field->VarIdx == var_idx) return qobject_cast<QLineEdit*>(field.Editor);
  }
  return nullptr;
}

void TFieldPageWidget::LoadFields() {
  loading_ = true;
  for (const TFieldControls& field : fields_) SetEditorText(field.Editor, ToQt(page_.FieldText(*field.Field)));
  if (cboPluginIdx_ != nullptr) {
    QSignalBlocker block(cboPluginIdx_);
    cboPluginIdx_->setCurrentIndex(cboPluginIdx_->findText(ToQt(page_.CurrentPluginItem())));
  }
  loading_ = false;
}

void TFieldPageWidget::edi_OnChange(const TFieldControls& field) {
  if (loading_) return;
  platform::RunHandler("TSaW_Pages.TFieldPageWidget.edi_OnChange", [&](int&) {
    page_.edi_OnChange(field.Field->VarIdx, FromQt(EditorText(field.Editor)));
    ShowOutcome();
  });
}

void TFieldPageWidget::btnLookup_OnClick(const TFieldControls& field) {
  platform::RunHandler("TSaW_Pages.TFieldPageWidget.btnLookup_OnClick", [&](int&) {
    Lookup_Edit(Services().Wizard, field.Field->VarIdx, qobject_cast<QLineEdit*>(field.Editor));
  });
}

void TFieldPageWidget::cbxExpand_OnClick(bool checked) {
  platform::RunHandler("TSaW_Pages.TFieldPageWidget.cbxExpand_OnClick", [&](int&) {
    platform::Dialogs& dialogs = Services().Dialogs;
    const bool expanded =
        page_.cbxExpand_OnClick(checked, [&dialogs](const std::string& message) { dialogs.ShowMessage(platform::TMessageKind::Warning, message); });
    cbxExpand_->setChecked(expanded);
    ShowEditability();
    LoadFields();
    ShowOutcome();
  });
}

void TFieldPageWidget::cboPluginIdx_OnChange() {
  if (loading_) return;
  platform::RunHandler("TSaW_Pages.TFieldPageWidget.cboPluginIdx_OnChange", [&](int&) {
    const QString item = cboPluginIdx_->currentText();
    const std::string text = FromQt(item);
    page_.cboPluginIdx_OnChange(cboPluginIdx_->currentIndex() >= 0 ? std::optional<std::string_view>(text)
                                                                    : std::nullopt);
    LoadFields();
    ShowOutcome();
  });
}

}  // namespace tsaw
