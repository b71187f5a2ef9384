#pragma once

#include <deque>
#include <mutex>

#include "platform/MainQueue.h"

namespace tallyvane {

/// Keeps what is posted until the main thread runs it.
class QueuedMainQueue : public MainQueue {
 public:
  void post(std::function<void()> work) override;
  /// On the main thread only: runs what waits, and what that posts, and returns when nothing waits.
  void runPending();

 private:
  [[nodiscard]] std::function<void()> next();

  std::mutex mutex_;
  std::deque<std::function<void()>> waiting_;
};

}  // namespace tallyvane
