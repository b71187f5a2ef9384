#pragma once

namespace tallyvane {

/// The program that the model runs in.
class Application {
 public:
  virtual ~Application() = default;
  /// Asks the program to end as soon as the current operation has returned.
  virtual void terminate() = 0;
};

}  // namespace tallyvane
