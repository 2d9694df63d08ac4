// Runs `tsaw create` as a user would (TSAW_EXE is the built executable).

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "testing/run_program.h"
#include "testing/temp_dir.h"
#include "testing/wizard_root.h"

namespace tsaw::app {
namespace {
namespace fs = std::filesystem;
using tsaw::testing::ProgramRun;
using tsaw::testing::RunProgram;

// A root with one template, "Apps/Tiny" (prefix T001, Delphi 7 for Win32 only), whose Project
// Set goes to <root>/out.
class CreateCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("XDG_DATA_HOME", (dir_.path() / "data").c_str(), 1);
    setenv("XDG_STATE_HOME", (dir_.path() / "state").c_str(), 1);
    tsaw::testing::WriteTinyTemplate(dir_, Out().string());
  }
  fs::path Out() const { return dir_.path() / "out"; }
  ProgramRun Create(std::vector<std::string> args) {
    args.insert(args.begin(), {"--root", dir_.path().string(), "create", "--template", "Apps/Tiny"});
    return RunProgram(TSAW_EXE, args);
  }
  std::string Statistics(const char* scanned, const char* skipped, const char* processed) {
    const std::string rule(96, '=');
    return "\n" + rule + "\n" + std::string(42, ' ') + "REPORT STATISTICS\n" + rule + "\n\n" + scanned + "\n" +
           skipped + "\n FAILED:     0 files and 0 folders\n" + processed + "\n\n" + rule + "\n\n";
  }
  tsaw::testing::TempDir dir_;
};

TEST_F(CreateCommandTest, WritesTheProjectSetAndPrintsTheStatistics) {
  const ProgramRun run = Create({});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(run.out, Statistics(" SCANNED:    2 files in 4 folders", " SKIPPED:    1 file in 25 folders",
                                " PROCESSED:  1 file in 4 folders") +
                         "Project Set folder: " + (Out() / "Rocket").string() + "\nReport: " +
                         (dir_.path() / "TSA/Wizard/Report.txt").string() + "\n");
  EXPECT_EQ(dir_.Read("out/Rocket/Delphi 7/Win32/Host/AcmeHost.dpr"), "program AcmeHost;\r\nend.\r\n");
}

TEST_F(CreateCommandTest, ConfigChoosesTheConfigurationInPlaceOfTheSelector) {
  dir_.Write("TSA/Wizard/TSaW.Office.ini", "[Custom Variables]\nMotto=Fly high\n"
                                          "[Default Values]\nCompany.Name=Office Co\n");
  dir_.Write("TSA/Wizard/Templates/Apps/Tiny/ReadMe.txt", "#Company.Name#: #Custom.Motto#\n");
  const ProgramRun run = Create({"--config", "Office"});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(dir_.Read("out/Rocket/ReadMe.txt"), "Office Co: Fly high\r\n");

  for (const char* name : {"Missing", "../Office"}) {
    const ProgramRun refused = Create({"--config", name});
    EXPECT_EQ(refused.exit_status, 1) << name;
    EXPECT_NE(refused.err.find("tsaw: create: "), std::string::npos) << name << refused.err;
  }
}

TEST_F(CreateCommandTest, DryRunCountsAndWritesNothing) {
  const ProgramRun run = Create({"--dry-run"});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_FALSE(fs::exists(Out()));
  EXPECT_NE(dir_.Read("TSA/Wizard/Report.txt").find("Counting finished; nothing was written (dry run)."),
            std::string::npos);
}

TEST_F(CreateCommandTest, RefusesAnswersThatFailThePagesRules) {
  const ProgramRun run = Create({"--set", "Projects.Prefix=1 bad prefix"});
  EXPECT_EQ(run.exit_status, 1);
  const std::string tail = "tsaw: create: the answers do not pass the pages' rules; nothing was written\n";
  ASSERT_GE(run.err.size(), tail.size()) << run.err;
  EXPECT_EQ(run.err.substr(run.err.size() - tail.size()), tail);
  EXPECT_FALSE(fs::exists(Out()));
}

