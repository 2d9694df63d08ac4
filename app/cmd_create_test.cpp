// Runs `tsaw create` as a user would (TSAW_EXE is the built executable): what it writes, what it
// prints, and what it refuses.

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>

#include "app/create_command_fixture.h"

namespace tsaw::app {
namespace {
namespace fs = std::filesystem;
using tsaw::testing::ProgramRun;
using tsaw::testing::RunProgram;

TEST_F(CreateCommandTest, WritesTheProjectSetAndPrintsTheStatistics) {
  const ProgramRun run = Create({});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(run.out, "Project Set folder: " + (Out() / "Rocket").string() + "\n" + TinyStatistics() +
                         "Report: " + ReportFile() + "\n");
  EXPECT_EQ(dir_.Read("out/Rocket/Delphi 7/Win32/Host/AcmeHost.dpr"), "program AcmeHost;\r\nend.\r\n");
}

TEST_F(CreateCommandTest, SaysWhenTheExistingProjectSetWentToTheTrash) {
  dir_.Write("out/Rocket/old.txt", "old");
  const ProgramRun run = Create({});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(run.out, "Project Set folder: " + (Out() / "Rocket").string() + "\n" + TinyStatistics() +
                         "Moved to the trash: " + (Out() / "Rocket").string() + "\nReport: " + ReportFile() + "\n");
  EXPECT_EQ(dir_.Read("data/Trash/files/Rocket/old.txt"), "old");
}

TEST_F(CreateCommandTest, ConfigChoosesTheConfigurationInPlaceOfTheSelector) {
  dir_.Write("TSA/Wizard/TSaW.Office.ini", "[Custom Variables]\nMotto=Fly high\n"
                                          "[Default Values]\nCompany.Name=Office Co\n");
  dir_.Write("TSA/Wizard/Templates/Apps/Tiny/ReadMe.txt", "#Company.Name#: #Custom.Motto#\n");
  const ProgramRun run = Create({"--config", "Office"});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(dir_.Read("out/Rocket/ReadMe.txt"), "Office Co: Fly high\r\n");
}

TEST_F(CreateCommandTest, AConfigThatCannotBeUsedGetsOneMessage) {
  const struct {
    const char* name;
    std::string err;
  } cases[] = {
      {"Missing", "tsaw: There is no configuration \"Missing\": \"" + Root() +
                      "/TSA/Wizard/TSaW.Missing.ini\" does not exist.\n"},
      {"../Office", "tsaw: --config takes the name of a configuration, not a path: \"../Office\" holds a "
                    "separator.\n"},
  };
  for (const auto& c : cases) {
    const ProgramRun refused = Create({"--config", c.name});
    EXPECT_EQ(refused.exit_status, 1) << c.name;
    EXPECT_EQ(refused.err, c.err) << c.name;
    EXPECT_EQ(refused.out, "") << c.name;
  }
}

TEST_F(CreateCommandTest, DryRunListsWhatWouldBeWrittenAndTouchesNothing) {
  dir_.Write("out/Rocket/keep.txt", "mine");
  dir_.Write("TSA/Wizard/Report.txt", "the last real run");
  const ProgramRun run = Create({"--dry-run"});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  const std::string set = (Out() / "Rocket").string();
  EXPECT_EQ(run.out, "Project Set folder (not written): " + set + "\n" + TinyStatistics() +
                         "Would move to the trash: " + set + "\nWould write: " + set +
                         "/Delphi 7/Win32/Host/AcmeHost.dpr\n");
  EXPECT_EQ(dir_.Read("out/Rocket/keep.txt"), "mine");
  EXPECT_FALSE(fs::exists(dir_.path() / "out/Rocket/Delphi 7"));
  EXPECT_FALSE(fs::exists(dir_.path() / "data/Trash"));
  EXPECT_EQ(dir_.Read("TSA/Wizard/Report.txt"), "the last real run");
}

TEST_F(CreateCommandTest, DryRunChecksThatTheBaseFolderCanBeMade) {
  const fs::path file = dir_.Write("plain.txt", "x");
  const ProgramRun run = Create({"--dry-run", "-o", (file / "out").string()});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(run.err, "tsaw: create: stopped: The Base Folder '" + (file / "out").string() + "' cannot be made: '" +
                         file.string() + "' is not a folder.\n");
}

TEST_F(CreateCommandTest, RefusesAnswersThatFailThePagesRules) {
  const ProgramRun run = Create({"--set", "Projects.Prefix=1 bad prefix"});
  EXPECT_EQ(run.exit_status, 1);
  const std::string tail = "tsaw: create: the answers do not pass the pages' rules; nothing was written\n";
  ASSERT_GE(run.err.size(), tail.size()) << run.err;
  EXPECT_EQ(run.err.substr(run.err.size() - tail.size()), tail);
  EXPECT_FALSE(fs::exists(Out()));
}

// A refused run says only why: no statistics, no Project Set folder it never wrote.
TEST_F(CreateCommandTest, NeverClearsTheBaseFolderAndPrintsOnlyTheRefusal) {
  dir_.Write("out/keep.txt", "mine");
  for (const char* product : {"Product.Name=..", "Product.Name=/", "Product.Name=."}) {
    const ProgramRun run = Create({"--set", product});
    EXPECT_EQ(run.exit_status, 1) << product;
    EXPECT_EQ(run.out, "") << product;
    EXPECT_EQ(run.err.rfind("tsaw: create: stopped: The Project Set folder '", 0), 0u) << product << run.err;
    EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << product << run.err;
    EXPECT_EQ(dir_.Read("out/keep.txt"), "mine") << product;
    EXPECT_FALSE(fs::exists(dir_.path() / "data/Trash/files")) << product;
  }
}

TEST_F(CreateCommandTest, NeedsAJobOrATemplate) {
  const ProgramRun run = RunProgram(TSAW_EXE, {"--root", Root(), "create"});
  EXPECT_EQ(run.exit_status, 2);
  EXPECT_EQ(run.err, "tsaw: create: give --job FILE or --template PATH\n");
}

TEST_F(CreateCommandTest, JsonTellsTheOutcomeFolderAndStatistics) {
  dir_.Write("out/Rocket/old.txt", "old");
  const ProgramRun run = Create({"--json"});
  ASSERT_EQ(run.exit_status, 0) << run.err;
  const std::string set = (Out() / "Rocket").string();
  EXPECT_EQ(nlohmann::json::parse(run.out),
            nlohmann::json::parse(R"({"outcome": "finished", "message": null, "dry_run": false,
              "project_set_folder": ")" + set + R"(", "report_file": ")" + ReportFile() + R"(",
              "statistics": {"folders": {"scanned": 4, "skipped": 25, "processed": 4, "failed": 0},
                             "files": {"scanned": 2, "skipped": 1, "processed": 1, "failed": 0}},
              "moved_to_trash": [")" + set + R"("], "job_file": null})"));

  const nlohmann::json dry = nlohmann::json::parse(Create({"--json", "--dry-run"}).out);
  EXPECT_EQ(dry["planned_files"], nlohmann::json::array({set + "/Delphi 7/Win32/Host/AcmeHost.dpr"}));
  EXPECT_EQ(dry["report_file"], nullptr);

  const ProgramRun refused = Create({"--json", "--set", "Product.Name=.."});
  EXPECT_EQ(refused.exit_status, 1);
  const nlohmann::json doc = nlohmann::json::parse(refused.out);
  EXPECT_EQ(doc["outcome"], "refused");
  EXPECT_EQ(doc["statistics"], nullptr);
  EXPECT_EQ("tsaw: create: stopped: " + doc["message"].get<std::string>() + "\n", refused.err);
}

}  // namespace
}  // namespace tsaw::app
