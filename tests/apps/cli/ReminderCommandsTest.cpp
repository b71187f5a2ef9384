#include <algorithm>

#include "support/PaymentCommands.h"

namespace tallyvane::testing {
namespace {

/// Noon of 10 March 2027 in New York; reminders ring at nine. The clocks go forward on 14 March.
struct ReminderCommands : CliCommands {
  ReminderCommands() {
    rent = add({"Rent", "--due", "2027-03-16", "--repeat", "monthly", "--amount", "900", "--remind", "1"});
    water = add({"Water \"A\"", "--due", "2027-03-12", "--repeat", "never", "--amount", "30", "--remind", "1"});
    (void)add({"Silent", "--due", "2027-03-12", "--repeat", "never", "--amount", "5"});
  }
  void switchOn(const std::string& setting) { (void)done({"settings", "set", setting, "yes"}); }
  std::string rent, water;
  std::vector<CalendarEvent>& events = cli.desktop.calendars.eventList;
  std::vector<UserNotification>& scheduled = cli.desktop.notifications.scheduledList;
};

TEST_F(ReminderCommands, RemindShowsWhatItWouldPlaceThenPlacesIt) {
  EXPECT_EQ(done({"remind", "--dry-run"}),
            "2027-03-11T09:00-05:00\tWater \"A\"\t2027-03-12\tnowhere\n"
            "2027-03-15T09:00-04:00\tRent\t2027-03-16\tnowhere\n");
  switchOn("QMReminderEvents");
  switchOn("QMEnableNotificationCenter");
  const std::string plan = done({"remind", "--dry-run", "--json"});
  EXPECT_THAT(events, IsEmpty());
  EXPECT_THAT(scheduled, IsEmpty());
  EXPECT_EQ(json::parse(plan).at(1), (json{{"id", rent},
                                           {"name", "Rent"},
                                           {"due", "2027-03-16"},
                                           {"at", "2027-03-15T09:00-04:00"},
                                           {"calendar", "Tallyvane"},
                                           {"notification", true}}));
  for (int pass = 0; pass < 2; ++pass) EXPECT_EQ(done({"remind", "--json"}), plan);
  EXPECT_THAT(events, SizeIs(2));
  EXPECT_THAT(scheduled, SizeIs(2));
}

TEST_F(ReminderCommands, PeopleReadTimesInTheFormOfTheirLocale) {
  cli.terminal = {.interactive = true, .width = 100};
  switchOn("QMReminderEvents");
  EXPECT_THAT(done({"remind"}), HasSubstr("Mon, Mar 15, 2027, 9:00\u202FAM  Rent       Tue, Mar 16, 2027  calendar "
                                          "\"Tallyvane\""));
  const std::string calendars = done({"calendar"});
  EXPECT_THAT(calendars, AllOf(HasSubstr("Folder: here\nEvents for bills: on, in the calendar \"Tallyvane\"\n"
                                         "Calendar \"Tallyvane\": 2 events, receives the bills' reminders\n"),
                               HasSubstr("Tue, Mar 16, 2027  Pay Rent       Mon, Mar 15, 2027, 9:00\u202FAM\n"),
                               HasSubstr("khal"), HasSubstr("docs/calendars.md")));
  (void)done({"settings", "set", "QMReminderEvents", "no"});
  EXPECT_THAT(done({"remind"}), AllOf(HasSubstr("nowhere"), HasSubstr("both switched off")));
  EXPECT_THAT(events, IsEmpty());
  for (const char* bill : {"Rent", "Water"}) (void)done({"archive", bill});
  EXPECT_EQ(done({"remind"}), "No bill asks for reminders. Have one ask: tallyvane edit Rent --remind 3\n");
}

TEST_F(ReminderCommands, WhatCouldNotBePlacedIsSaidAndNothingIsLost) {
  switchOn("QMReminderEvents");
  switchOn("QMEnableNotificationCenter");
  (void)done({"remind"});
  const auto before = scheduled;
  cli.desktop.notifications.failing = true;
  Outcome outcome = cli.run({"remind"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "tallyvane: The notifications stay as they were: no room.\n");
  EXPECT_EQ(cli.run({"notifications", "remove", "Rent"}).status, 1);
  ASSERT_THAT(scheduled, SizeIs(2));
  EXPECT_EQ(scheduled[0].identifier, before[0].identifier);
  cli.desktop.notifications.failing = false;
  events.clear();
  cli.desktop.calendars.failing = true;
  outcome = cli.run({"remind"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "tallyvane: Not all reminders could be placed, those of: Water \"A\", Rent.\n");
  cli.desktop.calendars.unreadable = true;
  EXPECT_THAT(cli.run({"calendar"}).err, HasSubstr("The calendars cannot be read: the list is locked."));
}

TEST_F(ReminderCommands, NotificationsAreListedAndRemovedByBillOrIdentifier) {
  cli.terminal = {.interactive = true, .width = 120};
  EXPECT_EQ(done({"notifications"}), "No notification is scheduled, and none was delivered.\n");
  cli.terminal.interactive = false;
  switchOn("QMEnableNotificationCenter");
  (void)done({"remind"});
  auto& delivered = cli.desktop.notifications.deliveredList;
  delivered = {{"old-1", "Pay Gone", "due", "View", true, Dictionary{{"Bid", "GONE"}}, "default", Date()},
               {"old-2", "Pay Gone", "due", "View", true, Dictionary{{"Bid", "GONE"}}, "default", Date()}};
  const std::string waterId = scheduled[1].identifier;
  EXPECT_THAT(done({"notifications"}),
              HasSubstr("Scheduled\t2027-03-11T09:00-05:00\tPay Water \"A\"\tBill is due on Fri, Mar 12, 2027\t" +
                        waterId + "\nScheduled\t2027-03-15T09:00-04:00\tPay Rent\t"));
  const json all = doneJson({"notifications"});
  EXPECT_EQ(all.at("scheduled").at(0).at("bill"), rent);
  EXPECT_EQ(all.at("delivered").size(), 2U);

  EXPECT_EQ(done({"notifications", "remove", "rent", "old-2", "Rent"}), "Removed 2 notifications.\n");
  EXPECT_THAT(scheduled, SizeIs(1));
  ASSERT_THAT(delivered, SizeIs(1));
  EXPECT_EQ(doneJson({"notifications", "remove", "GONE"}).at(0).at("id"), "old-1");
  EXPECT_EQ(done({"notifications", "remove", "Rent"}), "There was none to remove.\n");
  const Outcome unknown = cli.run({"notifications", "remove", waterId, "Nobody"});
  EXPECT_NE(unknown.status, 0);
  EXPECT_THAT(scheduled, SizeIs(1)) << "all or none";
  EXPECT_EQ(cli.run({"notifications", "remove"}).status, 2);
}

TEST_F(ReminderCommands, CalendarsAreListedForPrograms) {
  EXPECT_EQ(done({"calendar"}), "");
  switchOn("QMReminderEvents");
  (void)done({"remind"});
  CalendarEvent dinner;
  dinner.title = "Dinner\tout";
  dinner.calendar = cli.desktop.calendars.save(EventCalendar{{}, "Ho\tme", {}})->identifier;
  dinner.start = dinner.end = cli.desktop.clock.moment;
  ASSERT_TRUE(cli.desktop.calendars.save(dinner));
  EXPECT_EQ(done({"calendar"}),
            "Tallyvane\t2027-03-12\tPay Water \"A\"\t2027-03-11T09:00-05:00\n"
            "Tallyvane\t2027-03-16\tPay Rent\t2027-03-15T09:00-04:00\n"
            "Ho me\t2027-03-10T12:00-05:00\tDinner out\t\n");
  const json all = doneJson({"calendar"});
  EXPECT_EQ(all.at("folder"), "here");
  EXPECT_EQ(all.at("calendars").at(0).at("receives"), true);
  EXPECT_EQ(all.at("calendars").at(0).at("events").at(1), (json{{"title", "Pay Rent"},
                                                                {"start", "2027-03-16"},
                                                                {"end", "2027-03-16"},
                                                                {"allDay", true},
                                                                {"alarms", json::array({"2027-03-15T09:00-04:00"})}}));
}

}  // namespace
}  // namespace tallyvane::testing
