#pragma once

#include <string>

#include "common/DesktopPlatform.h"
#include "platform/Log.h"

namespace tallyvane::agent {

/// Sees to it that there is a backup of every day on which the agent runs and the data can be copied.
class DailyBackups {
 public:
  /// The log outlives it.
  explicit DailyBackups(Log& log) : log_(log) {}

  /// Makes today's backup unless there is one. False when another program holds the programs' lock: try again then.
  /// Why none can be made is said once.
  [[nodiscard]] bool bringUpToDate(programs::DesktopPlatform& desktop);

 private:
  Log& log_;
  std::string saidHindrance_;
};

}  // namespace tallyvane::agent
