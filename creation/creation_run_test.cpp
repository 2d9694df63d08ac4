#include "creation/creation_run.h"

#include <gtest/gtest.h>

#include "creation/creation_run_test_support.h"
#include "creation/report.h"
#include "creation/safety.h"
#include "model/text_file.h"
#include "model/targets.h"
#include "model/variables.h"

namespace tsaw::creation {
namespace {
namespace fs = std::filesystem;
using testing_support::DemoSetup;
using Tree = std::map<std::string, std::string>;

TEST(CreationRunTest, WritesTheGoldenProjectSet) {
  DemoSetup setup;
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  ASSERT_EQ(run.Start(), TRunOutcome::Finished) << run.StopReason();
  EXPECT_EQ(run.ProjectSetFolder(), setup.Out() / "Rocket");
  const Tree expected = {
      {"Common/", ""},
      {"Common/Acme_Shared.pas", "unit Acme_Shared;\r\nuses Logger;\r\nend.\r\n"},
      {"Delphi 7/", ""},
      {"Delphi 7/Lang.txt", "lang D7\r\n"},
      {"Delphi 7/Win32/", ""},
      {"Delphi 7/Win32/Acme_D7W32.bpg", "Acme_D7W32: AcmeHost.exe\r\n"},
      {"Delphi 7/Win32/Host/", ""},
      {"Delphi 7/Win32/Host/AcmeHost.cfg", "-$A8\r\n-DDEBUG\r\n"},
      {"Delphi 7/Win32/Host/AcmeHost.dpr", "program AcmeHost;\r\n// D7\r\n// one\r\n{$R *.res}\r\nbegin\r\nend.\r\n"},
      {"Delphi 7/Win32/Host/Main.dfm",
       "object Main: TForm\r\n  Caption = 'O''Neil & Co'\r\n  object tsaMan: TqrxTsaMan\r\n    Version = '1.0'\r\n"
       "    DCI.UniqueID =\r\n      'DCI-1'\r\n  end\r\nend\r\n"},
      {"Delphi 7/Win32/Host/logo.bin", std::string("\x00\x01\xFF" "bin", 6)},
      {"Delphi 7/Win32/Plugins/", ""},
      {"Delphi 7/Win32/Plugins/Plugin2/", ""},
      {"Delphi 7/Win32/Plugins/Plugin2/AcmePin2.dpr", "library AcmePin2;\r\n// two\r\nend.\r\n"},
      {"Delphi 7/Win32/Plugins/Plugin2/Latin.txt", "caf\xE9 Rocket\r\n"},
      {"ReadMe.txt", "Rocket by ONeil_Co\r\n"},
  };
  EXPECT_EQ(DemoSetup::Tree(run.ProjectSetFolder()), expected);
  EXPECT_EQ(run.Counters(), (TCounters{7, 1 + 8 + 17, 7, 0, 12, 2, 10, 0}));
  EXPECT_TRUE(setup.trash.Moved.empty());
}

TEST(CreationRunTest, RunsTwiceAndTrashesThePreviousSet) {
  DemoSetup setup;
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  ASSERT_EQ(run.Start(), TRunOutcome::Finished);
  setup.dir.Write("out/Rocket/stale.txt", "old");
  ASSERT_EQ(run.Start(), TRunOutcome::Finished);
  ASSERT_EQ(setup.trash.Moved, std::vector<fs::path>{setup.Out() / "Rocket"});
  EXPECT_EQ(run.MovedToTrash(), setup.Out() / "Rocket");
  EXPECT_FALSE(fs::exists(setup.Out() / "Rocket/stale.txt"));
  EXPECT_TRUE(fs::exists(setup.trash.Holding() / "1-Rocket/stale.txt"));
}

TEST(CreationRunTest, KeepsTheAnswersItExpandsSoThatANewPrefixFollows) {
  DemoSetup setup;
  TWizard& wizard = setup.wizard;
  wizard.PluginIndex = 2;
  const auto answers = [&wizard] {
    std::vector<std::string> values;
    for (const uint16_t var_idx : {viCopyright, viHostProjectName, viHostSourcePrefix, viPluginSourcePrefix})
      values.push_back(wizard.Variables[var_idx].Value + "|" + wizard.Variables[var_idx].IdfValue);
    for (uint16_t plugin = 1; plugin <= 2; ++plugin)
      values.push_back(wizard.Variables[viPluginProjectName].Pins[plugin]->Value);
    values.push_back(std::to_string(wizard.PluginIndex));
    return values;
  };
  const std::vector<std::string> before = answers();
  ASSERT_NE(before[1].find("#Projects.Prefix#"), std::string::npos) << before[1];
  TCreationRun run(wizard, setup.Services(), setup.observer);
  ASSERT_EQ(run.Start(), TRunOutcome::Finished) << run.StopReason();
  EXPECT_EQ(answers(), before);

  setup.SetVariable(viProjectsPrefix, "Zeta");
  ASSERT_EQ(run.Start(), TRunOutcome::Finished) << run.StopReason();
  const Tree written = DemoSetup::Tree(run.ProjectSetFolder());
  EXPECT_EQ(written.count("Delphi 7/Win32/Host/ZetaHost.dpr"), 1u);
  EXPECT_EQ(written.count("Delphi 7/Win32/Host/AcmeHost.dpr"), 0u);
}

TEST(CreationRunTest, ADryRunPlansWhatARealRunWritesAndTouchesNothing) {
  DemoSetup setup;
  setup.dir.Write("out/Rocket/stale.txt", "old");
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  ASSERT_EQ(run.Start(true), TRunOutcome::Finished) << run.StopReason();
  std::vector<std::string> planned;
  for (const fs::path& file : run.PlannedFiles()) planned.push_back(file.lexically_relative(setup.Out()).string());
  EXPECT_EQ(planned, (std::vector<std::string>{
                         "Rocket/Common/Acme_Shared.pas", "Rocket/ReadMe.txt", "Rocket/Delphi 7/Lang.txt",
                         "Rocket/Delphi 7/Win32/Host/Main.dfm", "Rocket/Delphi 7/Win32/Host/AcmeHost.cfg",
                         "Rocket/Delphi 7/Win32/Host/AcmeHost.dpr", "Rocket/Delphi 7/Win32/Host/logo.bin",
                         "Rocket/Delphi 7/Win32/Plugins/Plugin2/Latin.txt",
                         "Rocket/Delphi 7/Win32/Plugins/Plugin2/AcmePin2.dpr", "Rocket/Delphi 7/Win32/Acme_D7W32.bpg"}));
  EXPECT_EQ(run.Counters(), (TCounters{7, 1 + 8 + 17, 7, 0, 12, 2, 10, 0}));
  EXPECT_EQ(run.MovedToTrash(), setup.Out() / "Rocket");
  EXPECT_TRUE(setup.trash.Moved.empty());
  EXPECT_EQ(DemoSetup::Tree(setup.Out()), (Tree{{"Rocket/", ""}, {"Rocket/stale.txt", "old"}}));
  EXPECT_FALSE(fs::exists(ReportFile(setup.wizard)));
}

TEST(CreationRunTest, ADryRunStopsWhenTheBaseFolderCannotBeMade) {
  DemoSetup setup;
  const fs::path file = setup.dir.Write("plain.txt", "x");
  setup.SetVariable(viOutputBaseFolder, (file / "below").string());
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  EXPECT_EQ(run.Start(true), TRunOutcome::Stopped);
  EXPECT_EQ(run.StopReason(), "The Base Folder '" + (file / "below").string() + "' cannot be made: '" +
                                  file.string() + "' is not a folder.");
  EXPECT_FALSE(run.Refused());
  EXPECT_TRUE(run.PlannedFiles().empty());
}

TEST(CreationRunTest, StopsAndDeletesNothingWhenTheTrashRefuses) {
  DemoSetup setup;
  setup.dir.Write("out/Rocket/keep.txt", "mine");
  setup.trash.Refuse = true;
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  EXPECT_EQ(run.Start(), TRunOutcome::Stopped);
  EXPECT_EQ(run.StopReason(), "Cannot move '" + (setup.Out() / "Rocket").string() +
                                  "' to the trash: refused by the test; nothing was deleted.");
  EXPECT_EQ(DemoSetup::Tree(setup.Out() / "Rocket"), (Tree{{"keep.txt", "mine"}}));
}

TEST(CreationRunTest, WithNoTargetSkipsEveryLanguageAndTargetFolder) {
  DemoSetup setup;
  for (auto& target : setup.wizard.Targets) target.Checked = false;
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  ASSERT_EQ(run.Start(), TRunOutcome::Finished);
  EXPECT_EQ(run.Counters(), (TCounters{2, 1 + 9 + 18, 2, 0, 4, 2, 2, 0}));
  EXPECT_EQ(DemoSetup::Tree(run.ProjectSetFolder()),
            (Tree{{"Common/", ""},
                  {"Common/Acme_Shared.pas", "unit Acme_Shared;\r\nuses Logger;\r\nend.\r\n"},
                  {"ReadMe.txt", "Rocket by ONeil_Co\r\n"}}));
}

TEST(CreationRunTest, DoesNotFollowALinkedFolderAndGoesOn) {
  DemoSetup setup;
  fs::create_directory_symlink(setup.dir.path() / "TSA", setup.dir.path() / "TSA/Wizard/Templates/Demo/Loop.dir");
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  ASSERT_EQ(run.Start(), TRunOutcome::Finished);
  EXPECT_EQ(run.Counters().FilesFailed, 1);
  EXPECT_EQ(run.Counters().FilesProcessed, 10);
}

TEST(CreationRunTest, AnErrorEndsTheRunWithTheExceptionLineAndTheReport) {
  DemoSetup setup;
  setup.dir.Write("TSA/Wizard/Templates/Demo/Broken.pas", "x;\n{$ELSE}\n");
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  EXPECT_EQ(run.Start(), TRunOutcome::Failed);
  const std::vector<std::string> report = run.ReportLines().Read();
  const std::string line = report[report.size() - 13];
  const std::string start = "TSA EXCEPTION at TSaW_frmCreation.TfrmCreation.btnStart_OnClick.310: ";
  EXPECT_EQ(line.substr(0, start.size()), start);
  EXPECT_EQ(line.substr(start.size()), run.StopReason());
  EXPECT_EQ(setup.dir.Read("TSA/Wizard/Report.txt"), JoinLines(report));
}

// The report of a run aborted at its first pump in the counting pass, whole.
std::vector<std::string> AbortedWhileCountingReport() {
  const std::string rule(96, '=');
  std::vector<std::string> lines = {"", rule, std::string(38, ' ') + "TESSERA WIZARD REPORT", rule, "",
                                    " Generated by Tessera Wizard v6.01 ", "", " DATE/TIME:  2024-01-02 at 03:04:05 ",
                                    " FRAMEWORK:  Tessera v2.2.05 ", "", rule, "",
                                    "Checking for Circular Variable References...", "  No CVR detected.",
                                    "Plugin.Index set to 1.", "Setting up Template Directives...",
                                    "Starting process...", "", "Checking platforms anf languages..."};
  for (const char* language : {"Delphi 5", "Delphi 6", "Delphi 7", "Delphi 8", "Delphi 2005", "Delphi 2006",
                               "Delphi 2007", "TurboDelphi 2006", "Chrome"}) {
    lines.push_back("  Language '" + std::string(language) + "' is " + (language == std::string("Delphi 7") ? "On" : "Off"));
  }
  lines.insert(lines.end(), {"  Platform 'Win32' is On", "  Platform 'VclNet' is Off", "  Platform 'NetFcl' is Off", "",
                             "Checking targets..."});
  for (uint16_t target = 1; target <= 18; ++target) {
    lines.push_back("  Target '" + std::string(TargetInfo(target).Name) + "' is " + (target == 3 ? "On" : "Off"));
  }
  lines.insert(lines.end(), {"", "Counting files and folders...", "", "Process aborted!", "", rule,
                             std::string(42, ' ') + "REPORT STATISTICS", rule, "",
                             " SCANNED:    0 files in 0 folders", " SKIPPED:    0 files in 0 folders",
                             " FAILED:     0 files and 0 folders", " PROCESSED:  0 files in 0 folders", "", rule, ""});
  return lines;
}

TEST(CreationRunTest, AbortWhileCountingWritesNothingButTheReport) {
  DemoSetup setup;
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  setup.observer.on_pump = [&run](const std::string& task) {
    if (task == "counting files and folders...") run.Abort();
  };
  EXPECT_EQ(run.Start(), TRunOutcome::Aborted);
  EXPECT_EQ(run.ReportLines().Read(), AbortedWhileCountingReport());
  EXPECT_EQ(setup.dir.Read("TSA/Wizard/Report.txt"), JoinLines(AbortedWhileCountingReport()));
  EXPECT_FALSE(fs::exists(setup.Out()));
}

TEST(CreationRunTest, AbortWhileProcessingStopsAfterTheCurrentFile) {
  DemoSetup setup;
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  int processing_pumps = 0;
  setup.observer.on_pump = [&](const std::string& task) {
    if (task == "processing files and folders..." && ++processing_pumps == 5) run.Abort();
  };
  EXPECT_EQ(run.Start(), TRunOutcome::Aborted);
  const TCounters counters = run.Counters();
  EXPECT_EQ(counters.FilesProcessed, 2);
  EXPECT_EQ(counters.FilesScanned, 12) << "the counting pass was complete";
  const std::vector<std::string> report = run.ReportLines().Read();
  const auto aborted = std::find(report.begin(), report.end(), "Process aborted!");
  ASSERT_NE(aborted, report.end());
  EXPECT_EQ(std::find(aborted, report.end(), "Processing language Delphi 7..."), report.end());
  EXPECT_EQ(report[report.size() - 4], " PROCESSED:  2 files in 2 folders");
}

struct RefusalCase {
  const char* name;
  std::string product;
  std::string message_end;
};

class ProjectSetRefusalTest : public ::testing::TestWithParam<RefusalCase> {};

TEST_P(ProjectSetRefusalTest, RefusesBeforeTouchingAnything) {
  const RefusalCase& c = GetParam();
  DemoSetup setup;
  setup.dir.Write("out/keep.txt", "mine");
  setup.SetVariable(viProductName, c.product);
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  EXPECT_EQ(run.Start(), TRunOutcome::Stopped) << c.name;
  EXPECT_TRUE(run.Refused()) << c.name;
  const std::string& reason = run.StopReason();
  EXPECT_EQ(reason.substr(reason.size() - std::min(reason.size(), c.message_end.size())), c.message_end)
      << c.name << ": " << reason;
  EXPECT_EQ(DemoSetup::Tree(setup.Out()), (Tree{{"keep.txt", "mine"}})) << c.name;
  EXPECT_TRUE(setup.trash.Moved.empty()) << c.name;
  const std::vector<std::string> report = run.ReportLines().Read();
  EXPECT_EQ(report[report.size() - 13], "  ERROR: " + reason) << c.name;
}

INSTANTIATE_TEST_SUITE_P(
    Names, ProjectSetRefusalTest,
    ::testing::Values(RefusalCase{"Empty", "", "' (check Product.Name)."},
                      RefusalCase{"DotDot", "..", "' (check Product.Name)."},
                      RefusalCase{"Slash", "/", "' (check Product.Name)."},
                      RefusalCase{"Climbing", "../../etc", "' (check Product.Name)."}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ProjectSetSafetyTest, RefusesASystemFolderRightBelowTheRoot) {
  EXPECT_EQ(CheckProjectSetFolder("/usr", "/", {}),
            "The Project Set folder '/usr' lies directly below the root of the file system; choose a deeper "
            "Base Folder.");
  EXPECT_EQ(CheckProjectSetFolder("/tmp/Rocket", "/tmp", {}), "");
}

TEST(ProjectSetSafetyTest, RefusesAFolderHoldingTheWizardFolderOrHome) {
  DemoSetup setup;
  setup.SetVariable(viOutputBaseFolder, setup.dir.path().string());
  setup.SetVariable(viProductName, "TSA");
  TCreationRun run(setup.wizard, setup.Services(), setup.observer);
  EXPECT_EQ(run.Start(), TRunOutcome::Stopped);
  EXPECT_EQ(run.StopReason(), "The Project Set folder '" + (setup.dir.path() / "TSA").string() +
                                  "' is or holds the wizard folder '" + (setup.dir.path() / "TSA/Wizard").string() + "'.");
  DemoSetup home_setup;
  TRunServices services = home_setup.Services();
  services.Home = home_setup.Out() / "Rocket" / "me";
  TCreationRun home_run(home_setup.wizard, services, home_setup.observer);
  EXPECT_EQ(home_run.Start(), TRunOutcome::Stopped);
  EXPECT_EQ(home_run.StopReason(), "The Project Set folder '" + (home_setup.Out() / "Rocket").string() +
                                       "' is or holds the home folder '" + services.Home.string() + "'.");
}

}  // namespace
}  // namespace tsaw::creation
