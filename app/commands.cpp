#include "app/command.h"

namespace tsaw::app {

// Each command lives in its own file; this is the table that lists them.
const std::vector<Command>& Commands() {
  static const std::vector<Command> commands = {
      MakePreprocessCommand(),
      MakeTemplatesCommand(),
      MakeValidateCommand(),
      MakeLintCommand(),
      MakeExplainCommand(),
      MakeCreateCommand(),
      MakeUpdateCommand(),
      MakeGuiCommand(),
  };
  return commands;
}

}  // namespace tsaw::app
