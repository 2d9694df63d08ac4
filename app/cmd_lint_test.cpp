// Runs `tsaw lint` and `tsaw templates --lint` as a template author would.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <string>
#include <utility>
#include <vector>

#include "testing/run_program.h"
#include "testing/temp_dir.h"
#include "testing/template_targets.h"

namespace tsaw::app {
namespace {

using tsaw::testing::ProgramRun;
using tsaw::testing::RunProgram;

// A template whose only target is Delphi 7 for Win32, with `source` as its one project file.
void WriteTemplate(const tsaw::testing::TempDir& root, const std::string& name, const std::string& source) {
  const std::string folder = "TSA/Wizard/Templates/Authors/" + name + "/";
  const std::string defaults = "[Default Values]\r\n" + tsaw::testing::OtherTargetsNotAllowed({"Delphi.7.Win32"});
  root.Write(folder + "Template.ini",
             "[Template]\r\nName=" + name + "\r\nPrefix=T301\r\nAuthor=a\r\nPurpose=p\r\nDesc=d\r\n" + defaults);
  root.Write(folder + "Delphi 7/Win32/T301_Host.dpr", source);
}

class LintCommandTest : public ::testing::Test {
 protected:
  LintCommandTest() {
    root.Write("TSA/Wizard/TSaW.ini", "[TSaW]\r\nConfig=Default\r\n");
    root.Write("TSA/Wizard/TSaW.Default.ini", "[Custom Variables]\r\nSite=https://x\r\n");
    WriteTemplate(root, "Clean", "program #Product.Name#; // #Custom.Site#\r\n{$IFDEF ddUseTLG}{$ENDIF}\r\n");
    WriteTemplate(root, "Typo", "program P;\r\n{$IFDEF ddUseTGL}{$ENDIF}\r\n");
    WriteTemplate(root, "Broken", "program P;\r\n{$IFDEF ddUseTLG}\r\n{$ELSE}\r\n{$ELSE}\r\n");
  }
  std::string Folder(const std::string& name) const {
    return (root.path() / "TSA/Wizard/Templates/Authors" / name).string();
  }
  ProgramRun Lint(const std::string& name) const {
    return RunProgram(TSAW_EXE, {"--root", root.path().string(), "lint", Folder(name) + "/"});
  }
  tsaw::testing::TempDir root;
};

TEST_F(LintCommandTest, ACleanTemplateGivesNoOutput) {
  const ProgramRun run = Lint("Clean");
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "");
}

TEST_F(LintCommandTest, WarningsAloneDoNotFail) {
  const ProgramRun run = Lint("Typo");
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.out, Folder("Typo") + "/Delphi 7/Win32/T301_Host.dpr:2: warning: \"ddUseTGL\" is defined by no run: "
                                      "the condition is always false\n");
  EXPECT_EQ(run.err, "tsaw: lint: 0 errors, 1 warning\n");
}

TEST_F(LintCommandTest, ErrorsFailWithOneLineEach) {
  const ProgramRun run = Lint("Broken");
  EXPECT_EQ(run.exit_status, 1);
  const std::string file = Folder("Broken") + "/Delphi 7/Win32/T301_Host.dpr";
  EXPECT_EQ(run.out, file + ":2: error: {$IFDEF ddUseTLG} is never closed by {$ENDIF}: the directive is dropped "
                            "and the rest of the file kept whole\n" +
                         file + ":4: error: a second {$ELSE} in the block opened on line 2\n");
  EXPECT_EQ(run.err, "tsaw: lint: 2 errors, 0 warnings\n");

  const ProgramRun missing = Lint("None");
  EXPECT_EQ(missing.exit_status, 1);
  EXPECT_EQ(missing.err, "tsaw: lint: " + Folder("None") + ": no such folder\n");
}

TEST_F(LintCommandTest, JsonHoldsTheSameFindings) {
  const std::string folder = Folder("Broken");
  const ProgramRun run = RunProgram(TSAW_EXE, {"--root", root.path().string(), "lint", folder, "--json"});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(run.err, "");
  const nlohmann::json expected = {
      {"folder", folder},
      {"findings",
       {{{"file", "Delphi 7/Win32/T301_Host.dpr"},
         {"line", 2},
         {"severity", "error"},
         {"message", "{$IFDEF ddUseTLG} is never closed by {$ENDIF}: the directive is dropped and the rest of the "
                     "file kept whole"}},
        {{"file", "Delphi 7/Win32/T301_Host.dpr"},
         {"line", 4},
         {"severity", "error"},
         {"message", "a second {$ELSE} in the block opened on line 2"}}}},
      {"errors", 2},
      {"warnings", 0}};
  EXPECT_EQ(nlohmann::json::parse(run.out), expected);
}

TEST_F(LintCommandTest, TemplatesMarksTheTemplatesWithFindings) {
  const ProgramRun run = RunProgram(TSAW_EXE, {"--root", root.path().string(), "templates", "--lint"});
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.out,
            "3 Templates in 1 Folder:\n"
            "Authors (3)\n"
            "  Broken  [good]  Authors/Broken  [lint: 2 errors, 0 warnings]\n"
            "  Clean  [good]  Authors/Clean\n"
            "  Typo  [good]  Authors/Typo  [lint: 0 errors, 1 warning]\n");
  EXPECT_EQ(run.err, "");
}

TEST_F(LintCommandTest, TemplatesJsonCarriesTheLintCounts) {
  const ProgramRun run = RunProgram(TSAW_EXE, {"--root", root.path().string(), "templates", "--lint", "--json"});
  EXPECT_EQ(run.exit_status, 0);
  const nlohmann::json doc = nlohmann::json::parse(run.out);
  std::vector<std::pair<std::string, std::string>> counts;
  for (const auto& record : doc["templates"]) {
    counts.emplace_back(record["path"], record["lint"]);
  }
  EXPECT_EQ(counts, (std::vector<std::pair<std::string, std::string>>{
                        {"Authors/Broken", "2 errors, 0 warnings"}, {"Authors/Clean", ""},
                        {"Authors/Typo", "0 errors, 1 warning"}}));
}

}  // namespace
}  // namespace tsaw::app
