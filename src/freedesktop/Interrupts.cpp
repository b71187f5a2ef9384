#include "freedesktop/Interrupts.h"

#include <csignal>

namespace tallyvane {

namespace {

volatile std::sig_atomic_t signalThatCame = 0;

void note(int signal) { signalThatCame = signal; }

}  // namespace

Interrupts::Interrupts() {
  struct sigaction noting {};
  noting.sa_handler = note;  // without SA_RESTART: what waits ends
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before {};
    ::sigaction(signal, nullptr, &before);
    if (before.sa_handler == SIG_IGN) continue;
    ::sigaction(signal, &noting, nullptr);
    before_.emplace_back(signal, before);
  }
}

Interrupts::~Interrupts() {
  for (const auto& [signal, before] : before_) ::sigaction(signal, &before, nullptr);
  if (signalThatCame != 0) (void)std::raise(signalThatCame);
}

bool Interrupts::came() { return signalThatCame != 0; }

}  // namespace tallyvane
