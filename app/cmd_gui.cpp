// tsaw gui: prepares the framework root and hands the window to the window module, which is
// loaded only here so that the other commands start without Qt. With --screenshots the window is
// driven offscreen on a copy of the shipped sample data and writes a PNG of each page instead.

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

#include "app/command.h"
#include "app/gui_entry.h"
#include "app/module_files.h"
#include "app/root.h"
#include "platform/machine_folders.h"
#include "platform/shared_module.h"

namespace tsaw::app {
namespace {

namespace fs = std::filesystem;

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
    if (seed.Outcome == SeedOutcome::Seeded) return path_.string();
    err << "tsaw: " << seed.Message << '\n';
    return {};
  }

 private:
  fs::path path_;
};

// True when Qt can find somewhere to show a window; Qt itself would abort without one.
bool HasDisplay() {
  for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
    const char* value = std::getenv(name);
    if (value && *value) return true;
  }
  return false;
}

// The window module's entry point; nullptr, after a line on `err`, when the module is missing or
// unusable. Closing the module here leaves its code loaded (TUnload::Never), so the entry point
// stays valid until the program ends.
decltype(&tsaw_run_gui) LoadGuiModule(std::ostream& err) {
  const fs::path file = FindModule("the window module", kGuiModuleFile, err);
  if (file.empty()) return nullptr;
  std::string error;
  const auto module = platform::TSharedModule::Open(file.string(), platform::TSharedModule::TUnload::Never, error);
  void* entry = module ? module->Find(kRunGuiSymbol) : nullptr;
  if (!module) {
    err << "tsaw: cannot load the window module " << file << ": " << error << "; the window cannot be opened.\n";
  } else if (!entry) {
    err << "tsaw: the window module " << file << " lacks its entry point " << kRunGuiSymbol
        << "; the window cannot be opened.\n";
  }
  return reinterpret_cast<decltype(&tsaw_run_gui)>(entry);
}

int RunGui(const GlobalOptions& global, const std::string& screenshots) {
  if (!screenshots.empty()) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  if (!HasDisplay()) {
    std::cerr << "tsaw: there is no display to open the window on (DISPLAY and WAYLAND_DISPLAY are "
                 "unset); the command line works without one.\n";
    return kExitFailed;
  }
  const auto run_gui = LoadGuiModule(std::cerr);
  if (!run_gui) return kExitFailed;
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
  const TsawGuiRequest request{root.c_str(), global.debug ? 1 : 0, sample ? screenshots.c_str() : nullptr};
  return run_gui(&request);
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
