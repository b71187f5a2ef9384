#include "cli/commands/Commands.h"

#include "common/Sentences.h"

namespace tallyvane::cli {

CLI::App* addCommand(CLI::App& parent, Invocation& invocation, const CommandTexts& texts,
                     std::function<void(Session&)> action) {
  CLI::App* command = parent.add_subcommand(texts.name, texts.description);
  command->add_flag("--json", invocation.json, "Print JSON");
  command->footer(translated("Example:") + "\n  " + texts.example);
  command->callback([&invocation, action = std::move(action)] { invocation.action = action; });
  return command;
}

}  // namespace tallyvane::cli
