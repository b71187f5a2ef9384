#pragma once

#include <functional>
#include <string>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Result.h"
#include "foundation/Value.h"

namespace tallyvane {

struct UserNotification {
  std::string identifier;  ///< the centre's own; empty before it is scheduled
  std::string title;
  std::string informativeText;
  std::string actionButtonTitle;
  bool hasActionButton = false;
  Dictionary userInfo;
  std::string soundName;  ///< "default" for the platform's notification sound
  Date deliveryDate;
  friend bool operator==(const UserNotification&, const UserNotification&) = default;
};

/// Desktop notifications that appear at a set time, and those that have appeared. Both lists are shared by all
/// programs of the user and outlive them; an identifier that is in neither list is no error to remove.
class UserNotificationCenter {
 public:
  virtual ~UserNotificationCenter() = default;
  virtual Result<> schedule(const UserNotification& notification) = 0;
  [[nodiscard]] virtual std::vector<UserNotification> delivered() = 0;
  [[nodiscard]] virtual std::vector<UserNotification> scheduled() = 0;
  virtual Result<> removeDelivered(const UserNotification& notification) = 0;
  virtual Result<> removeScheduled(const UserNotification& notification) = 0;
  /// Runs `changes`, which change the lists through the operations above, and saves all that they did at once; the
  /// result is that of saving. Until then other programs see the lists as they were, and they stay so when saving fails
  /// or `changes` throws. Not to be called from within `changes`.
  virtual Result<> changeTogether(const std::function<void()>& changes) = 0;
};

}  // namespace tallyvane
