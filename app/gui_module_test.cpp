// The command line without Qt: the executable links none of Qt's libraries, and `tsaw gui` says
// what it looked for when its window module is missing or unusable.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>

#include "testing/run_program.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

namespace fs = std::filesystem;

// The lines of `ldd file` that name one of Qt's libraries, after the check that ldd read it.
std::string QtLibraries(const std::string& file) {
  const testing::ProgramRun run = testing::RunProgram("ldd", {file});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  std::istringstream lines(run.out);
  std::string qt;
  for (std::string line; std::getline(lines, line);) {
    if (line.find("libQt") != std::string::npos) qt += line + '\n';
  }
  return qt;
}

TEST(GuiModuleTest, OnlyTheWindowModuleLinksQt) {
  EXPECT_EQ(QtLibraries(TSAW_EXE), "");
  EXPECT_NE(QtLibraries(TSAW_GUI_MODULE).find("libQt6Widgets"), std::string::npos);
}

std::string Quoted(const fs::path& path) { return '"' + path.string() + '"'; }

// A copy of the executable in a folder of its own, given `module` (or nothing) as its window module.
class LoneExecutable {
 public:
  explicit LoneExecutable(const char* module) : bin_(fs::canonical(dir_.MakeDir("bin"))) {
    fs::copy_file(TSAW_EXE, bin_ / "tsaw");
    if (module) fs::copy_file(module, bin_ / "tsaw-gui.so");
  }
  const fs::path& bin() const { return bin_; }
  testing::ProgramRun RunGui() const { return testing::RunProgram((bin_ / "tsaw").string(), {"gui"}); }

 private:
  testing::TempDir dir_;
  fs::path bin_;
};

TEST(GuiModuleTest, AMissingWindowModuleNamesWhereItWasLookedFor) {
  const LoneExecutable exe(nullptr);
  const testing::ProgramRun run = exe.RunGui();
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(run.out, "");
  const fs::path installed = (exe.bin() / TSAW_MODULE_DIR / "tsaw-gui.so").lexically_normal();
  EXPECT_EQ(run.err, "tsaw: the window module tsaw-gui.so was not found (looked for " +
                         Quoted(exe.bin() / "tsaw-gui.so") + ", " + Quoted(installed) +
                         "); the window cannot be opened.\n");
}

TEST(GuiModuleTest, AnUnusableWindowModuleIsNamedWithWhatIsWrong) {
  {
    const LoneExecutable exe(TSAW_PLUGIN_MODULE);  // a module, but not the window's
    const testing::ProgramRun run = exe.RunGui();
    EXPECT_EQ(run.exit_status, 1);
    EXPECT_EQ(run.err, "tsaw: the window module " + Quoted(exe.bin() / "tsaw-gui.so") +
                           " lacks its entry point tsaw_run_gui; the window cannot be opened.\n");
  }
  {
    testing::TempDir text;
    const LoneExecutable exe(text.Write("not-a-module", "text").c_str());
    const testing::ProgramRun run = exe.RunGui();
    EXPECT_EQ(run.exit_status, 1);
    const std::string start = "tsaw: cannot load the window module " + Quoted(exe.bin() / "tsaw-gui.so") + ": ";
    EXPECT_EQ(run.err.substr(0, start.size()), start) << run.err;
    EXPECT_TRUE(run.err.ends_with("; the window cannot be opened.\n")) << run.err;
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
  }
}

}  // namespace
}  // namespace tsaw
