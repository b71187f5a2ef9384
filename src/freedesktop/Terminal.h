#pragma once

#include <string>
#include <vector>

#include "foundation/Result.h"
#include "freedesktop/SessionEnvironment.h"

namespace tallyvane {

/// The command that runs `command` in a new window of the user's terminal: the one that TERMINAL names, then the
/// desktop's own choice, then the common ones, the first that is installed. An error when none is.
[[nodiscard]] Result<std::vector<std::string>> inTerminal(const SessionEnvironment& environment,
                                                          std::vector<std::string> command);

}  // namespace tallyvane
