#include "freedesktop/PlistNotificationCenter.h"

#include <gmock/gmock.h>

#include "support/NotificationCenters.h"
#include "support/NotificationLists.h"

namespace tallyvane::testing {
namespace {

TEST_F(PlistNotificationCenterTest, WhatIsDueComesInTheOrderOfItsDatesAndTheNextIsTold) {
  EXPECT_EQ(center.nextAfter(noon), std::nullopt);
  EXPECT_THAT(due(noon), IsEmpty());
  EXPECT_FALSE(files.exists(path));
  schedule("later", noon + 2 * hour);
  schedule("now", noon);
  schedule("before", noon - hour);
  schedule("soon", noon + hour);
  EXPECT_THAT(due(noon), ElementsAre("Pay before", "Pay now"));
  EXPECT_EQ(center.nextAfter(noon), noon + hour);
}

TEST_F(PlistNotificationCenterTest, AnOccasionIsShownOnceHoweverOftenItIsScheduled) {
  schedule("A", noon);
  schedule("A", noon);
  EXPECT_FALSE(center.isAnyDue(noon - hour));
  EXPECT_TRUE(center.isAnyDue(noon));
  showDue(noon, 7);
  EXPECT_THAT(titlesOf(center.delivered()), ElementsAre("Pay A", "Pay A"));
  EXPECT_EQ(center.userInfoOf({"bus", 7}), (Dictionary{{"Bid", "A"}}));
  EXPECT_EQ(center.userInfoOf({"another bus", 7}), std::nullopt);

  // Every pass removes it and schedules it again.
  for (const UserNotification& old : center.delivered()) ASSERT_TRUE(center.removeDelivered(old));
  schedule("A", noon);
  PlistNotificationCenter later = over(files);
  EXPECT_THAT(*later.takeDue(noon + 24 * 30 * hour), IsEmpty());
  EXPECT_THAT(titlesOf(later.delivered()), ElementsAre("Pay A"));
  EXPECT_THAT(later.withdrawn("bus"), IsEmpty()) << "still shown and still true";
  EXPECT_FALSE(later.isAnyDue(noon + 24 * 30 * hour));
  // Another date is another occasion, and so is another bill.
  schedule("A", noon + hour);
  schedule("B", noon);
  EXPECT_THAT(due(noon + hour), ElementsAre("Pay B", "Pay A"));
}

TEST_F(PlistNotificationCenterTest, WhatWasShownIsNotShownLateAtTheTimeThatItHasInAnotherZone) {
  const struct {
    std::chrono::hours moved, now;
    bool isShownAgain;
  } cases[] = {{3 * hour, 48 * hour, false},
               {-14 * hour, 2 * hour, false},
               {3 * hour, 3 * hour, true},
               {23 * hour, 48 * hour, true},
               {-24 * hour, 48 * hour, true}};
  int row = 0;
  for (const auto& c : cases) {
    const std::string bid = std::to_string(++row);
    schedule(bid, noon);
    showDue(noon, 1);
    ASSERT_TRUE(center.removeDelivered(center.delivered()[0]));
    schedule(bid, noon + c.moved);
    EXPECT_THAT(due(noon + c.now), SizeIs(c.isShownAgain ? 1 : 0)) << row;
    EXPECT_THAT(center.withdrawn("bus"), SizeIs(c.isShownAgain ? 1 : 0)) << row;
    for (const UserNotification& left : center.delivered()) ASSERT_TRUE(center.removeDelivered(left));
    for (const ShownId& closed : center.withdrawn("bus")) ASSERT_TRUE(center.noteClosed(closed));
  }
}

TEST_F(PlistNotificationCenterTest, WhoTakesThemMayEndBeforeTheServiceAnswersAndItIsStillShownOnce) {
  schedule("A", noon);
  schedule("B", noon);
  EXPECT_THAT(due(noon), ElementsAre("Pay A", "Pay B"));
  const UserNotification a = center.delivered()[0];
  const UserNotification b = center.delivered()[1];
  // The next one to deliver knows nothing of what the first had begun; a pass comes in between.
  ASSERT_TRUE(center.removeDelivered(a));
  schedule("A", noon);
  PlistNotificationCenter next = over(files);
  EXPECT_THAT(*next.takeDue(noon), IsEmpty());
  EXPECT_THAT(titlesOf(next.delivered()), ElementsAre("Pay B", "Pay A"));

  // A refusal puts back what is still there, to be shown once more when the respite is over.
  ASSERT_TRUE(center.removeDelivered(b));
  for (const auto& refused : {a, b}) ASSERT_TRUE(center.putBack(refused, noon + hour));
  EXPECT_THAT(titlesOf(center.scheduled()), ElementsAre("Pay A"));
  EXPECT_EQ(center.scheduled()[0].deliveryDate, noon);
  EXPECT_THAT(due(noon), IsEmpty());
  EXPECT_EQ(center.nextAfter(noon), noon + hour);
  showDue(noon + hour, 3);
  EXPECT_EQ(center.userInfoOf({"bus", 3}), (Dictionary{{"Bid", "A"}}));
  schedule("A", noon);
  EXPECT_THAT(due(noon + hour), IsEmpty());
}

TEST_F(PlistNotificationCenterTest, WhatIsShownButRemovedIsToldToItsServiceUntilItIsClosed) {
  schedule("A", noon);
  schedule("B", noon);
  showDue(noon, 1);
  EXPECT_THAT(center.withdrawn("bus"), IsEmpty());
  ASSERT_TRUE(center.removeDelivered(center.delivered()[1]));
  EXPECT_THAT(center.withdrawn("later bus"), IsEmpty());
  EXPECT_THAT(center.withdrawn("bus"), ElementsAre(ShownId{"bus", 2}));
  ASSERT_TRUE(center.noteClosed({"bus", 2}));
  EXPECT_THAT(center.withdrawn("bus"), IsEmpty());
  schedule("B", noon);
  EXPECT_THAT(due(noon), IsEmpty());
}

TEST_F(PlistNotificationCenterTest, WhatWasShownIsForgottenAfterMoreThanAYear) {
  schedule("A", noon);
  showDue(noon, 1);
  schedule("B", noon + 24 * 401 * hour);
  showDue(noon + 24 * 401 * hour, 2);
  schedule("A", noon);
  EXPECT_THAT(due(noon), ElementsAre("Pay A"));
}

TEST_F(PlistNotificationCenterTest, AFileThatHoldsOtherThingsIsNoReasonToFailAndIsKept) {
  ASSERT_TRUE(files.createFolder(folder.path + "/state"));
  put(path,
      "<plist><dict><key>Scheduled</key><array><true/><dict/></array><key>Delivered</key><string/>"
      "<key>Shown</key><array><dict><key>Number</key><string>x</string></dict></array></dict></plist>");
  EXPECT_THAT(due(noon), IsEmpty());
  schedule("A", noon);
  showDue(noon, 1);
  EXPECT_THAT(titlesOf(center.delivered()), ElementsAre("Pay A"));
  put(path, "rubbish");
  schedule("B", noon);
  EXPECT_THAT(titlesOf(center.scheduled()), ElementsAre("Pay B"));
  EXPECT_EQ(contentOf(path + ".unreadable-1"), "rubbish");
}

TEST_F(PlistNotificationCenterTest, AFailedWriteIsAnErrorAndLosesNothing) {
  schedule("A", noon);
  const UserNotification first = center.scheduled()[0];
  const auto taken = [](const auto& due) { return due ? Result<>() : Result<>(Error{due.error()}); };
  for (int call = 0; call < 4; ++call) {
    FailingFileStore failing(files, 1);
    PlistNotificationCenter broken = over(failing);
    const Result<> outcome = call == 0   ? broken.schedule(reminderOf("B", noon))
                             : call == 1 ? broken.removeScheduled(first)
                             : call == 2 ? taken(broken.takeDue(noon))
                                         : broken.changeTogether([&] { (void)broken.removeScheduled(first); });
    EXPECT_THAT(outcome.error(), HasSubstr("No space left")) << call;
    EXPECT_THAT(center.scheduled(), SizeIs(1)) << call;
  }
}

TEST_F(PlistNotificationCenterTest, ChangesMadeTogetherAreSavedOnceOrNotAtAll) {
  schedule("old", noon);
  FailingFileStore counting(files, 0);
  PlistNotificationCenter together = over(counting);
  ASSERT_TRUE(together.changeTogether([&] {
    for (int i = 0; i < 300; ++i) ASSERT_TRUE(together.schedule(reminderOf(std::to_string(i), noon)));
    EXPECT_THAT(together.scheduled(), SizeIs(301)) << "who makes them sees them";
    EXPECT_THAT(center.scheduled(), SizeIs(1)) << "others do not yet";
    ASSERT_TRUE(together.removeScheduled(together.scheduled()[0]));
  }));
  EXPECT_EQ(counting.calls(), 1);
  EXPECT_THAT(center.scheduled(), SizeIs(300));
  ASSERT_TRUE(together.changeTogether([&] { (void)together.removeDelivered(reminderOf("none", noon)); }));
  EXPECT_EQ(counting.calls(), 1) << "nothing has changed";
  const auto halfWay = [&] {
    (void)together.removeScheduled(together.scheduled()[0]);
    throw std::runtime_error("half-way");
  };
  EXPECT_THROW((void)together.changeTogether(halfWay), std::runtime_error);
  EXPECT_THAT(together.scheduled(), SizeIs(300));
  schedule("another", noon);
  EXPECT_THAT(center.scheduled(), SizeIs(301)) << "the lists are not locked any more";
}

}  // namespace
}  // namespace tallyvane::testing
