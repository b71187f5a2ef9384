#include "agent/Signals.h"

#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace tallyvane::agent {

Signals::Signals() {
  sigset_t taken;
  ::sigemptyset(&taken);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGCHLD}) ::sigaddset(&taken, signal);
  ::sigprocmask(SIG_BLOCK, &taken, nullptr);
  file_ = FileDescriptor(::signalfd(-1, &taken, SFD_NONBLOCK | SFD_CLOEXEC));
  if (!file_) throw std::system_error(errno, std::generic_category(), "signals cannot be received");
}

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
