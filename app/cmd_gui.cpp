// tsaw gui: the host of the wizard's plug-in module. Loads the module from beside the executable,
// registers and initialises its plug-in object, sends it "OpenWindow" and runs the event loop;
// unloading finalises it. With --screenshots it drives the window offscreen on a copy of the
// shipped sample data and writes a PNG of each page instead.

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "app/command.h"
#include "app/root.h"
#include "jobs/config.h"
#include "platform/machine_folders.h"
#include "platform/plugin_host.h"
#include "shell/plugin_object.h"

namespace tsaw::app {
namespace {

namespace fs = std::filesystem;

// Where the module is looked for: beside the executable, then in the installed library folder.
std::vector<fs::path> ModuleCandidates() {
  std::error_code error;
  const fs::path exe = fs::read_symlink("/proc/self/exe", error);
  if (error) return {};
  const fs::path dir = exe.parent_path();
  return {dir / kPluginModuleFile, (dir / TSAW_MODULE_DIR / kPluginModuleFile).lexically_normal()};
}

std::unique_ptr<platform::TPluginModule> LoadWizardModule(std::ostream& err) {
  const std::vector<fs::path> candidates = ModuleCandidates();
  std::error_code ignored;
  for (const fs::path& file : candidates) {
    if (!fs::exists(file, ignored)) continue;
    std::string error;
    auto module = platform::TPluginModule::Load(file.string(), error);
    if (!module) err << "tsaw: " << error << '\n';
    return module;
  }
  err << "tsaw: the wizard's plug-in module " << kPluginModuleFile << " was not found";
  for (const fs::path& file : candidates) err << (&file == &candidates.front() ? " (looked for " : ", ") << file;
  err << (candidates.empty() ? "" : ")") << "; the window cannot be opened.\n";
  return nullptr;
}

// The framework root the window works on, seeded from the sample data on first run as every
// command does; empty, after a line on `err`, when there is none.
std::string PrepareRoot(const GlobalOptions& global, std::ostream& err) {
  const FrameworkRoot root = ResolveRoot(global, platform::MachineEnvironment::FromProcess());
  if (root.Path.empty()) {
    err << "tsaw: the framework root folder is unknown: give --root, or set TESSERA_ROOT or HOME.\n";
    return {};
  }
  if (!root.Chosen) {
    const SeedResult seed = SeedFromSample(root.Path, ShippedSampleFolder());
    if (!seed.Message.empty()) err << "tsaw: " << seed.Message << '\n';
  }
  return root.Path.string();
}

// A fresh folder seeded from the shipped sample data, removed with everything in it at the end.
class TSampleRoot {
 public:
  TSampleRoot() {
    std::string pattern = (fs::temp_directory_path() / "tsaw-screenshots-XXXXXX").string();
    if (mkdtemp(pattern.data())) path_ = pattern;
  }
  ~TSampleRoot() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove_all(path_, ignored);
  }
  // Empty, after a line on `err`, when the folder or the seeding failed.
  std::string Seed(std::ostream& err) const {
    if (path_.empty()) {
      err << "tsaw: cannot make a temporary folder for the screenshots.\n";
      return {};
    }
    const SeedResult seed = SeedFromSample(path_, ShippedSampleFolder());
    // The run the screenshots show is recorded here, not among the user's Project Sets.
    setenv("XDG_STATE_HOME", (path_ / "state").c_str(), 1);
    if (seed.Outcome == SeedOutcome::Seeded) return path_.string();
    err << "tsaw: " << seed.Message << '\n';
    return {};
  }

 private:
  fs::path path_;
};

void Settle() {
  for (int i = 0; i < 3; ++i) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
  }
}

bool Save(QWidget& frame, const fs::path& file, std::ostream& err) {
  Settle();
  if (frame.grab().save(QString::fromStdString(file.string()), "PNG")) return true;
  err << "tsaw: cannot write " << file << '\n';
  return false;
}

// Selects, in tree order, the first template for which `wanted` holds; false when none does.
template <typename Wanted>
bool SelectTemplate(QWidget& frame, Wanted&& wanted) {
  auto* tree = frame.findChild<QTreeWidget*>("tvTemplates");
  if (!tree) return false;
  for (QTreeWidgetItemIterator it(tree); *it; ++it) {
    tree->setCurrentItem(*it);
    if (wanted()) return true;
  }
  return false;
}

