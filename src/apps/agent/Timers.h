#pragma once

#include <chrono>

#include "foundation/Date.h"
#include "freedesktop/FileDescriptor.h"

namespace tallyvane::agent {

/// A descriptor that is readable once, some time after it was set.
class DelayTimer {
 public:
  /// Throws std::system_error when the system has no timer to give.
  DelayTimer();
  [[nodiscard]] int descriptor() const { return file_.number(); }
  /// Runs out after `delay`. One that is running already goes on as it is, so that a stream of calls cannot put it off
  /// for ever.
  void start(std::chrono::milliseconds delay);
  /// Takes note that it has run out.
  void acknowledge();

 private:
  FileDescriptor file_;
  bool running_ = false;
};

/// A descriptor that is readable once, at a moment of the wall clock or as soon as the clock has been set. A moment
/// that passes while the machine sleeps counts when it wakes.
class WallClockTimer {
 public:
  /// Throws std::system_error when the system has no timer to give.
  WallClockTimer();
  [[nodiscard]] int descriptor() const { return file_.number(); }
  /// False when the clock has been set since the moment was asked for; it is to be worked out again then.
  [[nodiscard]] bool set(Date moment);
  /// Takes note that it was readable.
  void acknowledge();

 private:
  FileDescriptor file_;
};

}  // namespace tallyvane::agent
