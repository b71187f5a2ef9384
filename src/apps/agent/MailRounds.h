#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "agent/EventLoop.h"
#include "agent/Timers.h"
#include "common/DesktopPlatform.h"
#include "common/MailRound.h"
#include "common/ProgramLock.h"
#include "freedesktop/EventDescriptor.h"
#include "reminders/QMEmailManager.h"

namespace tallyvane::agent {

/// Sends reminders by mail: at the start, every hour, and when the machine wakes or its clock is set; when a round is
/// under way then, at its end. Whatever writes does so under the programs' lock; while another program holds it, or
/// has the turn to send, this comes back later.
class MailRounds {
 public:
  using Desktop = std::function<programs::DesktopPlatform&()>;
  /// The log and what the function leads to outlive it. `desktop` is asked at every use.
  MailRounds(Desktop desktop, Log& log);

  /// The loop outlives it. The first round begins with the loop.
  void attachTo(EventLoop& loop);
  /// Called once for each desktop, before its first request.
  void follow(programs::DesktopPlatform& desktop);
  /// Cancels what is on its way and puts it back into the queue. Called before the desktop goes.
  void endRequests();

 private:
  void comeBackInAnHour();
  void goOn();
  void noteOutcomes();
  [[nodiscard]] bool isUnderWay() const { return manager_ && !manager_->messagesOnTheirWay().empty(); }
  void beginRound();
  [[nodiscard]] bool mayBegin();
  [[nodiscard]] bool takeTurn();
  [[nodiscard]] Result<> prepare();
  [[nodiscard]] programs::MailRoundNotes notes();

  Desktop desktop_;
  Log& log_;
  std::shared_ptr<const EventDescriptor> called_;  ///< readable when callbacks wait
  DelayTimer settling_;
  WallClockTimer nextRound_;
  bool isRoundDue_ = true;
  std::optional<programs::ProgramLock> turn_;  ///< held while a round is under way
  std::unique_ptr<QMEmailManager> manager_;    ///< of the last round
  std::string saidHindrance_;
};

}  // namespace tallyvane::agent
