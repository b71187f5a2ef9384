#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace sdbus {
class IConnection;
}

namespace tallyvane::agent {

/// Waits on one thread for the session bus and for descriptors, and sleeps in between. The connection outlives it.
class EventLoop {
 public:
  /// `endOfTurn` runs before each sleep, after the bus's messages have been handled.
  EventLoop(sdbus::IConnection& connection, std::function<void()> endOfTurn)
      : connection_(connection), endOfTurn_(std::move(endOfTurn)) {}

  /// Calls back whenever the descriptor, not owned, is readable.
  void add(int descriptor, std::function<void()> readable) { watched_.push_back({descriptor, std::move(readable)}); }

  /// Returns after `end`, also when that was called before. Throws sdbus::Error when the bus is gone.
  void run();
  void end() { ended_ = true; }

 private:
  struct Watched {
    int descriptor;
    std::function<void()> readable;
  };
  void wait();

  sdbus::IConnection& connection_;
  std::function<void()> endOfTurn_;
  std::vector<Watched> watched_;
  bool ended_ = false;
};

}  // namespace tallyvane::agent
