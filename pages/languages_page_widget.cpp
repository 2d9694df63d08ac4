#include "pages/languages_page_widget.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

#include "model/targets.h"
#include "platform/handler_guard.h"

namespace tsaw {

namespace {

constexpr int kHeaderRows = 2;  // the heading, then the IDE captions

void ShowState(QCheckBox* box, TBoxState state) {
  if (state == TBoxState::Grayed) {
    box->setCheckState(Qt::PartiallyChecked);
    return;
  }
  box->setTristate(false);
  box->setCheckState(state == TBoxState::Checked ? Qt::Checked : Qt::Unchecked);
}

}  // namespace

TLanguagesPageWidget::TLanguagesPageWidget(const TPageServices& services, QWidget* parent)
    : TPageWidget(services, std::make_unique<TLanguagesPage>(services.Wizard, services.Memory.For(TPageKind::Languages)),
                  parent),
      page_(static_cast<TLanguagesPage&>(Model())) {
  OpenPage();
  AddBoxes();
  ShowBoxes();
}

void TLanguagesPageWidget::AddBoxes() {
  auto* grid = new QGridLayout(FieldsPanel());
  auto* heading = new QLabel(ToQt(kLanguagesHeading), FieldsPanel());
  heading->setObjectName("labLangs");
  grid->addWidget(heading, 0, 1, 1, kLanguageCount);
  for (uint16_t ide = 1; ide <= kLanguageCount; ++ide) {
    const std::string_view name = LanguageInfo(ide).Name;
    auto* caption = new QLabel(ToQt(name), FieldsPanel());
    caption->setObjectName("cbxLang" + ToQt(IdeWord(ide)));
    caption->setAlignment(Qt::AlignCenter);
    caption->setWordWrap(true);
    grid->addWidget(caption, 1, ide);
    grid->setColumnStretch(ide, 1);
  }
  for (uint16_t platform = 1; platform <= kPlatformCount; ++platform) {
    auto* caption = new QLabel(ToQt(kPlatformRowCaptions[platform - 1]), FieldsPanel());
    grid->addWidget(caption, kHeaderRows + platform - 1, 0);
  }
  for (std::size_t i = 0; i < page_.Boxes().size(); ++i) {
    const TTargetBox& target = page_.Boxes()[i];
    auto* box = new QCheckBox(FieldsPanel());
    box->setObjectName(ToQt(target.Name));
    box->setToolTip(ToQt(TLanguagesPage::Hint(target)));
    WatchFocus(box);
    connect(box, &QCheckBox::clicked, this, [this, i] { cbx_OnClick(i); });
    grid->addWidget(box, kHeaderRows + target.Platform - 1, target.Ide, Qt::AlignCenter);
    boxes_.push_back(box);
  }
}

void TLanguagesPageWidget::cbx_OnClick(std::size_t i) {
  platform::RunHandler("TSaW_frmLanguages.TfrmLanguages.cbx_OnClick", [&](int&) {
    QCheckBox* box = boxes_[i];
    const std::vector<TClickStep> steps = page_.cbx_OnClick(page_.Boxes()[i].Name, box->checkState() == Qt::Checked);
    for (const TClickStep& step : steps) {
      if (step.Kind == TClickStep::TKind::SetState)
        ShowState(box, step.State);
      else
        Services().Dialogs.ShowMessage(platform::TMessageKind::Information, step.Message);
    }
    ShowBoxes();
    ShowOutcome();
  });
}

void TLanguagesPageWidget::ShowBoxes() {
  for (std::size_t i = 0; i < boxes_.size(); ++i) ShowState(boxes_[i], page_.Boxes()[i].State);
}

}  // namespace tsaw
