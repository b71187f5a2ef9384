#pragma once

#include <signal.h>

#include <initializer_list>

#include "freedesktop/FileDescriptor.h"

namespace tallyvane {

/// From now on these signals no longer interrupt the program: each makes the descriptor readable, from which signalfd's
/// records are read without blocking. One that the program was started to ignore is still ignored. Called before other
/// threads are started. Throws std::system_error when the system has no descriptor to give.
[[nodiscard]] FileDescriptor holdSignals(std::initializer_list<int> signals);

/// While it lives, SIGINT, SIGTERM and SIGHUP wait: what has come by then takes effect with its end. For a thread that
/// does something which must not stop half-way.
class DeferredSignals {
 public:
  DeferredSignals();
  ~DeferredSignals();
  DeferredSignals(const DeferredSignals&) = delete;
  DeferredSignals& operator=(const DeferredSignals&) = delete;

 private:
  sigset_t before_{};
};

}  // namespace tallyvane
