#include "common/MailRound.h"

#include <gmock/gmock.h>

#include "reminders/QMEmailManager.h"
#include "support/Bills.h"
#include "support/MailRounds.h"

namespace tallyvane::programs {
namespace {

TEST_F(Rounds, OnlyRemindersOfActiveBillsWithin15DaysAreQueued) {
  putActiveBills(desktop, {reminding("A", "Near", 18, 3), reminding("B", "Far", 19, 3), reminding("C", "Late", -11, 3),
                           reminding("D", "Stale", -13, 3), bill("E", "Silent", daysFromToday(3)),
                           reminding("F", "Near", 4, 3), without(reminding("G", "Odd", 3, 3), "DueDate")});
  queueDueMessages(desktop.platform);
  EXPECT_THAT(pending(), ElementsAre("Late", "Near"));
  const auto near = QMEmailManager{desktop.platform}.dictionaryForBill("Near");
  EXPECT_EQ(near->valueOr("dueDate", Date()), daysFromToday(18));
  EXPECT_EQ(near->valueOr("alarmDate", Date()), daysFromToday(15) - hours{4});  // 09:00 in summer time
}

TEST_F(Rounds, WhatWasSettledLeavesThePendingList) {
  const Dictionary rent = reminding("A", "Rent", 3, 1);
  putActiveBills(desktop, {rent, reminding("B", "Water", 3, 1), reminding("C", "Gone", 3, 1)});
  queueDueMessages(desktop.platform);
  desktop.http.outcome = HttpFailure{HttpFailure::Kind::cannotConnect, ""};
  QMEmailManager{desktop.platform}.sendTestMessage();
  desktop.workQueue.run();
  desktop.mainQueue.run();
  EXPECT_THAT(pending(), ElementsAre("Gone", "Rent", "Water", "Test Message"));
  pay(rent, 33);
  putIndex(desktop, index(Array{"A", "B"}, Array{"C"}, Array()));
  dropSettledMessages(desktop.platform);
  EXPECT_THAT(pending(), ElementsAre("Water", "Test Message"));
}

TEST_F(Rounds, WhatAKilledProgramHadOnItsWayIsSentByTheNext) {
  const Dictionary water = reminding("B", "Water", 3, 1);
  putActiveBills(desktop, {reminding("A", "Rent", 3, 1), water, reminding("C", "Gas", 3, 1)});
  notes.prepareMailQueue();
  QMEmailManager{desktop.platform}.checkForMessagesToSendAsynchronous(true);
  desktop.workQueue.waiting.clear();
  ASSERT_TRUE(notes.note({"Rent", "Water"}));
  EXPECT_THAT(pending(), IsEmpty());
  pay(water, 33);
  EXPECT_THAT(round(), ElementsAre("Rent"));
  EXPECT_THAT(round(), IsEmpty());
}

TEST_F(Rounds, AWeekOfHoursSendsEachReminderOnceWhateverFailsOrIsSwitchedOff) {
  const Dictionary rent = reminding("A", "Rent", 19, 1);
  putActiveBills(desktop, {rent, reminding("B", "Water", 2, 1)});
  std::vector<std::string> sent;
  for (int hour = 0; hour < 7 * 24; ++hour, desktop.clock.moment += hours{1}) {
    const bool isOff = hour >= 48 && hour < 96;
    const bool isOffline = hour < 3 || (hour >= 96 && hour < 100);
    if (isOff) continue;
    desktop.http.outcome = HttpAnswer{200, {}, ""};
    if (isOffline) desktop.http.outcome = HttpFailure{HttpFailure::Kind::cannotConnect, ""};
    const auto names = round();
    if (isOffline) continue;
    for (const std::string& name : names) sent.push_back(std::to_string(hour) + " " + name);
    if (hour == 120) pay(rent, 20);
  }
  // Rent comes within 15 days on the third day, when the machine is off; after its payment it is due anew.
  EXPECT_THAT(sent, ElementsAre("3 Water", "100 Rent", "121 Rent"));
  EXPECT_THAT(pending(), IsEmpty());
}

TEST_F(Rounds, WhatIsMissingIsSaid) {
  EXPECT_EQ(mailHindrance(desktop.platform), std::nullopt);
  desktop.defaults.content.erase("LEMAddress");
  EXPECT_THAT(mailHindrance(desktop.platform).value(), ::testing::HasSubstr("LEMAddress"));
  desktop.defaults.content.set("QMEmailsEnabled", false);
  EXPECT_THAT(mailHindrance(desktop.platform).value(), ::testing::HasSubstr("switched off"));
}

}  // namespace
}  // namespace tallyvane::programs
