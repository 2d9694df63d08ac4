// Runs `tsaw templates` and `tsaw validate` as a user would (TSAW_EXE is the built executable).

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "testing/run_program.h"
#include "testing/temp_dir.h"

namespace tsaw::app {
namespace {

using tsaw::testing::ProgramRun;
using tsaw::testing::RunProgram;

constexpr const char* kGood =
    "[Template]\r\nName=n\r\nPrefix=T001\r\nAuthor=a\r\nPurpose=p\r\nDesc=d\r\n";

TEST(TemplatesCommandTest, PrintsSummaryAndMarkedTree) {
  tsaw::testing::TempDir dir;
  dir.Write("TSA/Wizard/Templates/Forms/MDI/Template.ini", kGood);
  dir.Write("TSA/Wizard/Templates/Forms/SDI/Template.ini", "[Template]\r\nName=n\r\n");
  dir.Write("TSA/Wizard/Templates/Forms/Deep/Child/Template.ini", kGood);
  dir.MakeDir("TSA/Wizard/Templates/Empty");
  const ProgramRun run = RunProgram(TSAW_EXE, {"--root", dir.path().string(), "templates"});
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.out,
            "3 Templates (2 good and 1 bad) in 3 Folders:\n"
            "Empty\n"
            "Forms (3)\n"
            "  Deep (1)\n"
            "    Child  [good]  Forms/Deep/Child\n"
            "  MDI  [good]  Forms/MDI\n"
            "  SDI  [bad: errFieldMissingFromTemplateSection]  Forms/SDI: Template \"Prefix\" key is missing from "
            "INI \"Template\" section.\n");
  EXPECT_EQ(run.err, "");
  // The global options may also follow the command.
  EXPECT_EQ(RunProgram(TSAW_EXE, {"templates", "--root", dir.path().string()}).out, run.out);

