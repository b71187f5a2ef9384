#pragma once

#include <functional>
#include <memory>
#include <string>

#include "agent/EventLoop.h"
#include "agent/Timers.h"
#include "common/DesktopPlatform.h"
#include "freedesktop/FileDescriptor.h"
#include "reminders/QMEmailManager.h"

namespace tallyvane::agent {

/// Sends reminders by mail: at the start, every hour, and when the machine wakes or its clock is set. Whatever writes
/// does so under the programs' lock; while another program holds it, this comes back a moment later.
class MailRounds {
 public:
  using Desktop = std::function<programs::DesktopPlatform*()>;
  /// The log and what the function leads to outlive it. `desktop` is asked at every use; null while there is none yet.
  MailRounds(Desktop desktop, Log& log);

  /// The loop outlives it. The first round begins with the loop.
  void attachTo(EventLoop& loop);
  /// Cancels what is on its way and puts it back into the queue. Called before the desktop goes.
  void endRequests();

 private:
  void comeBackInAnHour();
  void goOn();
  void beginRound();
  [[nodiscard]] bool mayBegin();

  Desktop desktop_;
  Log& log_;
  FileDescriptor called_;  ///< readable when callbacks wait
  DelayTimer settling_;
  WallClockTimer nextRound_;
  bool isRoundDue_ = true;
  std::unique_ptr<QMEmailManager> manager_;  ///< of the last round
  std::string saidHindrance_;
};

}  // namespace tallyvane::agent
