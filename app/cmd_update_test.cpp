// Runs `tsaw update` as a user would (TSAW_EXE is the built executable): create, edit, change the
// template, update, and undo, comparing whole files and whole outputs.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>

#include "generations/store.h"
#include "testing/run_program.h"
#include "testing/temp_dir.h"

namespace tsaw::app {
namespace {
namespace fs = std::filesystem;
using tsaw::testing::ProgramRun;
using tsaw::testing::RunProgram;

const std::string kLogo("BM\0\0\x10\x20", 6);
const std::string kTemplate = "TSA/Wizard/Templates/Apps/Tiny/";
const std::string kSet = "out/Rocket/";

// A root with the template "Apps/Tiny" (Delphi 7 for Win32; Delphi 2007 for Win32 off) whose
// Project Set goes to <root>/out/Rocket, and a state and a trash of its own.
class UpdateCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("XDG_DATA_HOME", (dir_.path() / "data").c_str(), 1);
    setenv("XDG_STATE_HOME", (dir_.path() / "state").c_str(), 1);
    WriteTemplateIni("D");
    Template("Delphi 7/Win32/Host/T001_Host.dpr", "program vrHost_ProjectName;\nbegin\n  Run;\nend.\n");
    Template("Delphi 2007/Win32/Host/T001_Host.dpr", "program vrHost_ProjectName;\nbegin\n  Run2007;\nend.\n");
    Template("ReadMe.txt", Lines("line", 10));
    Template("Logo.bmp", kLogo);
    Template("Old.txt", "old\n");
    dir_.Write("TSA/Wizard/TSaW.ini", "[TSaW]\nConfig=Default\n");
    dir_.Write("TSA/Wizard/TSaW.Default.ini", "[Default Values]\n");
  }
  void WriteTemplateIni(const std::string& delphi_2007) {
    std::string targets;
    for (const char* key : {"Delphi.5.Win32", "Delphi.6.Win32", "Delphi.8.VclNet", "Delphi.8.NetFcl",
                            "Delphi.2005.Win32", "Delphi.2005.VclNet", "Delphi.2005.NetFcl", "Delphi.2006.Win32",
                            "Delphi.2006.VclNet", "Delphi.2006.NetFcl", "Delphi.2007.VclNet", "Delphi.2007.NetFcl",
                            "TurboDelphi.2006.Win32", "TurboDelphi.2006.VclNet", "TurboDelphi.2006.NetFcl",
                            "Chrome.NetFcl"}) {
      targets += std::string(key) + "=D\n";
    }
    Template("Template.ini", "[Template]\nName=Tiny\nPrefix=T001\nAuthor=a\nPurpose=p\nDesc=d\n"
                            "[Default Values]\nProduct.Name=Rocket\nProjects.Prefix=Acme\nOutput.BaseFolder=" +
                                (dir_.path() / "out").string() + "\nDelphi.7.Win32=R\nDelphi.2007.Win32=" +
                                delphi_2007 + "\n" + targets);
  }
  static std::string Lines(const std::string& word, int count, const std::string& end = "\n") {
    std::string text;
    for (int i = 1; i <= count; ++i) text += word + " " + std::to_string(i) + end;
    return text;
  }
  void Template(const std::string& file, const std::string& content) { dir_.Write(kTemplate + file, content); }
  void Edit(const std::string& file, const std::string& content) { dir_.Write(kSet + file, content); }
  std::string SetFile(const std::string& file) const { return dir_.Read(kSet + file); }
  fs::path Set() const { return dir_.path() / "out/Rocket"; }

