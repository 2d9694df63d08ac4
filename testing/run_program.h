#pragma once
// Test helper: runs a built program as a user would, with its standard input given as bytes, and
// hands back its exit status and everything it wrote. Header-only so that any test program can use
// it without linking anything more.

#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "testing/temp_dir.h"

namespace tsaw::testing {

struct ProgramRun {
  int exit_status = -1;  // -1 when the program did not exit normally
  std::string out;       // standard output, bytes as written
  std::string err;       // standard error
};

// `word` quoted for the shell: single quotes, with each ' written as '\''.
inline std::string ShellQuoted(std::string_view word) {
  std::string quoted = "'";
  for (char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

// Runs `program` with `args` in the shell, feeding `input` on standard input.
inline ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& args,
                             std::string_view input = {}) {
  TempDir dir;
  const auto in = dir.Write("in", input);
  std::string command = ShellQuoted(program);
  for (const std::string& arg : args) command += " " + ShellQuoted(arg);
  command += " <" + ShellQuoted(in.string()) + " >" + ShellQuoted((dir.path() / "out").string()) +
             " 2>" + ShellQuoted((dir.path() / "err").string());
  const int status = std::system(command.c_str());
  ProgramRun run;
  if (status != -1 && WIFEXITED(status)) run.exit_status = WEXITSTATUS(status);
  run.out = dir.Read("out");
  run.err = dir.Read("err");
  return run;
}

}  // namespace tsaw::testing
