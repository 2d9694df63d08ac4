#pragma once
// The command line is a table of commands: each has a name, a help line and a handler that
// adds its options to the parser and runs when chosen.

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

namespace tsaw::app {

// Options every command sees.
struct GlobalOptions {
  std::string root;  // --root: the framework root folder; empty means the environment decides
  bool debug = false;
};

// Exit statuses of every command.
inline constexpr int kExitOk = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

struct Command {
  const char* name;
  const char* help;
  // Adds the command's options to `sub` and returns the function that runs it.
  std::function<std::function<int()>(CLI::App& sub, const GlobalOptions& global)> setup;
};

// Every command, in the order --help lists them.
const std::vector<Command>& Commands();

// The commands, each defined in its own cmd_<name>.cpp.
Command MakePreprocessCommand();
Command MakeTemplatesCommand();
Command MakeValidateCommand();
Command MakeCreateCommand();
Command MakeUpdateCommand();
Command MakeLintCommand();
Command MakeExplainCommand();
Command MakeGuiCommand();

// The command that runs when none is named.
inline constexpr const char* kDefaultCommand = "gui";

}  // namespace tsaw::app
