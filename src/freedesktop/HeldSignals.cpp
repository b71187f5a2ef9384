#include "freedesktop/HeldSignals.h"

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

DeferredSignals::DeferredSignals() {
  sigset_t deferred;
  ::sigemptyset(&deferred);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) ::sigaddset(&deferred, signal);
  ::pthread_sigmask(SIG_BLOCK, &deferred, &before_);
}

DeferredSignals::~DeferredSignals() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

}  // namespace tallyvane
