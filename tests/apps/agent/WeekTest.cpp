#include "payments/QMPaymentLogger.h"
#include "support/Matchers.h"
#include "support/SimulatedWeek.h"

namespace tallyvane::testing {
namespace {

/// From Wednesday 6 to Wednesday 13 March 2024: switched off from Wednesday evening to Saturday; New York's clocks go
/// forward on Sunday; from Monday on in Los Angeles.
TEST_F(SimulatedWeek, EachReminderArrivesOnceInItsTimeOrAsSoonAsTheComputerIsOn) {
  const Dictionary water = reminding("B", "Water", utc(10, 16), 0);
  put({reminding("A", "Rent", utc(8, 17), 1), water, reminding("C", "Gas", utc(13, 16), 1),
       reminding("D", "Far", utc(28, 16), 1)});
  switchOn("America/New_York");
  at("Wed 08:00", utc(6, 13));
  at("Wed 20:00", utc(7, 1));
  switchOff();
  at("Thu 09:00", utc(7, 14));
  at("Fri 09:00", utc(8, 14));
  switchOn("America/New_York");
  at("Sat 10:00", utc(9, 15));
  at("Sun 08:59", utc(10, 12, 59));
  at("Sun 09:00", utc(10, 13));
  switchOff();
  switchOn("America/New_York");
  at("Sun 09:01", utc(10, 13, 1));
  QMPaymentLogger{computer->desktop->platform()}.recordPaymentForBillAndUpdateDate({30.0, clock.moment, "", ""}, water,
                                                                                   true);
  at("Sun 20:00", utc(11, 0));
  EXPECT_THAT(service.closed, IsSupersetOf({service.shown.back().number})) << "paid";
  computer->moveTo("America/Los_Angeles");
  at("Mon 09:00", utc(11, 16));
  at("Tue 08:59", utc(12, 15, 59));
  at("Tue 09:00", utc(12, 16));
  at("Wed 06:00", utc(13, 13));

  EXPECT_THAT(arrived, ElementsAre("Wed 08:00 mail Gas", "Wed 08:00 mail Rent", "Wed 08:00 mail Water",
                                   "Sat 10:00 notification Pay Rent", "Sun 09:00 notification Pay Water",
                                   "Tue 09:00 notification Pay Gas", "Tue 09:00 mail Far"));
  EXPECT_THAT(computer->desktop->platform().calendars.events("Tallyvane", utc(1, 0), utc(31, 0)), SizeIs(3));
}

TEST_F(SimulatedWeek, WithoutAKeyNothingIsSentOrQueuedAndThatIsSaidOnce) {
  put({reminding("A", "Rent", utc(8, 17), 1)});
  clock.moment = utc(6, 13);
  testing::put(session.folder.path + "/system/Tallyvane/mail.conf", "[Mail Service]\nHost=127.0.0.1\n");
  switchOn("America/New_York");
  int turns = 0;
  computer->runUntil([&] { return ++turns > 50 && !log.diagnostics.empty(); });
  EXPECT_THAT(log.diagnostics, ElementsAre("No reminders go by mail: no API key of a mail service is set up"));
  EXPECT_FALSE(std::filesystem::exists(session.dataFolder() + "/mailindex.plist"));
}

}  // namespace
}  // namespace tallyvane::testing