  ProgramRun Tsaw(const std::string& command, std::vector<std::string> args, std::vector<std::string> env = {}) {
    args.insert(args.begin(), {"--root", dir_.path().string(), command});
    if (command != "update" || std::find(args.begin(), args.end(), "--undo") == args.end()) {
      args.insert(args.end(), {"--template", "Apps/Tiny"});
    }
    if (env.empty()) return RunProgram(TSAW_EXE, args);
    args.insert(args.begin(), TSAW_EXE);
    args.insert(args.begin(), env.begin(), env.end());
    return RunProgram("env", args);
  }
  void Create() {
    const ProgramRun run = Tsaw("create", {});
    ASSERT_EQ(run.exit_status, 0) << run.err;
  }
  ProgramRun Update(std::vector<std::string> args = {}) { return Tsaw("update", std::move(args)); }
  ProgramRun Undo() { return Tsaw("update", {"--undo", Set().string()}); }
  // `tsaw update` killed (SIGKILL, as a crash or a power cut would end it) just before its nth
  // rename into the Project Set.
  ProgramRun UpdateKilledAt(int n) {
    // A sanitizer build wants its runtime first among the libraries; the shim only wraps rename().
    const char* asan_options = std::getenv("ASAN_OPTIONS");
    return Tsaw("update", {},
                {"LD_PRELOAD=" + std::string(TSAW_KILL_AT_RENAME), "TSAW_TEST_KILL_DIR=" + Set().string() + "/",
                 "ASAN_OPTIONS=" + std::string(asan_options ? asan_options : "") + ":verify_asan_link_order=0",
                 "TSAW_TEST_KILL_AT=" + std::to_string(n)});
  }

  // Every regular file below the Project Set, by path.
  std::map<std::string, std::string> Tree() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(Set())) {
      if (entry.is_regular_file()) {
        const std::string path = entry.path().lexically_relative(Set()).generic_string();
        files[path] = dir_.Read(kSet + path);
      }
    }
    return files;
  }
  std::string Statistics(int kept, int updated, int merged, int conflicts, int added, int removed) const {
    auto line = [](const char* label, int n) { return std::string(label) + std::to_string(n) + (n == 1 ? " file\n" : " files\n"); };
    const std::string rule(96, '=');
    return "\n" + rule + "\n" + std::string(39, ' ') + "UPDATE STATISTICS\n" + rule + "\n\n" + line(" KEPT:       ", kept) +
           line(" UPDATED:    ", updated) + line(" MERGED:     ", merged) + line(" CONFLICTS:  ", conflicts) +
           line(" ADDED:      ", added) + line(" REMOVED:    ", removed) + "\n" + rule + "\n\n";
  }
  std::string Tail() const {
    return "Project Set folder: " + Set().string() + "\nReport: " + (dir_.path() / "TSA/Wizard/Report.txt").string() +
           "\nUndo with: tsaw update --undo " + Set().string() + "\n";
  }
  tsaw::testing::TempDir dir_;
};

TEST_F(UpdateCommandTest, KeepsAnEditAcrossAnAddedTarget) {
  Create();
  const std::string edited = "program AcmeHost;\r\nbegin\r\n  Run;\r\n  MyOwnCall;\r\nend.\r\n";
  Edit("Delphi 7/Win32/Host/AcmeHost.dpr", edited);
  WriteTemplateIni("R");
  const ProgramRun run = Update();
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(run.out, Statistics(4, 0, 0, 0, 1, 0) + Tail());
  EXPECT_EQ(SetFile("Delphi 7/Win32/Host/AcmeHost.dpr"), edited);
  EXPECT_EQ(SetFile("Delphi 2007/Win32/Host/AcmeHost.dpr"), "program AcmeHost;\r\nbegin\r\n  Run2007;\r\nend.\r\n");
  // The update's section follows the whole report of the creation it made.
  const std::string report = dir_.Read("TSA/Wizard/Report.txt");
  const std::string rule(96, '=');
  EXPECT_EQ(report.substr(0, report.find(rule)), "\r\n");
  const size_t statistics = report.find(std::string(42, ' ') + "REPORT STATISTICS");
  ASSERT_NE(statistics, std::string::npos) << report;
  std::string expected = std::string(42, ' ') + "REPORT STATISTICS\n" + rule + "\n\n SCANNED:    6 files in 7 folders\n" +
                         " SKIPPED:    1 file in 23 folders\n FAILED:     0 files and 0 folders\n" +
                         " PROCESSED:  5 files in 7 folders\n\n" + rule + "\n\n\n" + rule + "\n" + std::string(35, ' ') +
                         "UPDATE OF THE PROJECT SET\n" + rule + "\n\n  added     'Delphi 2007/Win32/Host/AcmeHost.dpr'\n" +
                         "  kept      'Delphi 7/Win32/Host/AcmeHost.dpr'\n  kept      'Logo.bmp'\n  kept      'Old.txt'\n" +
                         "  kept      'ReadMe.txt'\n" + Statistics(4, 0, 0, 0, 1, 0);
  for (auto at = expected.find('\n'); at != std::string::npos; at = expected.find('\n', at + 2)) expected.insert(at, "\r");
  EXPECT_EQ(report.substr(statistics), expected);
}

