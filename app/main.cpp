// tsaw: the Tessera Wizard's command line and window host.

#include <CLI/CLI.hpp>

#include <iostream>
#include <string_view>

#include "app/command.h"
#include "platform/debug_log.h"

int main(int argc, char** argv) {
  using namespace tsaw::app;
  CLI::App cli{"tsaw - the Tessera Wizard: makes Project Sets from templates", "tsaw"};
  cli.set_version_flag("--version", std::string("tsaw ") + TSAW_VERSION);
  cli.require_subcommand(0, 1);
  cli.fallthrough();  // --root and --debug may follow the command too

  GlobalOptions global;
  cli.add_option("--root", global.root, "Framework root folder (default: $TESSERA_ROOT, else "
                                         "$XDG_DATA_HOME/tessera)");
  cli.add_flag("--debug", global.debug, "Write the debug log (also TSAW_DEBUG=1)");

  std::function<int()> run;
  std::function<int()> default_run;
  for (const Command& command : Commands()) {
    CLI::App* sub = cli.add_subcommand(command.name, command.help);
    auto runner = command.setup(*sub, global);
    if (std::string_view(command.name) == kDefaultCommand) default_run = runner;
    sub->callback([&run, runner] { run = runner; });
  }

  try {
    cli.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const int status = cli.exit(error);
    return status == 0 ? kExitOk : kExitUsage;
  }
  tsaw::platform::InitDebugLogFromEnvironment(global.debug);
  if (!run) run = default_run;
  return run ? run() : kExitUsage;
}
