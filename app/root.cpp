#include "app/root.h"

#include <system_error>

#include "jobs/session.h"

namespace tsaw::app {
namespace fs = std::filesystem;
namespace {

constexpr const char* kStagingName = ".Wizard.seeding";

// Copies the sample's wizard folder under a staging name, then renames it into place.
std::error_code CopyWizardFolder(const fs::path& source, const fs::path& tsa) {
  std::error_code error;
  const fs::path staging = tsa / kStagingName;
  fs::create_directories(tsa, error);
  if (error) return error;
  fs::remove_all(staging, error);  // left by an interrupted first run; ours by its name
  if (!error) fs::copy(source, staging, fs::copy_options::recursive, error);
  if (!error) fs::rename(staging, tsa / "Wizard", error);
  std::error_code ignored;
  if (error) fs::remove_all(staging, ignored);
  return error;
}

// The sample's other entries beside its wizard folder, never over anything that exists.
std::error_code CopyBeside(const fs::path& source, const fs::path& tsa) {
  std::error_code error;
  for (fs::directory_iterator it(source, error), end; !error && it != end; it.increment(error)) {
    if (it->path().filename() == "Wizard") continue;
    fs::copy(it->path(), tsa / it->path().filename(), fs::copy_options::recursive | fs::copy_options::skip_existing,
             error);
  }
  return error;
}

}  // namespace

FrameworkRoot ResolveRoot(const GlobalOptions& global, const platform::MachineEnvironment& environment) {
  const platform::WineMachineFolders machine(environment, global.root);
  FrameworkRoot root;
  const std::string path = machine.FrameworkRoot();
  if (path.empty()) return root;
  std::error_code ignored;
  root.Path = fs::absolute(path, ignored).lexically_normal();
  root.Chosen = !global.root.empty() || !environment.TesseraRoot.empty();
  return root;
}

SeedResult SeedFromSample(const fs::path& root, const fs::path& sample) {
  std::error_code ignored;
  const fs::path tsa = root / "TSA";
  if (fs::exists(tsa / "Wizard", ignored)) return {};
  if (!fs::is_directory(sample / "TSA" / "Wizard", ignored)) {
    return {SeedOutcome::NoSample, "No sample data found at \"" + sample.string() + "\"; \"" +
                                       (tsa / "Wizard").string() + "\" was not created."};
  }
  std::error_code error = CopyWizardFolder(sample / "TSA" / "Wizard", tsa);
  if (!error) error = CopyBeside(sample / "TSA", tsa);
  if (error) {
    return {SeedOutcome::Failed, "Could not copy the sample data from \"" + sample.string() + "\" to \"" +
                                     tsa.string() + "\": " + error.message()};
  }
  return {SeedOutcome::Seeded, "First run: \"" + tsa.string() + "\" was filled with the sample data from \"" +
                                   sample.string() + "\"."};
}

fs::path ShippedSampleFolder() {
  std::error_code error;
  const fs::path exe = fs::read_symlink("/proc/self/exe", error);
  if (error) return {};
  return (exe.parent_path() / ".." / "share" / "tsaw" / "sample").lexically_normal();
}

std::unique_ptr<WizardSession> ResolveWizardSession(const GlobalOptions& global, std::ostream& err,
                                                    const std::string& config_name) {
  const platform::MachineEnvironment environment = platform::MachineEnvironment::FromProcess();
  const FrameworkRoot root = ResolveRoot(global, environment);
  if (!root.Path.empty() && !root.Chosen) {
    const SeedResult seed = SeedFromSample(root.Path, ShippedSampleFolder());
    if (!seed.Message.empty()) err << "tsaw: " << seed.Message << '\n';
  }
  auto session = std::make_unique<WizardSession>();
  auto clock = std::make_unique<platform::SystemClock>(platform::SystemClock::FromEnvironment());
  if (!clock->Warning().empty()) err << "tsaw: warning: " << clock->Warning() << '\n';
  session->Clock = std::move(clock);
  session->Machine = std::make_unique<platform::WineMachineFolders>(environment, root.Path.string());
  const TSessionStart start = Start_Session(session->Wizard, *session->Clock, *session->Machine, config_name);
  for (const std::string& message : start.Messages) err << (start.Ok ? "tsaw: warning: " : "tsaw: ") << message << '\n';
  return start.Ok ? std::move(session) : nullptr;
}

}  // namespace tsaw::app