TEST_F(UpdateCommandTest, MergesAnEditWithATemplateChangeElsewhereInTheSameFile) {
  Create();
  std::string mine = Lines("line", 10, "\r\n");
  mine.replace(mine.find("line 2"), 6, "line two, mine");
  Edit("ReadMe.txt", mine);
  std::string theirs = Lines("line", 10);
  theirs.replace(theirs.find("line 9"), 6, "line nine, template's");
  Template("ReadMe.txt", theirs);
  const ProgramRun run = Update();
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(run.out, Statistics(3, 0, 1, 0, 0, 0) + Tail());
  std::string both = mine;
  both.replace(both.find("line 9"), 6, "line nine, template's");
  EXPECT_EQ(SetFile("ReadMe.txt"), both);
}

TEST_F(UpdateCommandTest, AnOverlappingChangeGivesDiff3MarkersAndExitStatus3) {
  Create();
  std::string mine = Lines("line", 10, "\r\n"), theirs = Lines("line", 10);
  Edit("ReadMe.txt", mine.replace(mine.find("line 3"), 6, "mine"));
  Template("ReadMe.txt", theirs.replace(theirs.find("line 3"), 6, "theirs"));
  const ProgramRun run = Update();
  EXPECT_EQ(run.exit_status, 3) << run.err;
  EXPECT_EQ(run.out, Statistics(3, 0, 0, 1, 0, 0) + "conflict: ReadMe.txt\n" + Tail());
  EXPECT_EQ(SetFile("ReadMe.txt"),
            "line 1\r\nline 2\r\n<<<<<<< ours (your edit)\r\nmine\r\n||||||| base (last generation)\r\nline 3\r\n"
            "=======\r\ntheirs\r\n>>>>>>> theirs (new generation)\r\n" + Lines("line", 10, "\r\n").substr(24));
}

TEST_F(UpdateCommandTest, RemovesADroppedTemplateFileAndLeavesTheDevelopersFilesAlone) {
  Create();
  Edit("Mine/Extra.pas", "unit Extra;\n");
  Edit("notes.txt", "my notes");
  fs::remove(dir_.path() / kTemplate / "Old.txt");
  const ProgramRun run = Update();
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(run.out, Statistics(3, 0, 0, 0, 0, 1) + Tail());
  EXPECT_FALSE(fs::exists(Set() / "Old.txt"));
  EXPECT_EQ(SetFile("Mine/Extra.pas"), "unit Extra;\n");
  EXPECT_EQ(SetFile("notes.txt"), "my notes");
}

TEST_F(UpdateCommandTest, ABinaryFileChangedByBothStaysAndTheNewOneGoesBesideIt) {
  Create();
  const std::string mine = kLogo + "mine";
  Edit("Logo.bmp", mine);
  Template("Logo.bmp", kLogo + "theirs");
  const ProgramRun run = Update();
  EXPECT_EQ(run.exit_status, 3) << run.err;
  EXPECT_EQ(run.out, Statistics(3, 0, 0, 1, 0, 0) +
                         "conflict: Logo.bmp (the new generation is in Logo.bmp.tsaw-new)\n" + Tail());
  EXPECT_EQ(SetFile("Logo.bmp"), mine);
  EXPECT_EQ(SetFile("Logo.bmp.tsaw-new"), kLogo + "theirs");
}

