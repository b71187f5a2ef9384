#pragma once

#include <condition_variable>
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
  /// On the main thread only: returns as soon as something waits.
  void waitForWork();
  /// Called, on whatever thread that is, after each post; for a main thread that waits in a loop of its own. Set before
  /// anything is posted.
  void wakeWith(std::function<void()> wake) { wake_ = std::move(wake); }

 private:
  [[nodiscard]] std::function<void()> next();

  std::mutex mutex_;
  std::condition_variable posted_;
  std::function<void()> wake_;
  std::deque<std::function<void()>> waiting_;
};

}  // namespace tallyvane
