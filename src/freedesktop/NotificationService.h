#pragma once

#include <sdbus-c++/sdbus-c++.h>

#include <functional>
#include <memory>
#include <string>

#include "foundation/Result.h"
#include "freedesktop/PlistNotificationCenter.h"

namespace tallyvane {

/// The desktop's notification service, org.freedesktop.Notifications, as it comes and goes. Nothing waits for it: its
/// answers come in the connection's loop.
class NotificationService {
 public:
  struct Told {
    std::function<void()> appeared;                    ///< a service has started, maybe another one
    std::function<void(const ShownId& shown)> viewed;  ///< the user pressed a notification's action button
  };
  /// The connection outlives it. Throws sdbus::Error when the bus is gone.
  NotificationService(sdbus::IConnection& connection, Told told);

  /// Has the desktop start a service where it has one to start. `answered` is called later, not after this is
  /// destroyed; while a start is on its way, another is not asked for and not answered.
  void start(std::function<void(const Result<>& started)> answered);
  /// Asks the service to show it. The notification stays on the screen until the user has dealt with it. `answered` is
  /// called later, once, with what it was shown as or the reason why not; not after this is destroyed.
  using Answered = std::function<void(const Result<ShownId>& shown)>;
  void show(const UserNotification& notification, Answered answered);
  /// What the service no longer shows, or another service showed, is passed over.
  void close(const ShownId& shown);
  /// The service that runs, as ShownId names it; empty while none does.
  [[nodiscard]] const std::string& current() const { return current_; }

 private:
  [[nodiscard]] std::string identityOf(const std::string& uniqueName) const;
  void follow(const std::string& owner);
  void watch();

  sdbus::IConnection& connection_;
  Told told_;
  std::string busIdentity_;
  std::string current_;
  bool isStarting_ = false;
  std::unique_ptr<sdbus::IProxy> bus_;
  std::unique_ptr<sdbus::IProxy> service_;
  sdbus::Slot ownerChanges_;
  sdbus::Slot actions_;
};

}  // namespace tallyvane
