// Runs `tsaw create` with the options a user types: base folders, --set layers, template paths
// and --save-job.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "app/create_command_fixture.h"

namespace tsaw::app {
namespace {
namespace fs = std::filesystem;
using tsaw::testing::ProgramRun;
using tsaw::testing::RunProgram;

// Runs the test's programs from another folder (and home) for the life of the object.
class ScopedPlace {
 public:
  ScopedPlace(const fs::path& current, const fs::path& home) : current_(fs::current_path()) {
    if (const char* old = std::getenv("HOME")) home_ = old;
    fs::current_path(current);
    setenv("HOME", home.c_str(), 1);
  }
  ~ScopedPlace() {
    fs::current_path(current_);
    setenv("HOME", home_.c_str(), 1);
  }

 private:
  fs::path current_;
  std::string home_;
};

std::string FirstLine(const std::string& text) { return text.substr(0, text.find('\n') + 1); }

TEST_F(CreateCommandTest, BaseFoldersAreTakenAsAUserTypesThem) {
  const fs::path here = dir_.MakeDir("here");
  const ScopedPlace place(here, dir_.path() / "home");
  const struct {
    const char* name;
    std::vector<std::string> args;
    fs::path set;
  } cases[] = {
      {"relative", {"-o", "projects"}, here / "projects/Rocket"},
      {"relative with --output", {"--output", "./deeper/projects/"}, here / "deeper/projects/Rocket"},
      {"home", {"--set", "Output.BaseFolder=~/work"}, dir_.path() / "home/work/Rocket"},
      {"home with a backslash", {"-o", "~\\win"}, dir_.path() / "home/win/Rocket"},
      {"the last given wins", {"-o", "first", "--set", "Output.BaseFolder=second"}, here / "second/Rocket"},
      {"the last given wins, -o last", {"--set", "Output.BaseFolder=second", "-o", "third"}, here / "third/Rocket"},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Create(c.args);
    EXPECT_EQ(run.exit_status, 0) << c.name << run.err;
    EXPECT_EQ(FirstLine(run.out), "Project Set folder: " + c.set.string() + "\n") << c.name;
    EXPECT_TRUE(fs::exists(c.set / "Delphi 7/Win32/Host/AcmeHost.dpr")) << c.name;
  }
}

// With a Job that turns TesseraLogger off, each --set is a layer applied in the order given.
TEST_F(CreateCommandTest, EachSetIsALayerOfItsOwnInTheOrderGiven) {
  dir_.Write("TSA/Wizard/Templates/Apps/Tiny/ReadMe.txt", "#Logging.UseTLG# #Logging.LogComments#\n");
  const std::string job = dir_.Write("NoLogger.ini", "[Job]\nTemplate=Apps\\Tiny\n[Default Values]\n"
                                                     "Logging.UseTLG=no\n").string();
  const auto create = [&](const char* first, const char* second) {
    const ProgramRun run = RunProgram(TSAW_EXE, {"--root", Root(), "create", "--job", job, "--set", first, "--set", second});
    EXPECT_EQ(run.exit_status, 0) << run.err;
    return dir_.Read("out/Rocket/ReadMe.txt");
  };
  EXPECT_EQ(create("Logging.LogComments=yes", "Logging.UseTLG=yes"), "True False\r\n");
  EXPECT_EQ(create("Logging.UseTLG=yes", "Logging.LogComments=yes"), "True True\r\n");
}

TEST_F(CreateCommandTest, WarnsOfIgnoredLinesAndKeysWithFileAndLine) {
  const std::string job = dir_.Write("Odd.ini", "[Job]\nTemplate=Apps/Tiny\n[Default Values]\nProduct.Nmae=Typo\n"
                                                "Company.Name Acme\n").string();
  const ProgramRun run = RunProgram(TSAW_EXE, {"--root", Root(), "create", "--job", job});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(run.err, "tsaw: warning: " + job + ":5: \"Company.Name Acme\" is neither a [section], a ; comment "
                     "nor a key=value line; it is ignored\n"
                     "tsaw: warning: " + job + ":4: Unknown key \"Product.Nmae\": not a \"Default Values\" key; "
                     "the key is ignored\n");
}

TEST_F(CreateCommandTest, ASetWithoutEqualsIsAUsageError) {
  const ProgramRun run = Create({"--set", "Product.Name"});
  EXPECT_EQ(run.exit_status, 2);
  EXPECT_NE(run.err.find("expected NAME=VALUE, got \"Product.Name\""), std::string::npos) << run.err;
  EXPECT_FALSE(fs::exists(Out()));
}

TEST_F(CreateCommandTest, TemplatePathsTakeEitherSeparatorAndMissOnesGetTheNearestNames) {
  const ProgramRun backslash = RunProgram(TSAW_EXE, {"--root", Root(), "create", "--template", "Apps\\Tiny\\"});
  EXPECT_EQ(backslash.exit_status, 0) << backslash.err;

  dir_.Write("TSA/Wizard/Templates/Apps/Tidy/Template.ini", "[Template]\nName=n\n");
  const ProgramRun typo = RunProgram(TSAW_EXE, {"--root", Root(), "create", "--template", "apps/tinny"});
  EXPECT_EQ(typo.exit_status, 1);
  EXPECT_EQ(typo.err, "tsaw: create: no template \"apps/tinny\" in " + Root() +
                          "/TSA/Wizard/Templates/; did you mean \"Apps/Tiny\", \"Apps/Tidy\"?\n");
  const ProgramRun far = RunProgram(TSAW_EXE, {"--root", Root(), "create", "--template", "Nothing/Like/It"});
  EXPECT_EQ(far.err, "tsaw: create: no template \"Nothing/Like/It\" in " + Root() + "/TSA/Wizard/Templates/\n");
  EXPECT_EQ(RunProgram(TSAW_EXE, {"--root", Root(), "create", "--template", "Apps"}).exit_status, 1);
}

class SaveJobTest : public CreateCommandTest {
 protected:
  void SetUp() override {
    CreateCommandTest::SetUp();
    const fs::path model =
        fs::path(TSAW_EXE).parent_path().parent_path() / "share/tsaw/sample/TSA/Wizard/Jobs/Job Model.txt";
    fs::create_directories(dir_.path() / "TSA/Wizard/Jobs");
    fs::copy_file(model, dir_.path() / "TSA/Wizard/Jobs/Job Model.txt");
  }
  std::string Job() const { return (dir_.path() / "TSA/Wizard/Jobs/Saved.ini").string(); }
};

TEST_F(SaveJobTest, SavesTheJobAfterAFinishedRunAndItMakesTheSameSet) {
  const ProgramRun first = Create({"--set", "Product.Name=Saved Rocket", "--save-job", Job()});
  ASSERT_EQ(first.exit_status, 0) << first.err;
  EXPECT_EQ(first.out.substr(first.out.rfind("Report: ")),
            "Report: " + ReportFile() + "\nJob saved: " + Job() + "\n");
  const std::string dpr = "out/Saved Rocket/Delphi 7/Win32/Host/AcmeHost.dpr";
  ASSERT_EQ(dir_.Read(dpr), "program AcmeHost;\r\nend.\r\n");
  fs::remove_all(Out());
  const ProgramRun again = RunProgram(TSAW_EXE, {"--root", Root(), "create", "--job", Job()});
  EXPECT_EQ(again.exit_status, 0) << again.err;
  EXPECT_EQ(dir_.Read(dpr), "program AcmeHost;\r\nend.\r\n");
}

TEST_F(SaveJobTest, ASavedJobKeepsTheReferencesSoThatAnotherPrefixFollows) {
  ASSERT_EQ(Create({"--save-job", Job()}).exit_status, 0);
  const std::string saved = dir_.Read("TSA/Wizard/Jobs/Saved.ini");
  EXPECT_NE(saved.find("Host.ProjectName=#Projects.Prefix#Host\r\n"), std::string::npos) << saved;
  EXPECT_EQ(saved.find("AcmeHost"), std::string::npos) << saved;

  fs::remove_all(Out());
  const ProgramRun again = RunProgram(TSAW_EXE, {"--root", Root(), "create", "--job", Job(), "--set", "Projects.Prefix=Zeta"});
  ASSERT_EQ(again.exit_status, 0) << again.err;
  EXPECT_EQ(dir_.Read("out/Rocket/Delphi 7/Win32/Host/ZetaHost.dpr"), "program ZetaHost;\r\nend.\r\n");
}

TEST_F(SaveJobTest, AnExistingFileIsReplacedOnlyWithForceAndGoesToTheTrash) {
  dir_.Write("TSA/Wizard/Jobs/Saved.ini", "my old Job");
  const ProgramRun refused = Create({"--save-job", Job()});
  EXPECT_EQ(refused.exit_status, 1);
  EXPECT_EQ(refused.err, "tsaw: create: \"" + Job() +
                             "\" already exists; give --force to replace it (the old file goes to the trash)\n");
  EXPECT_FALSE(fs::exists(Out())) << "no run is made only to fail at saving";
  EXPECT_EQ(dir_.Read("TSA/Wizard/Jobs/Saved.ini"), "my old Job");

  const ProgramRun forced = Create({"--save-job", Job(), "--force"});
  ASSERT_EQ(forced.exit_status, 0) << forced.err;
  EXPECT_NE(forced.out.find("Moved to the trash: " + Job() + "\nJob saved: " + Job() + "\n"), std::string::npos)
      << forced.out;
  EXPECT_EQ(dir_.Read("data/Trash/files/Saved.ini"), "my old Job");
  EXPECT_NE(dir_.Read("TSA/Wizard/Jobs/Saved.ini").find("Template=Apps/Tiny"), std::string::npos);
}

TEST_F(SaveJobTest, AFolderThatCannotTakeTheJobIsReportedBeforeTheRun) {
  const std::string nowhere = (dir_.path() / "no/such/Job.ini").string();
  const ProgramRun run = Create({"--save-job", nowhere});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(run.err, "tsaw: create: Job not saved: the folder of \"" + nowhere + "\" does not exist.\n");
  EXPECT_EQ(run.out, "");
  EXPECT_FALSE(fs::exists(Out()));
}

}  // namespace
}  // namespace tsaw::app
