// Hostile input through the real `tsaw`: Jobs, templates and answers handed over by someone else
// never crash, hang or exhaust the wizard, and never cost a file outside the Project Set.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "testing/run_program.h"
#include "testing/temp_dir.h"
#include "testing/wizard_root.h"

namespace tsaw::app {
namespace {
namespace fs = std::filesystem;
using tsaw::testing::ProgramRun;
using tsaw::testing::RunProgram;

std::string Repeated(const std::string& text, int times) {
  std::string out;
  for (int i = 0; i < times; ++i) out += text;
  return out;
}

// The tiny template in a root of its own, with a home folder and no Wine prefix. Every run is
// cut off after a minute, so that a hang fails the test instead of holding the suite.
class HostileInputTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("XDG_DATA_HOME", (dir_.path() / "data").c_str(), 1);
    setenv("XDG_STATE_HOME", (dir_.path() / "state").c_str(), 1);
    setenv("HOME", Home().c_str(), 1);
    setenv("WINEPREFIX", (dir_.path() / "no-wine").c_str(), 1);
    dir_.MakeDir("home");
    template_ = tsaw::testing::WriteTinyTemplate(dir_, Out().string());
  }
  fs::path Out() const { return dir_.path() / "out"; }
  fs::path Home() const { return dir_.path() / "home"; }
  ProgramRun Tsaw(std::vector<std::string> args) {
    args.insert(args.begin(), {"60", TSAW_EXE, "--root", dir_.path().string()});
    return RunProgram("timeout", args);
  }
  ProgramRun Create(std::vector<std::string> args) {
    args.insert(args.begin(), {"create", "--template", "Apps/Tiny"});
    return Tsaw(args);
  }
  ProgramRun CreateFromJob(const std::string& values) {
    const fs::path job = dir_.Write("job.ini", "[Job]\nTemplate=Apps/Tiny\n[Default Values]\n" + values);
    return Tsaw({"create", "--job", job.string()});
  }
  std::string Report() const { return dir_.Read("TSA/Wizard/Report.txt"); }
  static std::string Tail(const std::string& text, size_t size) {
    return text.size() < size ? text : text.substr(text.size() - size);
  }
  // Standard error ends with `line` (warnings about the test's root may come before it).
  static void ExpectLastLine(const ProgramRun& run, const std::string& line) {
    EXPECT_EQ(Tail(run.err, line.size()), line) << run.err;
  }

  tsaw::testing::TempDir dir_;
  std::string template_;
};

TEST_F(HostileInputTest, AnswersThatMultiplyBeyondTheBoundRefuseTheRun) {
  const ProgramRun run = CreateFromJob("Product.Name=" + std::string(200, 'p') +
                                       "\nCompany.Name=" + Repeated("#Product.Name#", 200) +
                                       "\nCopyright=" + Repeated("#Company.Name#", 200) +
                                       "\nAuthor=" + Repeated("#Copyright#", 200) + "\n");
  EXPECT_EQ(run.exit_status, 1) << run.err;
  ExpectLastLine(run, "tsaw: create: stopped: The expansion of Author exceeds 3 MB.\n");
  EXPECT_FALSE(fs::exists(Out()));
}

TEST_F(HostileInputTest, ACycleLeftAfterTheCheckRefusesTheRun) {
  const ProgramRun run = CreateFromJob(
      "Company.Name=#Manager.DeepName##Manager.DeepName#\nManager.DeepName=#Company.Name##Company.Name#\n"
      "Author=#Copyright##Copyright#\nCopyright=#Author##Author#\n");
  EXPECT_EQ(run.exit_status, 1) << run.err;
  ExpectLastLine(run, "tsaw: create: stopped: The expansion of Author exceeds 1 MB.\n");
  EXPECT_NE(Report().find("  WARNING: At least 1 CVR has been detected:  Company.Name ("), std::string::npos);
  EXPECT_FALSE(fs::exists(Out()));
}