TEST_F(UpdateCommandTest, DryRunChangesNothingAndUndoRestoresEveryByte) {
  Create();
  Edit("ReadMe.txt", "mine\r\n");
  Edit("Logo.bmp", kLogo + "mine");
  Template("ReadMe.txt", "theirs\n");
  Template("Logo.bmp", kLogo + "theirs");
  Template("New.txt", "new\n");
  fs::remove(dir_.path() / kTemplate / "Old.txt");
  const auto before = Tree();

  const ProgramRun dry = Update({"--dry-run"});
  EXPECT_EQ(dry.exit_status, 3) << dry.err;
  EXPECT_NE(dry.out.find("  conflict  'Logo.bmp'\n  added     'New.txt'\n  removed   'Old.txt'\n"
                         "  conflict  'ReadMe.txt'\n"),
            std::string::npos)
      << dry.out;
  EXPECT_EQ(Tree(), before);
  EXPECT_FALSE(fs::exists(dir_.path() / "out/.Rocket.tsaw-update"));

  ASSERT_EQ(Update().exit_status, 3);
  ASSERT_NE(Tree(), before);
  const ProgramRun undo = Undo();
  EXPECT_EQ(undo.exit_status, 0) << undo.err;
  EXPECT_EQ(undo.out, "The Project Set is back as it was before the last update: " + Set().string() + "\n");
  EXPECT_EQ(Tree(), before);

  const ProgramRun again = Undo();
  EXPECT_EQ(again.exit_status, 1);
  EXPECT_EQ(again.err, "tsaw: update: nothing to undo: no update of '" + Set().string() + "' is recorded\n");
}

TEST_F(UpdateCommandTest, AnUpdateKilledTwiceIsUndoneToTheStateBeforeTheFirst) {
  Create();
  Edit("ReadMe.txt", "mine\r\n");
  Template("ReadMe.txt", "theirs\n");
  Template("Delphi 7/Win32/Host/T001_Host.dpr", "program vrHost_ProjectName;\nbegin\n  RunAgain;\nend.\n");
  Template("A/New1.txt", "1\n");
  Template("B/New2.txt", "2\n");
  const auto before = Tree();
  const ProgramRun first = UpdateKilledAt(1);
  EXPECT_EQ(first.exit_status, 128 + SIGKILL) << first.out << first.err;
  EXPECT_EQ(Tree(), before);
  const ProgramRun second = UpdateKilledAt(3);
  EXPECT_EQ(second.exit_status, 128 + SIGKILL) << second.out << second.err;
  EXPECT_NE(Tree(), before);

  const ProgramRun undo = Undo();
  EXPECT_EQ(undo.exit_status, 0) << undo.err;
  EXPECT_EQ(Tree(), before);
  EXPECT_FALSE(fs::exists(Set() / "A"));

  const ProgramRun update = Update();
  EXPECT_EQ(update.exit_status, 3) << update.err;
  EXPECT_EQ(SetFile("A/New1.txt"), "1\r\n");
}

// The update that records one generation more than the store keeps prunes and repacks it, and
// then still writes its undo record: both must land in the repacked store.
TEST_F(UpdateCommandTest, TheUpdateThatPrunesTheStoreCanStillBeUndone) {
  Create();
  for (int update = 1; update <= generations::kKeptGenerations; ++update) {
    const auto before = Tree();
    Template("ReadMe.txt", Lines("line", 10 + update));
    const ProgramRun run = Update();
    ASSERT_EQ(run.exit_status, 0) << "update " << update << ": " << run.err;
    if (update < generations::kKeptGenerations) continue;
    const ProgramRun undo = Undo();
    EXPECT_EQ(undo.exit_status, 0) << undo.err;
    EXPECT_EQ(Tree(), before);
  }
  EXPECT_EQ(Update().exit_status, 0);
  EXPECT_EQ(SetFile("ReadMe.txt"), Lines("line", 10 + generations::kKeptGenerations, "\r\n"));
}

