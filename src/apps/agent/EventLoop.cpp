#include "agent/EventLoop.h"

#include <poll.h>
#include <sdbus-c++/sdbus-c++.h>

#include <cerrno>

namespace tallyvane::agent {

void EventLoop::run() {
  while (!ended_) {
    while (connection_.processPendingRequest()) {
    }
    endOfTurn_();
    if (!ended_) wait();
  }
}

void EventLoop::wait() {
  const auto bus = connection_.getEventLoopPollData();
  std::vector<pollfd> polled{{bus.fd, bus.events, 0}};
  for (const Watched& watched : watched_) polled.push_back({watched.descriptor, POLLIN, 0});
  if (::poll(polled.data(), polled.size(), bus.getPollTimeout()) < 0) {
    if (errno != EINTR) throw sdbus::createError(errno, "Waiting failed");
    return;
  }
  for (std::size_t i = 0; i < watched_.size(); ++i) {
    if (polled[i + 1].revents != 0) watched_[i].readable();
  }
}

}  // namespace tallyvane::agent
