#pragma once
// The framework root the commands work on: where it is, its seeding from the shipped sample data
// on first run, and the start of a wizard session on it.

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>

#include "app/command.h"
#include "model/wizard.h"
#include "platform/clock.h"
#include "platform/machine_folders.h"

namespace tsaw::app {

struct FrameworkRoot {
  std::filesystem::path Path;  // absolute; empty when no root can be found
  bool Chosen = false;         // named by --root or $TESSERA_ROOT rather than the default place
};

// --root, else $TESSERA_ROOT, else $XDG_DATA_HOME/tessera, else ~/.local/share/tessera.
FrameworkRoot ResolveRoot(const GlobalOptions& global, const platform::MachineEnvironment& environment);

enum class SeedOutcome { NotNeeded, Seeded, NoSample, Failed };
struct SeedResult {
  SeedOutcome Outcome = SeedOutcome::NotNeeded;
  std::string Message;  // for Seeded, NoSample and Failed: what happened, naming the folders
};

// Seeds <root>/TSA from <sample>/TSA, but only when <root>/TSA/Wizard does not exist at all: the
// wizard folder is copied whole (through a staging folder, so an interrupted copy leaves no half
// wizard folder), anything beside it only where nothing of that name exists. A user's file is
// never overwritten.
SeedResult SeedFromSample(const std::filesystem::path& root, const std::filesystem::path& sample);

// The shipped sample data: <folder of the running executable>/../share/tsaw/sample; empty when
// the executable's location cannot be read.
std::filesystem::path ShippedSampleFolder();

// A started wizard session and the machine it reads (a creation run reads the clock and the
// machine folders again).
struct WizardSession {
  TWizard Wizard;
  std::unique_ptr<platform::Clock> Clock;
  std::unique_ptr<platform::MachineFolders> Machine;
};

// What every command that works on the wizard calls first: resolves the root, seeds it on first
// run when it is the default place, and starts the session (folders, configuration, fixed
// variables). Warnings and the first-run note go to `err`, one line each. Returns nullptr, after
// a line on `err` saying why, when no session can be had.
// A non-empty `config_name` chooses the configuration in place of the selector file.
std::unique_ptr<WizardSession> ResolveWizardSession(const GlobalOptions& global, std::ostream& err,
                                                    const std::string& config_name = {});

}  // namespace tsaw::app