// Rounds of what people do between updates, drawn from a fixed seed: the developer edits, deletes
// and adds files, the template gains, loses and changes files, and the update finishes, is undone,
// or is killed at one of its writes. After every round the Project Set is whole: an undo gives
// back every byte, a killed update is undone or left nothing changed, and no temporary file or
// staging folder stays. Enough rounds to prune the store twice.
TEST_F(UpdateCommandTest, RoundsOfEditsUpdatesKillsAndUndosKeepTheProjectSetWhole) {
  for (int i = 0; i < 24; ++i) Template("Delphi 7/Win32/Host/U" + std::to_string(i) + ".pas", Lines("unit line", 8));
  Create();
  std::mt19937 random(20261126);
  const auto pick = [&random](const std::vector<std::string>& from) {
    return from[std::uniform_int_distribution<size_t>(0, from.size() - 1)(random)];
  };
  const auto chance = [&random](int percent) { return std::uniform_int_distribution<int>(1, 100)(random) <= percent; };
  for (int round = 1; round <= 3 * generations::kKeptGenerations; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    std::vector<std::string> ours, theirs;
    for (const auto& [path, content] : Tree()) ours.push_back(path);
    for (const auto& entry : fs::recursive_directory_iterator(dir_.path() / kTemplate)) {
      if (entry.path().extension() != ".pas") continue;
      theirs.push_back(entry.path().lexically_relative(dir_.path() / kTemplate));
    }
    std::sort(theirs.begin(), theirs.end());  // the same rounds on every file system
    const std::string mark = std::to_string(round);
    for (int n = 0; n < 3; ++n) Edit(pick(ours), "mine " + mark + "\r\n");
    if (chance(20)) fs::remove(Set() / pick(ours));
    if (chance(20)) Edit("Mine" + mark + ".txt", "my own\r\n");
    for (int n = 0; n < 6; ++n) Template(pick(theirs), Lines("theirs " + mark, 8));
    if (chance(20)) Template("Delphi 7/Win32/Host/New" + mark + ".pas", "unit New;\nend.\n");
    if (chance(15) && theirs.size() > 10) fs::remove(dir_.path() / kTemplate / pick(theirs));
    const auto before = Tree();

    if (chance(35)) {
      const ProgramRun killed = UpdateKilledAt(std::uniform_int_distribution<int>(1, 6)(random));
      if (killed.exit_status == 128 + SIGKILL && Tree() != before) {
        const ProgramRun undo = Undo();
        ASSERT_EQ(undo.exit_status, 0) << undo.err;
        ASSERT_EQ(Tree(), before);
      }
      const ProgramRun again = Update();
      ASSERT_TRUE(again.exit_status == 0 || again.exit_status == 3) << again.err;
    } else {
      const ProgramRun update = Update();
      ASSERT_TRUE(update.exit_status == 0 || update.exit_status == 3) << update.err;
      if (chance(30)) {
        const ProgramRun undo = Undo();
        ASSERT_EQ(undo.exit_status, 0) << undo.err;
        ASSERT_EQ(Tree(), before);
      }
    }
    for (const auto& [path, content] : Tree()) {
      if (path.ends_with(".tsaw-new")) fs::remove(Set() / path);
      ASSERT_EQ(path.find(".tsaw-tmp"), std::string::npos) << path;
    }
    ASSERT_EQ(std::distance(fs::directory_iterator(Set().parent_path()), fs::directory_iterator()), 1)
        << "a staging folder was left beside the Project Set";
  }
}

TEST_F(UpdateCommandTest, RefusesWithoutARecordedGenerationAndChangesNothing) {
  ASSERT_EQ(Tsaw("create", {"--no-record"}).exit_status, 0);
  Template("ReadMe.txt", "theirs\n");
  const auto before = Tree();
  const ProgramRun run = Update();
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "tsaw: update: no generation of '" + Set().string() +
                         "' is recorded (it was made elsewhere, with --no-record or by a run that did not finish, or the "
                         "store was removed), so your edits cannot be told from the template's output; nothing was "
                         "changed. Make it anew with `tsaw create` (the folder goes to the trash); later updates keep "
                         "your edits\n");
  EXPECT_EQ(Tree(), before);
  EXPECT_FALSE(fs::exists(dir_.path() / "out/.Rocket.tsaw-update"));
}