TEST_F(HostileInputTest, AFileWhoseExpansionBreaksTheBoundFailsAndStopsTheRun) {
  // Each answer is within its bound; two copies of a 1 MB one in a 28-byte file are not.
  const fs::path file = dir_.Write(template_ + "A.txt", "#Company.Name##Company.Name#");
  dir_.Write(template_ + "B.txt", "never reached");
  const ProgramRun run = CreateFromJob("Company.Name=" + std::string(1 << 20, 'c') + "\n");
  EXPECT_EQ(run.exit_status, 1);
  ExpectLastLine(run, "tsaw: create: stopped: The expansion of '" + file.string() + "' exceeds 1 MB.\n");
  EXPECT_NE(run.out.find(" FAILED:     1 file and 0 folders\n"), std::string::npos) << run.out;
  EXPECT_NE(Report().find("      ERROR: The expansion of '" + file.string() + "' exceeds 1 MB.\r\n"),
            std::string::npos);
  EXPECT_FALSE(fs::exists(Out() / "Rocket/A.txt"));
  EXPECT_FALSE(fs::exists(Out() / "Rocket/B.txt"));
}

TEST_F(HostileInputTest, AReferenceSplicedFromAnEmptyValueIsNeutralised) {
  // Path.Windows is empty without a Wine prefix and comes before Product.Name.
  const std::string spliced = "#Prod#Path.Windows#uct.Name#";
  dir_.Write(template_ + "ReadMe.txt", "#Product.Name#\n");
  const ProgramRun run = CreateFromJob("Company.Name=" + spliced + "\nProduct.Name=Rocket " + spliced + spliced + "\n");
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_NE(Report().find("  WARNING: At least 1 CVR has been detected:  Product.Name (Rocket *Prod*Path.Windows*"),
            std::string::npos)
      << Report();
}

TEST_F(HostileInputTest, FilesThatAreNotRegularAreNeverOpened) {
  const fs::path fifo = dir_.path() / (template_ + "Pipe.txt");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  const ProgramRun run = Create({});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_NE(run.out.find(" FAILED:     1 file and 0 folders\n"), std::string::npos) << run.out;
  EXPECT_NE(Report().find("      ERROR: File could not be read: Cannot read \"" + fifo.string() +
                          "\": it is not a regular file"),
            std::string::npos);

  const fs::path job = dir_.path() / "pipe-job.ini";
  ASSERT_EQ(mkfifo(job.c_str(), 0600), 0);
  const ProgramRun from_job = Tsaw({"create", "--job", job.string()});
  EXPECT_EQ(from_job.exit_status, 1);
  EXPECT_NE(from_job.err.find("it is not a regular file"), std::string::npos) << from_job.err;

  fs::remove(dir_.path() / (template_ + "Template.ini"));
  ASSERT_EQ(mkfifo((dir_.path() / (template_ + "Template.ini")).c_str(), 0600), 0);
  const ProgramRun validate = Tsaw({"validate", (dir_.path() / template_).string()});
  EXPECT_EQ(validate.exit_status, 1);
  EXPECT_NE(validate.err.find("it is not a regular file"), std::string::npos) << validate.err;
}

TEST_F(HostileInputTest, MoreVariablesThanNumbersCanHoldAreRefusedByFile) {
  std::string declarations = "[Custom Variables]\n";
  for (int i = 0; i < 65489; ++i) declarations += "V" + std::to_string(i) + "=x\n";
  const fs::path config = dir_.Write("TSA/Wizard/TSaW.Default.ini", declarations);
  const std::string message = "\"" + config.string() + "\" declares 65489 variables in [Custom Variables]; "
                              "the wizard holds at most 65534 variables in all (47 are already declared).";
  const ProgramRun templates = Tsaw({"templates"});
  EXPECT_NE(templates.exit_status, 124);
  EXPECT_NE(templates.err.find(message), std::string::npos) << templates.err;
  const ProgramRun run = Create({});
  EXPECT_NE(run.exit_status, 124);
  EXPECT_NE(run.err.find(message), std::string::npos) << run.err;
}

TEST_F(HostileInputTest, FoldersThatAreNoProjectSetsAreRefusedBeforeAnythingMoves) {
  dir_.Write("home/.ssh/id", "key");
  const ProgramRun ssh = Create({"--set", "Output.BaseFolder=" + Home().string(), "--set", "Product.Name=.ssh"});
  EXPECT_EQ(ssh.exit_status, 1);
  ExpectLastLine(ssh, "tsaw: create: stopped: The Project Set folder '" + (Home() / ".ssh").string() +
                          "' has a name that begins with '.' (check Product.Name).\n");
  EXPECT_EQ(dir_.Read("home/.ssh/id"), "key");
  EXPECT_FALSE(fs::exists(dir_.path() / "data/Trash/files"));

  for (const auto& [base, name] : {std::pair{"/usr", "lib"}, std::pair{"/etc", "ssh"}}) {
    const ProgramRun system = Create({"--dry-run", "--set", std::string("Output.BaseFolder=") + base, "--set",
                                      std::string("Product.Name=") + name});
    EXPECT_EQ(system.exit_status, 1) << base;
    EXPECT_NE(system.err.find("' lies in the operating system's own folders; it is not replaced."), std::string::npos)
        << system.err;
  }

  // A dry run, so that a regression cannot write below the root.
  const ProgramRun empty_path = Create({"--dry-run", "--set", "Output.BaseFolder=#Path.Delphi#/Projects"});
  EXPECT_EQ(empty_path.exit_status, 1);
  ExpectLastLine(empty_path,
                 "tsaw: create: stopped: The Base Folder '#Path.Delphi#/Projects' begins with #Path.Delphi#, which "
                 "is empty on this machine.\n");
}

