#pragma once

#include <functional>

namespace tallyvane {

/// Runs what other threads hand over on the main thread, one piece after another in the order handed over.
class MainQueue {
 public:
  virtual ~MainQueue() = default;
  /// May be called from any thread; never runs the work before it returns.
  virtual void post(std::function<void()> work) = 0;
};

}  // namespace tallyvane
