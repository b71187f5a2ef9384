#pragma once

#include <sdbus-c++/sdbus-c++.h>

#include <functional>
#include <string>

#include "freedesktop/NotificationService.h"
#include "freedesktop/PlistNotificationCenter.h"
#include "platform/Log.h"

namespace tallyvane::agent {

/// Shows what is due through the desktop's notification service, and closes what has been removed since. While there is
/// no service, or it cannot show anything, the schedule waits.
class Deliveries {
 public:
  struct Needs {
    std::function<PlistNotificationCenter&()> center;  ///< asked at every use
    std::function<Date()> now;
    std::function<void()> again;                             ///< the lists are to be looked at again soon: `deliver`
    std::function<void(const Dictionary& userInfo)> viewed;  ///< the user asks for what a notification is about
  };
  /// The connection and the log outlive it.
  Deliveries(sdbus::IConnection& connection, Needs needs, Log& log);

  /// Brings the screen in line with the lists, as far as it goes now; the service answers later. Fails when the lists
  /// cannot be written; then nothing is shown, for it would be shown again and again.
  Result<> deliver(Date now);

 private:
  void startService();
  void show(const UserNotification& notification);
  void shown(const UserNotification& notification, const Result<ShownId>& shown);
  void closeWithdrawn();
  void sayWaiting(const std::string& why);
  void note(const Result<>& outcome);

  Needs needs_;
  Log& log_;
  bool saidWaiting_ = false;
  NotificationService service_;
};

}  // namespace tallyvane::agent