  const ProgramRun missing = RunProgram(TSAW_EXE, {"--root", (dir.path() / "none").string(), "templates"});
  EXPECT_EQ(missing.exit_status, 1);
  EXPECT_EQ(missing.out, "");
  // The session's own warning about the wizard folder comes first; ours is the last line.
  const std::string last = "tsaw: templates: " + (dir.path() / "none").string() +
                           "/TSA/Wizard/Templates/: no such folder\n";
  ASSERT_GE(missing.err.size(), last.size());
  EXPECT_EQ(missing.err.substr(missing.err.size() - last.size()), last);
}

TEST(TemplatesCommandTest, JsonListsEveryTemplateWithItsPathAndReason) {
  tsaw::testing::TempDir dir;
  dir.Write("TSA/Wizard/Templates/Forms/MDI Child/Template.ini", std::string(kGood) + "PluginCount=2\r\n");
  dir.Write("TSA/Wizard/Templates/Forms/SDI/Template.ini", "[Template]\r\nName=n\r\n");
  const ProgramRun run = RunProgram(TSAW_EXE, {"--root", dir.path().string(), "templates", "--json"});
  ASSERT_EQ(run.exit_status, 0) << run.err;
  const std::string folder = dir.path().string() + "/TSA/Wizard/Templates/";
  const nlohmann::json doc = nlohmann::json::parse(run.out);
  EXPECT_EQ(doc["templates_folder"], folder);
  EXPECT_EQ(doc["summary"], "2 Templates (1 good and 1 bad) in 1 Folder:");
  EXPECT_EQ(doc["counts"], nlohmann::json::parse(R"({"folders": 1, "templates": 2, "good": 1, "bad": 1})"));
  EXPECT_EQ(doc["templates"][0], nlohmann::json::parse(R"(
        {"path": "Forms/MDI Child", "valid": true, "error_kind": null, "reason": null, "message": null,
         "prefix": "T001", "author": "a", "purpose": "p", "description": "d", "plugin_count": 2})"));
  const nlohmann::json& bad = doc["templates"][1];
  EXPECT_EQ(bad["path"], "Forms/SDI");
  EXPECT_EQ(bad["valid"], false);
  EXPECT_EQ(bad["error_kind"], "errFieldMissingFromTemplateSection");
  EXPECT_EQ(bad["reason"], "Template \"Prefix\" key is missing from INI \"Template\" section.");
  EXPECT_EQ(bad["message"].get<std::string>().rfind("Template \"Prefix\" key is missing from INI \"Template\" section.\r\n\r\n", 0),
            0u);
}

TEST(ValidateCommandTest, PrintsTheResultOrWhatIsWrong) {
  tsaw::testing::TempDir dir;
  const std::string good = dir.Write("Good/Template.ini", kGood).parent_path().string();
  const std::string bad =
      dir.Write("Bad/Template.ini", std::string(kGood) + "PluginCount=abc\r\n").parent_path().string();
  const std::string file = dir.Write("file.txt", "x").string();
  const std::string empty = dir.MakeDir("Empty").string();
  const std::string unreadable = dir.MakeDir("Unreadable/Template.ini").parent_path().string();
  struct Case {
    const char* name;
    std::string folder;
    ProgramRun expected;
  };
  const Case cases[] = {
      {"good", good + "/", {0, "Template is ok\n", ""}},
      {"bad",
       bad,
       {1,
        "Error\nerrInvalidPluginCount\nInvalid Value \"abc\" for key \"PluginCount\" in INI file.\r\n"
        "This field requires a number from \"1\" to \"999\".\r\n\r\nValid Example:\r\n  [Template]\r\n"
        "  PluginCount=\"1\"\r\n\r\nINI File:\r\n  " + bad + "/Template.ini\n",
        ""}},
      {"no Template.ini",
       empty,
       {1,
        "Error\nerrFieldMissingFromTemplateSection\nTemplate \"Name\" key is missing from INI "
        "\"Template\" section.\r\n\r\nValid Example:\r\n  [Template]\r\n  Name=MDI Child form "
        "plugin\r\n\r\nINI File:\r\n  " + empty + "/Template.ini\n",
        "tsaw: validate: " + empty + ": holds no Template.ini, so it is no template\n"}},
      {"unreadable Template.ini", unreadable,
       {1, "", "tsaw: validate: Cannot read \"" + unreadable + "/Template.ini\": it is a folder\n"}},
      {"a file", file, {1, "", "tsaw: validate: " + file + ": not a folder; give the template's folder\n"}},
      {"missing", good + "x", {1, "", "tsaw: validate: " + good + "x: no such folder\n"}},
  };
  for (const Case& c : cases) {
    const ProgramRun run = RunProgram(TSAW_EXE, {"validate", c.folder});
    EXPECT_EQ(run.exit_status, c.expected.exit_status) << c.name;
    EXPECT_EQ(run.out, c.expected.out) << c.name;
    EXPECT_EQ(run.err, c.expected.err) << c.name;
  }
  EXPECT_EQ(RunProgram(TSAW_EXE, {"validate"}).exit_status, 2);
}

TEST(ValidateCommandTest, JsonGivesTheRecordOrWhyThereIsNone) {
  tsaw::testing::TempDir dir;
  const std::string bad = dir.Write("Bad/Template.ini", "[Template]\r\nName=n\r\nPluginCount=0\r\n").parent_path().string();
  const ProgramRun run = RunProgram(TSAW_EXE, {"validate", "--json", bad});
  EXPECT_EQ(run.exit_status, 1);
  const nlohmann::json doc = nlohmann::json::parse(run.out);
  EXPECT_EQ(doc["folder"], bad);
  EXPECT_EQ(doc["valid"], false);
  EXPECT_EQ(doc["error_kind"], "errInvalidPluginCount");
  EXPECT_EQ(doc["reason"], "Template \"Prefix\" key is missing from INI \"Template\" section.");

  const ProgramRun good = RunProgram(TSAW_EXE, {"validate", "--json", dir.Write("Good/Template.ini", kGood).parent_path().string()});
  EXPECT_EQ(good.exit_status, 0);
  EXPECT_EQ(nlohmann::json::parse(good.out)["valid"], true);

  const ProgramRun missing = RunProgram(TSAW_EXE, {"validate", "--json", bad + "x"});
  EXPECT_EQ(missing.exit_status, 1);
  EXPECT_EQ(nlohmann::json::parse(missing.out)["reason"], bad + "x: no such folder");
}

}  // namespace
}  // namespace tsaw::app
