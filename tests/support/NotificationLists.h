// The lists of notifications on disk.
#pragma once

#include "freedesktop/PlistNotificationCenter.h"

#include <gmock/gmock.h>

#include "support/Matchers.h"
#include "support/NotificationCenters.h"

namespace tallyvane::testing {

class PlistNotificationCenterTest : public ::testing::Test, public NotificationsOnDisk {
 protected:
  void schedule(const std::string& bid, Date at) { ASSERT_TRUE(center.schedule(reminderOf(bid, at))); }
  std::vector<std::string> due(Date at) {
    const auto notifications = center.takeDue(at);
    return notifications ? titlesOf(*notifications) : std::vector<std::string>{notifications.error()};
  }
  /// Shows what is due, numbered from `number` on.
  void showDue(Date at, std::uint32_t number) {
    const auto notifications = center.takeDue(at);
    ASSERT_TRUE(notifications);
    for (const UserNotification& notification : *notifications) {
      ASSERT_TRUE(center.noteShown(notification, {"bus", number++}));
    }
  }
  const Date noon = std::chrono::sys_days{std::chrono::year{2027} / 3 / 11} + std::chrono::hours{12};
  const std::chrono::hours hour{1};
};

}  // namespace tallyvane::testing