TEST_F(CreateCommandTest, NeverClearsTheBaseFolder) {
  dir_.Write("out/keep.txt", "mine");
  for (const char* product : {"Product.Name=..", "Product.Name=/", "Product.Name=."}) {
    const ProgramRun run = Create({"--set", product});
    EXPECT_EQ(run.exit_status, 1) << product;
    EXPECT_FALSE(run.err.empty()) << product;
    EXPECT_EQ(dir_.Read("out/keep.txt"), "mine") << product;
    EXPECT_FALSE(fs::exists(dir_.path() / "data/Trash/files")) << product;
  }
}

TEST_F(CreateCommandTest, SavesTheJobAfterAFinishedRunAndItMakesTheSameSet) {
  const fs::path model = fs::path(TSAW_EXE).parent_path().parent_path() / "share/tsaw/sample/TSA/Wizard/Jobs/Job Model.txt";
  fs::create_directories(dir_.path() / "TSA/Wizard/Jobs");
  fs::copy_file(model, dir_.path() / "TSA/Wizard/Jobs/Job Model.txt");
  const std::string job = (dir_.path() / "TSA/Wizard/Jobs/Saved.ini").string();
  const ProgramRun first = Create({"--set", "Product.Name=Saved Rocket", "--save-job", job});
  ASSERT_EQ(first.exit_status, 0) << first.err;
  const std::string dpr = "out/Saved Rocket/Delphi 7/Win32/Host/AcmeHost.dpr";
  ASSERT_EQ(dir_.Read(dpr), "program AcmeHost;\r\nend.\r\n");
  fs::remove_all(Out());
  const ProgramRun again = RunProgram(TSAW_EXE, {"--root", dir_.path().string(), "create", "--job", job});
  EXPECT_EQ(again.exit_status, 0) << again.err;
  EXPECT_EQ(dir_.Read(dpr), "program AcmeHost;\r\nend.\r\n");
}

TEST_F(CreateCommandTest, ASavedJobKeepsTheReferencesSoThatAnotherPrefixFollows) {
  const fs::path model = fs::path(TSAW_EXE).parent_path().parent_path() / "share/tsaw/sample/TSA/Wizard/Jobs/Job Model.txt";
  fs::create_directories(dir_.path() / "TSA/Wizard/Jobs");
  fs::copy_file(model, dir_.path() / "TSA/Wizard/Jobs/Job Model.txt");
  const std::string job = (dir_.path() / "TSA/Wizard/Jobs/Saved.ini").string();
  ASSERT_EQ(Create({"--save-job", job}).exit_status, 0);
  const std::string saved = dir_.Read("TSA/Wizard/Jobs/Saved.ini");
  EXPECT_NE(saved.find("Host.ProjectName=#Projects.Prefix#Host\r\n"), std::string::npos) << saved;
  EXPECT_EQ(saved.find("AcmeHost"), std::string::npos) << saved;

  fs::remove_all(Out());
  const ProgramRun again = RunProgram(
      TSAW_EXE, {"--root", dir_.path().string(), "create", "--job", job, "--set", "Projects.Prefix=Zeta"});
  ASSERT_EQ(again.exit_status, 0) << again.err;
  EXPECT_EQ(dir_.Read("out/Rocket/Delphi 7/Win32/Host/ZetaHost.dpr"), "program ZetaHost;\r\nend.\r\n");
}

TEST_F(CreateCommandTest, NeedsAJobOrATemplate) {
  const ProgramRun run = RunProgram(TSAW_EXE, {"--root", dir_.path().string(), "create"});
  EXPECT_EQ(run.exit_status, 2);
  EXPECT_EQ(run.err, "tsaw: create: give --job FILE or --template PATH\n");
}

}  // namespace
}  // namespace tsaw::app
