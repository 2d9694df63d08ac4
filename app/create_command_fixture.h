#pragma once
// The tests of `tsaw create`: a root with one template, "Apps/Tiny" (prefix T001, Delphi 7 for
// Win32 only), whose Project Set goes to <root>/out, and the built executable to run on it.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "testing/run_program.h"
#include "testing/temp_dir.h"
#include "testing/wizard_root.h"

namespace tsaw::app {

class CreateCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("XDG_DATA_HOME", (dir_.path() / "data").c_str(), 1);
    setenv("XDG_STATE_HOME", (dir_.path() / "state").c_str(), 1);
    tsaw::testing::WriteTinyTemplate(dir_, Out().string());
    dir_.Write("TSA/Wizard/TSaW.Default.ini", "");
  }
  std::filesystem::path Out() const { return dir_.path() / "out"; }
  std::string Root() const { return dir_.path().string(); }
  std::string ReportFile() const { return (dir_.path() / "TSA/Wizard/Report.txt").string(); }
  // `tsaw --root <root> create --template Apps/Tiny` followed by `args`.
  tsaw::testing::ProgramRun Create(std::vector<std::string> args) {
    args.insert(args.begin(), {"--root", Root(), "create", "--template", "Apps/Tiny"});
    return tsaw::testing::RunProgram(TSAW_EXE, args);
  }
  // The statistics block with its three count lines that vary; nothing fails.
  static std::string Statistics(const char* scanned, const char* skipped, const char* processed) {
    const std::string rule(96, '=');
    return "\n" + rule + "\n" + std::string(42, ' ') + "REPORT STATISTICS\n" + rule + "\n\n" + scanned + "\n" +
           skipped + "\n FAILED:     0 files and 0 folders\n" + processed + "\n\n" + rule + "\n\n";
  }
  // The statistics of a run of Apps/Tiny as it stands.
  static std::string TinyStatistics() {
    return Statistics(" SCANNED:    2 files in 4 folders", " SKIPPED:    1 file in 25 folders",
                      " PROCESSED:  1 file in 4 folders");
  }
  tsaw::testing::TempDir dir_;
};

}  // namespace tsaw::app
