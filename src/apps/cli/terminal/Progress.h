#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "cli/terminal/Console.h"

namespace tallyvane::cli {

/// Shows a person how far long work is, in one line that is gone when it ends. Quick work shows nothing, and what goes
/// on is shown ten times a second at most.
class Progress {
 public:
  /// The console outlives it.
  explicit Progress(Console& console) : console_(console) {}
  ~Progress() { console_.progress(""); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// The text is only asked for when it is shown.
  void show(const std::function<std::string()>& text);

 private:
  using Clock = std::chrono::steady_clock;  // how long the work takes, whatever day it is

  Console& console_;
  Clock::time_point next_ = Clock::now() + std::chrono::milliseconds{500};
};

}  // namespace tallyvane::cli