// The generations of a recorded set describe the folder that went to the trash when the set was
// made anew without recording: merging against them would take the new run's output for edits.
TEST_F(UpdateCommandTest, RefusesOnceTheSetWasMadeAnewWithoutRecordingAndAcceptsAfterARecordedCreation) {
  Create();
  ASSERT_EQ(Tsaw("create", {"--no-record"}).exit_status, 0);
  Edit("ReadMe.txt", "mine\r\n");
  Template("ReadMe.txt", "theirs\n");
  const auto before = Tree();
  const ProgramRun refused = Update();
  EXPECT_EQ(refused.exit_status, 1);
  EXPECT_NE(refused.err.find("no generation of '" + Set().string() + "' is recorded"), std::string::npos) << refused.err;
  EXPECT_EQ(Tree(), before);

  Create();
  Edit("ReadMe.txt", "mine\r\n");
  const ProgramRun update = Update();
  EXPECT_EQ(update.exit_status, 0) << update.err;
  EXPECT_EQ(SetFile("ReadMe.txt"), "mine\r\n");
}

// A creation does not make the folder anew while another run (an update) holds its store, and
// may once it is let go.
TEST_F(UpdateCommandTest, ACreationRefusesWhileAnotherRunHoldsTheStoreAndChangesNothing) {
  Create();
  Edit("ReadMe.txt", "mine\r\n");
  const auto before = Tree();
  const fs::path lock_file = generations::TGenerationStore::FolderOf(dir_.path() / "state/tsaw", Set()) / "tsaw.lock";
  const int lock = ::open(lock_file.c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_GE(lock, 0);
  ASSERT_EQ(::flock(lock, LOCK_EX), 0);
  for (const std::vector<std::string>& options : {std::vector<std::string>{}, {"--no-record"}}) {
    const ProgramRun refused = Tsaw("create", options);
    EXPECT_EQ(refused.exit_status, 1);
    EXPECT_NE(refused.err.find("another tsaw run is using the generation store of '" + Set().string() +
                               "'; nothing was changed."),
              std::string::npos)
        << refused.err;
    EXPECT_EQ(Tree(), before);
  }
  ::close(lock);
  EXPECT_EQ(Tsaw("create", {}).exit_status, 0);
  EXPECT_EQ(SetFile("ReadMe.txt"), Lines("line", 10, "\r\n"));
}

TEST_F(UpdateCommandTest, ACreationThatCannotBeRecordedWarnsAndStillSucceeds) {
  dir_.Write("state/tsaw", "a file where the stores' folder belongs");
  const ProgramRun run = Tsaw("create", {});
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.err, "tsaw: create: warning: this creation was not recorded, so `tsaw update` cannot use it: "
                     "the generation store '" +
                         generations::TGenerationStore::FolderOf(dir_.path() / "state/tsaw", Set()).string() +
                         "' cannot be opened\n");
  EXPECT_EQ(SetFile("ReadMe.txt"), Lines("line", 10, "\r\n"));
}

TEST_F(UpdateCommandTest, RefusedAnswersTouchNothing) {
  Create();
  const auto before = Tree();
  const ProgramRun run = Update({"--set", "Projects.Prefix=1 bad prefix"});
  EXPECT_EQ(run.exit_status, 1);
  const std::string tail = "tsaw: update: the answers do not pass the pages' rules; nothing was changed\n";
  ASSERT_GE(run.err.size(), tail.size()) << run.err;
  EXPECT_EQ(run.err.substr(run.err.size() - tail.size()), tail);
  EXPECT_EQ(Tree(), before);
}

}  // namespace
}  // namespace tsaw::app
