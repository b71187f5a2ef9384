#pragma once

#include <string>
#include <vector>

#include "foundation/Result.h"

namespace tallyvane {

/// Starts a program in a session of its own, with nothing open but the null device and its signals as they were at
/// first; it inherits the environment and outlives the caller. No shell reads the command. `command` is an absolute
/// path and its arguments. The error says why the program could not be started; how it ends is not seen.
[[nodiscard]] Result<> spawnDetached(std::vector<std::string> command);

/// Runs a program on the caller's own terminal or streams and waits for its end. `variables` is its whole environment.
/// Its exit status; for one that a signal ended, 128 and the signal's number.
[[nodiscard]] Result<int> runAttached(std::vector<std::string> command, std::vector<std::string> variables);

}  // namespace tallyvane
