#pragma once

#include <csignal>
#include <initializer_list>

#include "freedesktop/FileDescriptor.h"

namespace tallyvane {

/// From now on these signals no longer interrupt the program: each makes the descriptor readable, from which signalfd's
/// records are read without blocking. One that the program was started to ignore is still ignored. Called before other
/// threads are started. Throws std::system_error when the system has no descriptor to give.
[[nodiscard]] FileDescriptor holdSignals(std::initializer_list<int> signals);

}  // namespace tallyvane
