#pragma once

#include <string>
#include <vector>

#include "foundation/Result.h"

namespace tallyvane {

/// Starts a program in a session of its own, with nothing open but the null device and its signals as they were at
/// first; it inherits the environment and outlives the caller. No shell reads the command. `command` is an absolute
/// path and its arguments. The error says why the program could not be started; how it ends is not seen.
[[nodiscard]] Result<> spawnDetached(std::vector<std::string> command);

}  // namespace tallyvane
