#include "freedesktop/HeldSignals.h"

#include <signal.h>
#include <sys/signalfd.h>

namespace tallyvane {

namespace {

bool isIgnored(int signal) {
  struct sigaction action {};
  return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

FileDescriptor holdSignals(std::initializer_list<int> signals) {
  sigset_t held;
  ::sigemptyset(&held);
  for (const int signal : signals) {
    if (!isIgnored(signal)) ::sigaddset(&held, signal);
  }
  FileDescriptor file(::signalfd(-1, &held, SFD_NONBLOCK | SFD_CLOEXEC));
  if (!file) throw std::system_error(errno, std::generic_category(), "signals cannot be received");
  ::pthread_sigmask(SIG_BLOCK, &held, nullptr);
  return file;
}

}  // namespace tallyvane
