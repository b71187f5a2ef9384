#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <utility>

#include "platform/MainQueue.h"

namespace tallyvane {

/// Keeps what is posted until the main thread runs it.
class QueuedMainQueue : public MainQueue {
 public:
  void post(std::function<void()> work) override;
  /// On the main thread only: runs what waits, and what that posts, and returns when nothing waits.
  void runPending();
  /// Called, on whatever thread that is, after each post; for a main thread that waits in a loop of its own. What it
  /// needs lives for as long as it is held here or anything is posted.
  void wakeWith(std::function<void()> wake);

 private:
  [[nodiscard]] std::function<void()> next();

  std::mutex mutex_;
  std::function<void()> wake_;
  std::deque<std::function<void()>> waiting_;
};

}  // namespace tallyvane
