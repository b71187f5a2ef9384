// From arguments to a command, and from a command to an exit status.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "cli/Failure.h"
#include "cli/Session.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/Console.h"

namespace tallyvane::cli {

/// What the arguments (without the program's name) ask for. When there is nothing to run, because they asked for help
/// or the version or were wrong, that has been printed, and the status is given back.
[[nodiscard]] std::variant<Invocation, ExitStatus> parseCommandLine(const std::vector<std::string>& arguments,
                                                                    Console& console);

/// Runs the command. What kept it from its work is said in one sentence on standard error.
[[nodiscard]] ExitStatus runCommand(const Invocation& invocation, Session& session);

}  // namespace tallyvane::cli
