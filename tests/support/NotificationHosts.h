// The notification centres of the contract.
#pragma once

#include <gtest/gtest.h>

#include "support/NotificationCenters.h"

namespace tallyvane::testing {

template <typename Subject>
struct NotificationContract : ::testing::Test {
  Subject subject;
  UserNotificationCenter& center = subject.center;
  const Date soon = std::chrono::sys_days{std::chrono::year{2027} / 3 / 11};
};
using Subjects = ::testing::Types<NotificationsInMemory, NotificationsOnDisk>;
TYPED_TEST_SUITE(NotificationContract, Subjects);

}  // namespace tallyvane::testing
