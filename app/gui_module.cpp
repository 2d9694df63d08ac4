// The window module (tsaw-gui.so): the host of the wizard's plug-in module. Starts Qt, loads the
// plug-in module, registers and initialises its plug-in object, sends it "OpenWindow" and runs
// the event loop, or drives the window for the screenshots; unloading finalises it.

#include <QApplication>
#include <QWidget>

#include <iostream>
#include <memory>
#include <string>

#include "app/command.h"
#include "app/gui_entry.h"
#include "app/gui_screenshots.h"
#include "app/module_files.h"
#include "jobs/config.h"
#include "platform/plugin_host.h"
#include "shell/plugin_object.h"

namespace tsaw::app {
namespace {

std::unique_ptr<platform::TPluginModule> LoadWizardModule(std::ostream& err) {
  const std::filesystem::path file = FindModule("the wizard's plug-in module", kPluginModuleFile, err);
  if (file.empty()) return nullptr;
  std::string error;
  auto module = platform::TPluginModule::Load(file.string(), error);
  if (!module) err << "tsaw: " << error << '\n';
  return module;
}

// Ends the event loop once the last window under the host is gone. The wizard's windows belong
// to the host's own window, which is never shown, so Qt would not end the loop by itself.
class TQuitWithLastWindow : public QObject {
 public:
  explicit TQuitWithLastWindow(QWidget& host) : host_(host) { host.installEventFilter(this); }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::ChildRemoved && !HasWindow()) QCoreApplication::quit();
    return false;
  }

 private:
  bool HasWindow() const {
    for (const QWidget* child : host_.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
      if (child->isWindow()) return true;
    }
    return false;
  }

  QWidget& host_;
};

int RunWindow(const TsawGuiRequest& request) {
  int argc = 1;
  char name[] = "tsaw";
  char* argv[] = {name, nullptr};
  QApplication app(argc, argv);
  // The wizard's windows belong to the hidden host window, so Qt would take a message box shown
  // between them for the last window and close the wizard with it; TQuitWithLastWindow decides.
  QApplication::setQuitOnLastWindowClosed(false);
  std::unique_ptr<platform::TPluginModule> module = LoadWizardModule(std::cerr);
  if (!module) return kExitFailed;
  module->Plugin().AttachHost({request.root, request.debug_log != 0});
  // The host's own window, never shown: the parent that the wizard's windows belong to.
  QWidget host;
  platform::TMethodResult result = module->Initialize();
  if (result.Code == platform::smrOk) {
    result = module->Plugin().Execute(kOpenWindowCommand, {{kParentWindowParam, &host}});
  }
  if (result.Code != platform::smrOk) {
    std::cerr << "tsaw: the wizard refused to start: " << result.Message << '\n';
    return kExitFailed;
  }
  int status = kExitOk;
  if (!request.screenshots) {
    const TQuitWithLastWindow quit(host);
    status = app.exec() == 0 ? kExitOk : kExitFailed;
  } else {
    status = WriteScreenshots(host, request.screenshots, std::cerr);
  }
  module.reset();  // finalises the wizard and unloads it while Qt is still up
  return status;
}

}  // namespace
}  // namespace tsaw::app

__attribute__((visibility("default"))) int tsaw_run_gui(const TsawGuiRequest* request) noexcept {
  return tsaw::app::RunWindow(*request);
}
