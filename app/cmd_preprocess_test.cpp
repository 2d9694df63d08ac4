// Runs the built tsaw executable, whose path CMake hands in as TSAW_EXE.

#include <gtest/gtest.h>

#include "testing/run_program.h"
#include "testing/temp_dir.h"

namespace tsaw::app {
namespace {

using tsaw::testing::ProgramRun;
using tsaw::testing::RunProgram;

struct CommandCase {
  const char* name;
  std::vector<std::string> args;
  std::string input;  // standard input
  ProgramRun expected;
};

TEST(PreprocessCommandTest, PrintsTheProcessedTextOrOneErrorLine) {
  const std::string unit =
      "unit Main;\n{$IFDEF ddUseTLG}\nuses Logger;\n{$ELSE}\nuses Dummy;\n{$ENDIF}\n{$R *.res}\n"
      "x := 1;{$IFNDEF ddLogComments} // no comments{$ENDIF}\nend.";
  const CommandCase cases[] = {
      {"constants in the order given, first name wins",
       {"preprocess", "-D", "ddUseTLG=1", "-DddLogComments=0", "-D", "DDUSETLG=0", "-"},
       unit,
       {0, "unit Main;\r\nuses Logger;\r\n{$R *.res}\r\nx := 1; // no comments\r\nend.\r\n", ""}},
      {"standard input without a file argument",
       {"preprocess", "-D", "ddUseTLG=0"},
       unit,
       {0, "unit Main;\r\nuses Dummy;\r\n{$R *.res}\r\nx := 1;\r\nend.\r\n", ""}},
      {"bytes pass through untouched",
       {"preprocess"},
       "a \xC2\xB6 b\r\xB6\xFF\r\n",
       {0, "a \xC2\xB6 b\r\n\xB6\xFF\r\n", ""}},
      {"empty input",
       {"preprocess"},
       "",
       {1, "", "tsaw: preprocess: standard input: Property \"Input\" cannot be empty.\n"}},
      {"ELSE with no open block",
       {"preprocess", "-"},
       "a\n\n{$Else}",
       {1, "",
        "tsaw: preprocess: standard input: line 3: \"{$Else}\" has no open {$IFDEF} or "
        "{$IFNDEF} block\n"}},
  };
  for (const CommandCase& c : cases) {
    const ProgramRun run = RunProgram(TSAW_EXE, c.args, c.input);
    EXPECT_EQ(run.exit_status, c.expected.exit_status) << c.name;
    EXPECT_EQ(run.out, c.expected.out) << c.name;
    EXPECT_EQ(run.err, c.expected.err) << c.name;
  }
}

TEST(PreprocessCommandTest, ReadsTheFileItIsGiven) {
  tsaw::testing::TempDir dir;
  const std::string file = dir.Write("Main.pas", "{$IFDEF ddTrue}kept{$ENDIF}\n").string();
  const ProgramRun run = RunProgram(TSAW_EXE, {"preprocess", file});
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.out, "kept\r\n");

  const std::string missing = (dir.path() / "Missing.pas").string();
  const ProgramRun failed = RunProgram(TSAW_EXE, {"preprocess", missing});
  EXPECT_EQ(failed.exit_status, 1);
  EXPECT_EQ(failed.err,
            "tsaw: preprocess: " + missing + ": cannot open: No such file or directory\n");
}

TEST(PreprocessCommandTest, DefineWithoutEqualsIsAUsageError) {
  const ProgramRun run = RunProgram(TSAW_EXE, {"preprocess", "-D", "ddUseTLG", "-"}, "x");
  EXPECT_EQ(run.exit_status, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_NE(run.err.find("expected NAME=VALUE, got \"ddUseTLG\""), std::string::npos) << run.err;
}

TEST(PreprocessCommandTest, HelpAndVersionSucceed) {
  for (const std::vector<std::string>& args :
       {std::vector<std::string>{"--help"}, {"--version"}, {"preprocess", "--help"}}) {
    const ProgramRun run = RunProgram(TSAW_EXE, args);
    EXPECT_EQ(run.exit_status, 0) << args.back();
    EXPECT_EQ(run.err, "") << args.back();
  }
}

}  // namespace
}  // namespace tsaw::app
