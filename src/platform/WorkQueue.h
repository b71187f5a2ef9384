#pragma once

#include <functional>
#include <stop_token>

namespace tallyvane {

/// Runs work on a thread that is not the main one, one piece after another in the order handed over.
class WorkQueue {
 public:
  virtual ~WorkQueue() = default;
  /// Returns at once. The work is given a token by which the queue asks it to hurry to its end; every piece that was
  /// posted runs, also when the queue is about to end. The work is destroyed on the queue's thread.
  virtual void post(std::function<void(std::stop_token)> work) = 0;
};

}  // namespace tallyvane
