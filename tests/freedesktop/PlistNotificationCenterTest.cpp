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
  EXPECT_THAT(due(noon), ElementsAre("Pay A"));
  EXPECT_THAT(due(noon), ElementsAre("Pay A")) << "as long as nobody has shown it";
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
  // Another date is another occasion, and so is another bill.
  schedule("A", noon + hour);
  schedule("B", noon);
  EXPECT_THAT(due(noon + hour), ElementsAre("Pay B", "Pay A"));
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
  for (int call = 0; call < 3; ++call) {
    FailingFileStore failing(files, 1);
    PlistNotificationCenter broken = over(failing);
    const Result<> outcome = call == 0   ? broken.schedule(reminderOf("B", noon))
                             : call == 1 ? broken.removeScheduled(first)
                                         : broken.noteShown(first, {"bus", 1}, noon);
    EXPECT_THAT(outcome.error(), HasSubstr("No space left")) << call;
    EXPECT_THAT(center.scheduled(), SizeIs(1)) << call;
  }
}

}  // namespace
}  // namespace tallyvane::testing
