#include "cli/CallbackWait.h"

#include <poll.h>

#include <csignal>

#include "freedesktop/HeldSignals.h"

namespace tallyvane::cli {

CallbackWait::CallbackWait(QueuedMainQueue& queue) {
  queue.wakeWith([posted = posted_] { posted->raise(); });
}

void CallbackWait::holdSignals() { signals_ = tallyvane::holdSignals({SIGINT, SIGTERM, SIGHUP}); }

bool CallbackWait::wait() {
  pollfd polled[] = {{posted_->number(), POLLIN, 0}, {signals_.number(), POLLIN, 0}};
  constexpr int forEver = -1;
  (void)uninterrupted([&] { return ::poll(polled, 2, forEver); });
  posted_->acknowledge();
  return polled[1].revents == 0;
}

}  // namespace tallyvane::cli
