#pragma once
// The frame every data-entry page widget shares: the introduction, the panel of fields, and the
// information area with its "Validation" and "Advice" tabs (the same tab control as the Template
// Selection page's). The page's rules and texts live in its plain TPageModel; the widget only
// draws the model and forwards what the user does to it.

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/wizard.h"
#include "pages/page_memory.h"
#include "pages/page_model.h"
#include "platform/dialogs.h"

class QGroupBox;
class QLabel;
class QPlainTextEdit;
class QTabWidget;

namespace tsaw {

// Asks the user for a folder, opening at `start`; `native` asks for the desktop's own dialog
// rather than Qt's. Returns nullopt when the user cancels.
using TFolderChooser =
    std::function<std::optional<std::string>(QWidget* parent, const std::string& start, bool native)>;

// What the wizard frame lends a page: the wizard state, its memory of every page type, and the
// dialogs through which a page tells the user something or asks for a folder (an empty chooser
// means the Qt file dialog). All outlive the page.
struct TPageServices {
  TWizard& Wizard;
  TPageMemory& Memory;
  platform::Dialogs& Dialogs;
  TFolderChooser ChooseFolder = {};
};

// The name of the selected template when its "Default Values" marked variable `var_idx`
// read-only (`¦ $ReadOnly`), else empty.
std::string LockingTemplate(const TWizard& wizard, uint16_t var_idx);

// Model text (UTF-8, CR LF line breaks) for a Qt control, and back.
QString ToQt(std::string_view text);
std::string FromQt(const QString& text);

class TPageWidget : public QWidget {
  Q_OBJECT
 public:
  ~TPageWidget() override;
  TPageModel& Model() { return *model_; }

 protected:
  // Builds the frame around `model`, which the widget owns; the subclass then fills FieldsPanel()
  // and calls OpenPage().
  TPageWidget(const TPageServices& services, std::unique_ptr<TPageModel> model, QWidget* parent);

  QGroupBox* FieldsPanel() const { return panFields_; }
  const TPageServices& Services() const { return services_; }
  // The page's creation: the model prepares, loads and validates, and the remembered tab shows.
  void OpenPage();
  // Draws the last validation: caption, error list and the tab the model wants shown.
  void ShowOutcome();
  // Focus on `control` stores it as the last entered control and shows its advice.
  void WatchFocus(QWidget* control);

  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The "Validation" and "Advice" tabs; choosing one remembers it for this page type.
  QWidget* MakeInfoArea();
  // Shows `tab` without taking it for the user's choice.
  void ShowTab(int tab);
  // The information area was built before the fields; the keyboard reaches it after them.
  void PutInfoAreaLast();
  // Puts the focus back on the last entered control, or on the first field that takes it.
  void RestoreFocus();
  QWidget* BestControlToFocus() const;

  TPageServices services_;
  std::unique_ptr<TPageModel> model_;
  QLabel* labMainText_;
  QGroupBox* panFields_;
  QTabWidget* tabInfo_;
  bool showing_tab_ = false;  // set while the page itself switches the tab
  QLabel* labValidationCap_;
  QLabel* labAdviceCap_;
  QPlainTextEdit* memValidation_;
  QPlainTextEdit* memAdvice_;
};

}  // namespace tsaw