TEST_F(HostileInputTest, AProjectSetFolderThatCannotBeMadeStopsWithTheSystemsReason) {
  dir_.Write("blocker", "a file where a folder should be");
  const ProgramRun run = Create({"--set", "Output.BaseFolder=" + (dir_.path() / "blocker/base").string()});
  EXPECT_EQ(run.exit_status, 1);
  ExpectLastLine(run, "tsaw: create: stopped: Folder could not be created: '" + (dir_.path() / "blocker").string() +
                          "' (File exists)\n");
  EXPECT_EQ(dir_.Read("blocker"), "a file where a folder should be");
}

TEST_F(HostileInputTest, ALinkOutOfTheTemplateIsNotFollowed) {
  const fs::path key = dir_.Write("home/key.txt", "secret");
  const fs::path link = dir_.path() / (template_ + "Key.txt");
  fs::create_symlink(key, link);
  const ProgramRun run = Create({});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_FALSE(fs::exists(Out() / "Rocket/Key.txt"));
  EXPECT_NE(run.out.find(" FAILED:     1 file and 0 folders\n"), std::string::npos) << run.out;
  EXPECT_NE(Report().find("      ERROR: '" + link.string() + "' is a link to '" + key.string() +
                          "' outside the template; not followed."),
            std::string::npos);
}

TEST_F(HostileInputTest, ANameTooLongForTheFileSystemIsNamed) {
  const std::string name(5000, 'n');
  const ProgramRun run = Create({"--set", "Product.Name=" + name});
  EXPECT_EQ(run.exit_status, 1);
  ExpectLastLine(run, name + "' cannot be used: File name too long.\n");
  EXPECT_EQ(run.err.find("filesystem error"), std::string::npos);
}

// Starts `tsaw create` on the tiny template and sends `signal_number` once it writes files;
// returns its exit status (-1 when it did not exit, -2 when it ended before writing).
int CreateAndSignal(const fs::path& root, const fs::path& files, int signal_number) {
  const pid_t child = fork();
  if (child < 0) return -1;
  if (child == 0) {
    const int null = open("/dev/null", O_WRONLY);
    dup2(null, STDOUT_FILENO);
    dup2(null, STDERR_FILENO);
    execl(TSAW_EXE, TSAW_EXE, "--root", root.c_str(), "create", "--template", "Apps/Tiny", nullptr);
    _exit(127);
  }
  int status = 0;
  pid_t ended = 0;
  while (!fs::exists(files) && (ended = waitpid(child, &status, WNOHANG)) == 0) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  if (ended != 0) return -2;
  kill(child, signal_number);
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The signal reaches the run while it writes a template of many files.
TEST_F(HostileInputTest, SigtermAndCtrlCStopTheRunWithItsReportWritten) {
  for (int i = 0; i < 3000; ++i) dir_.Write(template_ + "Files/F" + std::to_string(i) + ".txt", "#Product.Name#\n");
  for (const auto& [signal_number, status] : {std::pair{SIGTERM, 143}, std::pair{SIGINT, 130}}) {
    fs::remove_all(Out());
    dir_.Write("TSA/Wizard/Report.txt", "the last run's report");
    EXPECT_EQ(CreateAndSignal(dir_.path(), Out() / "Rocket/Files", signal_number), status) << signal_number;
    // The statistics follow the last line of the run.
    EXPECT_NE(Report().find("\r\nProcess aborted!\r\n"), std::string::npos) << Report();
    for (const auto& entry : fs::recursive_directory_iterator(Out())) {
      EXPECT_NE(entry.path().filename().string().rfind(".tsaw-", 0), 0u) << entry.path();
    }
  }
}

}  // namespace
}  // namespace tsaw::app