// Steps through the window as a user would and saves every page, the last after a finished run.
int WriteScreenshots(QWidget& host, const fs::path& dir, std::ostream& err) {
  QWidget* frame = host.findChild<QWidget*>("frmMain");
  auto* next = frame ? frame->findChild<QPushButton*>("btnNext") : nullptr;
  std::error_code error;
  fs::create_directories(dir, error);
  if (!next || error) {
    err << "tsaw: cannot write the screenshots to " << dir << '\n';
    return kExitFailed;
  }
  // The offscreen screen is small; the pictures show the window at the size it asks for where
  // there is room.
  frame->resize(900, 640);
  bool ok = Save(*frame, dir / "welcome.png", err);
  next->click();
  if (auto* expand = frame->findChild<QPushButton*>("btnExpandAll")) expand->click();
  auto* error_name = frame->findChild<QLabel*>("labErrorName");
  if (error_name && SelectTemplate(*frame, [error_name] { return !error_name->text().isEmpty(); })) {
    ok = Save(*frame, dir / "templates-bad.png", err) && ok;
  }
  if (!SelectTemplate(*frame, [next] { return next->isEnabled(); })) {
    err << "tsaw: the sample data holds no valid template to show.\n";
    return kExitFailed;
  }
  ok = Save(*frame, dir / "templates.png", err) && ok;
  // The data-entry steps, each showing the sample template's starting values.
  for (const char* page : {"languages", "common", "manager", "plugin", "logging", "cosmetics", "custom", "output"}) {
    if (!next->isEnabled()) {
      err << "tsaw: the step before the " << page << " page does not let the wizard go on.\n";
      return kExitFailed;
    }
    next->click();
    ok = Save(*frame, dir / (std::string(page) + ".png"), err) && ok;
  }
  // The last step after a finished run on the sample template.
  next->click();
  auto* start = frame->findChild<QAbstractButton*>("btnStart");
  if (!start) {
    err << "tsaw: the Creation page has no start button.\n";
    return kExitFailed;
  }
  start->click();
  ok = Save(*frame, dir / "creation.png", err) && ok;
  return ok ? kExitOk : kExitFailed;
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

// True when Qt can find somewhere to show a window; Qt itself would abort without one.
bool HasDisplay() {
  for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
    const char* value = std::getenv(name);
    if (value && *value) return true;
  }
  return false;
}

int RunGui(const GlobalOptions& global, const std::string& screenshots) {
  if (!screenshots.empty()) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  if (!HasDisplay()) {
    std::cerr << "tsaw: there is no display to open the window on (DISPLAY and WAYLAND_DISPLAY are "
                 "unset); the command line works without one.\n";
    return kExitFailed;
  }
  int argc = 1;
  char name[] = "tsaw";
  char* argv[] = {name, nullptr};
  QApplication app(argc, argv);
  // The wizard's windows belong to the hidden host window, so Qt would take a message box shown
  // between them for the last window and close the wizard with it; TQuitWithLastWindow decides.
  QApplication::setQuitOnLastWindowClosed(false);
  std::optional<TSampleRoot> sample;
  if (!screenshots.empty()) sample.emplace();
  const std::string root = sample ? sample->Seed(std::cerr) : PrepareRoot(global, std::cerr);
  if (root.empty()) return kExitFailed;
  // The pictures' window and run must not take the place of the user's remembered window or
  // add to the user's record of generations.
  if (sample) {
    setenv("XDG_CONFIG_HOME", (fs::path(root) / "config").c_str(), 1);
    setenv("XDG_STATE_HOME", (fs::path(root) / "state").c_str(), 1);
  }
  std::unique_ptr<platform::TPluginModule> module = LoadWizardModule(std::cerr);
  if (!module) return kExitFailed;
  module->Plugin().AttachHost({root, global.debug});
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
  if (screenshots.empty()) {
    const TQuitWithLastWindow quit(host);
    status = app.exec() == 0 ? kExitOk : kExitFailed;
  } else {
    status = WriteScreenshots(host, screenshots, std::cerr);
  }
  module.reset();  // finalises the wizard and unloads it while Qt is still up
  return status;
}

}  // namespace

Command MakeGuiCommand() {
  return {"gui", "Open the wizard's window (what tsaw does when no command is given)",
          [](CLI::App& sub, const GlobalOptions& global) -> std::function<int()> {
            auto screenshots = std::make_shared<std::string>();
            sub.add_option("--screenshots", *screenshots,
                           "Write a PNG of each page, shown on a copy of the sample data, to DIR and exit")
                ->type_name("DIR");
            return [&global, screenshots] { return RunGui(global, *screenshots); };
          }};
}

}  // namespace tsaw::app
