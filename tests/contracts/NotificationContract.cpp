#include <gmock/gmock.h>

#include "support/Matchers.h"
#include "support/NotificationHosts.h"

namespace tallyvane::testing {
namespace {

TYPED_TEST(NotificationContract, WhatIsScheduledComesBackWithAnIdentifierOfItsOwn) {
  UserNotification rent = reminderOf("\n\"光\"" + std::string(10'000, 'x'), this->soon);
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(this->center.schedule(rent));
  const auto scheduled = this->center.scheduled();
  ASSERT_EQ(scheduled.size(), 2U);
  EXPECT_NE(scheduled[0].identifier, scheduled[1].identifier);
  EXPECT_NE(scheduled[0].identifier, "");
  rent.identifier = scheduled[0].identifier;
  EXPECT_EQ(scheduled[0], rent);
  EXPECT_THAT(this->center.delivered(), IsEmpty());
}

TYPED_TEST(NotificationContract, OnlyTheOneThatIsMeantIsRemovedAndAnAbsentOneIsNoError) {
  for (const char* bid : {"A", "A", "B"}) (void)this->center.schedule(reminderOf(bid, this->soon));
  const UserNotification first = this->center.scheduled()[0];
  EXPECT_TRUE(this->center.removeDelivered(first));
  EXPECT_THAT(titlesOf(this->center.scheduled()), ElementsAre("Pay A", "Pay A", "Pay B"));
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(this->center.removeScheduled(first));
  EXPECT_THAT(titlesOf(this->center.scheduled()), ElementsAre("Pay A", "Pay B"));
}

}  // namespace
}  // namespace tallyvane::testing
