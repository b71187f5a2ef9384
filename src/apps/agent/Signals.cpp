#include "agent/Signals.h"

#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "freedesktop/HeldSignals.h"

namespace tallyvane::agent {

Signals::Signals() : file_(holdSignals({SIGTERM, SIGINT, SIGHUP, SIGCHLD})) {}

bool Signals::askToEnd() {
  bool end = false;
  signalfd_siginfo taken{};
  while (::read(file_.number(), &taken, sizeof taken) == static_cast<ssize_t>(sizeof taken)) {
    if (taken.ssi_signo != static_cast<std::uint32_t>(SIGCHLD)) end = true;
  }
  while (::waitpid(-1, nullptr, WNOHANG) > 0) {
  }
  return end;
}

}  // namespace tallyvane::agent
