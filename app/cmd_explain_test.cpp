// Runs `tsaw explain` as a user would, on a root whose answers come from every source.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

#include "testing/run_program.h"
#include "testing/temp_dir.h"
#include "testing/template_targets.h"

namespace tsaw::app {
namespace {

using tsaw::testing::ProgramRun;
using tsaw::testing::RunProgram;

class ExplainCommandTest : public ::testing::Test {
 protected:
  ExplainCommandTest() {
    root.Write("TSA/Wizard/TSaW.ini", "[TSaW]\r\nConfig=Default\r\n");
    root.Write("TSA/Wizard/TSaW.Default.ini",
               "[Custom Variables]\r\nSite=https://example.org\r\n[Default Values]\r\nAuthor=Config Author\r\n");
    root.Write("TSA/Wizard/Templates/Apps/Tiny/Template.ini",
               "[Template]\r\nName=Tiny\r\nPrefix=T001\r\nAuthor=a\r\nPurpose=p\r\nDesc=d\r\nPluginCount=2\r\n"
               "[Default Values]\r\nCompany.Name=Acme \xC2\xA6 $ReadOnly\r\nProjects.Prefix=Acme\r\n"
               "Delphi.7.Win32=R\r\n" + tsaw::testing::OtherTargetsNotAllowed({"Delphi.7.Win32"}));
    job = root.Write("TSA/Wizard/Jobs/Job.001.ini",
                     "[Job]\r\nTemplate=Apps/Tiny\r\n[Default Values]\r\nProduct.Name=From Job\r\n")
              .string();
  }
  ProgramRun Explain(std::vector<std::string> args) const {
    args.insert(args.begin(), {"--root", root.path().string(), "explain"});
    return RunProgram(TSAW_EXE, args);
  }
  // The two lines that show the answer `name`.
  static std::string AnswerOf(const std::string& out, const std::string& name) {
    const size_t start = out.find("\n" + name + " = ");
    if (start == std::string::npos) return "(no answer " + name + ")";
    size_t end = out.find('\n', start + 1);
    end = out.find('\n', end + 1);
    return out.substr(start + 1, end - start);
  }
  tsaw::testing::TempDir root;
  std::string job;
};

TEST_F(ExplainCommandTest, ShowsEachAnswerWithItsSource) {
  const ProgramRun run = Explain({"--template", "Apps/Tiny", "--set", "Product.Name=Rocket #Company.Name#"});
  ASSERT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(AnswerOf(run.out, "Product.Name"),
            "Product.Name = Rocket #Company.Name#  [--set]\n    expanded: Rocket Acme  identifier: Rocket_Acme\n");
  EXPECT_EQ(AnswerOf(run.out, "Company.Name"),
            "Company.Name = Acme  [template, read-only]\n    expanded: Acme  identifier: Acme\n");
  EXPECT_EQ(AnswerOf(run.out, "Author"),
            "Author = Config Author  [configuration]\n    expanded: Config Author  identifier: Config_Author\n");
  EXPECT_EQ(AnswerOf(run.out, "Plugin[2].ProjectName"),
            "Plugin[2].ProjectName = #Projects.Prefix#Pin#Plugin.Index#  [internal]\n"
            "    expanded: AcmePin2  identifier: AcmePin2\n");
  EXPECT_EQ(AnswerOf(run.out, "Custom.Site").substr(0, 51), "Custom.Site = https://example.org  [configuration]\n");
  EXPECT_EQ(AnswerOf(run.out, "Delphi.7.Win32"),
            "Delphi.7.Win32 = required  [template]\n    expanded: required  identifier: \n");

  const ProgramRun from_job = Explain({"--job", job});
  EXPECT_EQ(from_job.exit_status, 0) << from_job.err;
  EXPECT_EQ(AnswerOf(from_job.out, "Product.Name"),
            "Product.Name = From Job  [Job]\n    expanded: From Job  identifier: From_Job\n");
}

TEST_F(ExplainCommandTest, KeysListsWhatSetTakes) {
  const ProgramRun run = Explain({"--template", "Apps/Tiny", "--keys"});
  ASSERT_EQ(run.exit_status, 0) << run.err;
  EXPECT_NE(run.out.find("\nCompany.Name=Acme  (read-only in the window)\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\nPlugin[2].Version=1.0\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\nDelphi.7.Win32=R\nDelphi.8.VclNet=D\n"), std::string::npos) << run.out;
  EXPECT_EQ(run.out.find("Creation.Date"), std::string::npos) << "the fixed values are not keys";
  EXPECT_EQ(run.out.find("Custom.Site"), std::string::npos) << "declared variables are not keys";
}

TEST_F(ExplainCommandTest, JsonHoldsEveryAnswer) {
  const ProgramRun run = Explain({"--template", "Apps/Tiny", "--json"});
  ASSERT_EQ(run.exit_status, 0) << run.err;
  const nlohmann::json document = nlohmann::json::parse(run.out);
  EXPECT_EQ(document["template"], (root.path() / "TSA/Wizard/Templates/Apps/Tiny").string());
  EXPECT_EQ(document["job"], "");
  nlohmann::json company;
  for (const auto& answer : document["answers"]) {
    if (answer["name"] == "Company.Name") company = answer;
  }
  EXPECT_EQ(company, nlohmann::json({{"name", "Company.Name"},
                                     {"value", "Acme"},
                                     {"expanded", "Acme"},
                                     {"identifier", "Acme"},
                                     {"layer", "template"},
                                     {"read_only", true},
                                     {"settable", true}}));
  EXPECT_EQ(document["answers"].back()["name"], "Chrome.NetFcl");
}

TEST_F(ExplainCommandTest, NeedsATemplateOrAJob) {
  const ProgramRun run = Explain({});
  EXPECT_EQ(run.exit_status, 2);
  EXPECT_EQ(run.err, "tsaw: explain: give --job FILE or --template PATH\n");
}

}  // namespace
}  // namespace tsaw::app
