#include "pages/output_page_widget.h"

#include <QFileDialog>
#include <QGroupBox>
#include <QIcon>
#include <QLineEdit>
#include <QScopeGuard>
#include <QToolButton>

#include "model/expand.h"
#include "pages/output_page.h"
#include "platform/handler_guard.h"

namespace tsaw {

namespace {

constexpr int kNativeBrowser = 1;
constexpr int kQtBrowser = 2;

}  // namespace

std::optional<std::string> QtFolderChooser(QWidget* parent, const std::string& start, bool native) {
  QFileDialog::Options options = QFileDialog::ShowDirsOnly;
  if (!native) options |= QFileDialog::DontUseNativeDialog;
  const QString folder = QFileDialog::getExistingDirectory(parent, "Select a folder:", ToQt(start), options);
  if (folder.isEmpty()) return std::nullopt;
  return FromQt(folder);
}

TOutputPageWidget::TOutputPageWidget(const TPageServices& services, QWidget* parent)
    : TFieldPageWidget(services, std::make_unique<TOutputPage>(services.Wizard, services.Memory.For(TPageKind::Output)),
                       TSelectorPlace::None, parent) {
  btnBrowse_ = new QToolButton(FieldsPanel());
  btnBrowse_->setObjectName("btnBrowse");
  btnBrowse_->setIcon(QIcon::fromTheme("folder-open"));
  btnBrowse_->setText("Browse...");
  btnBrowse_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  btnBrowse_->setToolTip(ToQt(kBrowseHint));
  AddBesideField(viOutputBaseFolder, btnBrowse_);
  if (auto* lookup = findChild<QWidget*>("btnLookupBaseFolder")) setTabOrder(lookup, btnBrowse_);
  connect(btnBrowse_, &QToolButton::clicked, this, &TOutputPageWidget::btnBrowse_OnClick);
}

void TOutputPageWidget::btnBrowse_OnClick() {
  platform::RunHandler("TSaW_frmOutputSettings.TfrmOutputSettings.btnBrowse_OnClick", [&](int& step) {
    const TWizard& wizard = Services().Wizard;
    const int mode = wizard.ShellBrowserMode;
    QLineEdit* field = LineEdit(viOutputBaseFolder);
    if ((mode != kNativeBrowser && mode != kQtBrowser) || field == nullptr || field->isReadOnly()) return;
    btnBrowse_->setEnabled(false);
    const auto restore = qScopeGuard([this] { ShowEditability(); });
    step = 10;
    const std::string start = ExpandVar(wizard, FromQt(field->text()));
    const TFolderChooser& choose = Services().ChooseFolder;
    const std::optional<std::string> folder =
        choose ? choose(this, start, mode == kNativeBrowser) : QtFolderChooser(this, start, mode == kNativeBrowser);
    step = 20;
    if (!folder || folder->empty() || (mode == kQtBrowser && *folder == start)) return;
    field->setText(ToQt(EmbedVar(wizard, *folder)));
  });
}

}  // namespace tsaw
