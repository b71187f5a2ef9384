#pragma once

#include <sdbus-c++/sdbus-c++.h>

#include <functional>
#include <string>

#include "agent/Deliveries.h"
#include "agent/EventLoop.h"
#include "agent/FileWatch.h"
#include "agent/PassReasons.h"
#include "agent/Timers.h"
#include "common/DesktopPlatform.h"

namespace tallyvane::agent {

/// Makes reminders happen: runs the reminder pass when there is a reason to, delivers notifications at their minute,
/// and follows what other programs schedule and remove. While another program holds the programs' lock it comes back a
/// moment later, so that a bill that is being rewritten never loses its notification in between.
class Reminders {
 public:
  using Desktop = std::function<programs::DesktopPlatform&()>;
  /// The connection, the log and what the functions lead to outlive it. `desktop` is asked at every use, `view` is
  /// called with the identifier of a bill that the user wants to see.
  Reminders(sdbus::IConnection& connection, Desktop desktop, std::function<void(const std::string& bid)> view,
            Log& log);

  /// The loop outlives it.
  void attachTo(EventLoop& loop);
  /// Called at the start, and whenever the day, the region, the settings or the clock may have changed.
  void bringUpToDate();

 private:
  /// False when the lists could not be written; everything waits as it was.
  [[nodiscard]] bool passWhenDue();
  [[nodiscard]] bool deliver(Date now);
  void deliverAndWait(bool isBehind);
  void watchSchedule();

  Desktop desktop_;
  Log& log_;
  FileWatch fileWatch_;
  DelayTimer settling_;
  WallClockTimer next_;
  PassReasons reasons_;
  Deliveries deliveries_;
};

}  // namespace tallyvane::agent
