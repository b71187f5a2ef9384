#pragma once

#include <signal.h>

#include <vector>

namespace tallyvane {

/// While it lives, SIGINT, SIGTERM and SIGHUP end what waits for the user or for another program, and are noted,
/// instead of ending this one; those that came take effect with its end. One at a time, in the main thread. Programs
/// that are started meanwhile do not share it.
class Interrupts {
 public:
  Interrupts();
  ~Interrupts();
  Interrupts(const Interrupts&) = delete;
  Interrupts& operator=(const Interrupts&) = delete;

  [[nodiscard]] static bool came();

 private:
  std::vector<std::pair<int, struct sigaction>> before_;
};

}  // namespace tallyvane
