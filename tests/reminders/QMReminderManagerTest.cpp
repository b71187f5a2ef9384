#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Matchers.h"
#include "support/Reminders.h"

namespace tallyvane::testing {
namespace {

TEST_F(Reminders, PlaceAnAllDayEventWithOneAlarmAndANotification) {
  desktop.calendars.defaultAlarms = {{distantPast, "Bell"}};
  const Date due = daysFromToday(20);
  QMReminderManager{desktop.platform}.createTallyvaneReminderForBill(reminding("A1", "Rent", due));

  ASSERT_EQ(desktop.calendars.calendarList.size(), 1U);
  EXPECT_EQ(desktop.calendars.calendarList[0].title, "Bills");
  EXPECT_EQ(desktop.calendars.calendarList[0].source, "here") << "the first source of the local type";
  const Date alarm = winterTime(2027, 3, 27, 8, 30);  // 09:30 in summer time, three days before
  const CalendarEvent event{"event-2", "calendar-1", "Pay Rent", due, due, true, {{alarm, "Submarine"}}};
  EXPECT_THAT(desktop.calendars.eventList, ElementsAre(event));
  const std::string text = "Bill is due on Tue, Mar 30, 2027";
  const UserNotification shown{"notification-1", "Pay Rent", text, "View", true, {{"Bid", "A1"}}, "default", alarm};
  EXPECT_THAT(desktop.notifications.scheduledList, ElementsAre(shown));
  EXPECT_THAT(desktop.log.lines, ElementsAre("Updating Reminder"));
}

TEST_F(Reminders, RingAtTheChosenTimeOnTheWallDaysBeforeTheDueDay) {
  struct Case {
    Value days;
    std::optional<Value> time;
    Date due, alarm;
  };
  const Value halfPastNine = winterTime(2000, 1, 1, 9, 30);
  const Case cases[] = {
      {3, halfPastNine, winterTime(2027, 2, 10, 14, 0), winterTime(2027, 2, 7, 9, 30)},
      {0, halfPastNine, winterTime(2027, 2, 10, 0, 0), winterTime(2027, 2, 10, 9, 30)},
      {10, std::nullopt, winterTime(2027, 1, 5, 23, 59), winterTime(2026, 12, 26, 9, 0)},
      {-1, halfPastNine, winterTime(2027, 2, 10, 12, 0), winterTime(2027, 2, 11, 9, 30)},
      // Half past nine also on the day on which the clocks go forward.
      {1, halfPastNine, noon(2027, 3, 15), winterTime(2027, 3, 14, 8, 30)},
      {1, "not a date", winterTime(2027, 2, 10, 12, 0), winterTime(2027, 2, 9, 9, 0)},
  };
  for (const Case& c : cases) {
    if (c.time) desktop.defaults.content.set("QMReminderTime", *c.time);
    if (!c.time) desktop.defaults.content.erase("QMReminderTime");
    const Dictionary rent = with(bill("A1", "Rent", c.due), "ReminderDays", c.days);
    EXPECT_EQ(QMReminderManager{desktop.platform}.calculateAlarmDateWithBill(rent), c.alarm);
  }
}

TEST_F(Reminders, ThePassKeepsOneEventPerBillButSchedulesASecondNotification) {
  QMReminderManager manager{desktop.platform};
  const std::vector<Dictionary> bills = {reminding("A1", "Rent", daysFromToday(5)),
                                         bill("B2", "Gym", daysFromToday(5))};
  manager.createTallyvaneReminderForBill(bills[1]);  // placed while it still wanted reminders
  manager.checkForNotificationsToAddWithBillList(bills);
  manager.checkForNotificationsToAddWithBillList(bills);
  std::vector<std::string> titles;
  for (const auto& event : desktop.calendars.eventList) titles.push_back(event.title);
  EXPECT_THAT(titles, UnorderedElementsAre("Pay Gym", "Pay Rent"));
  EXPECT_EQ(desktop.notifications.scheduledList.size(), 3U);
}

TEST_F(Reminders, RemoveEventsByExactTitleWithinThirteenMonths) {
  desktop.calendars.calendarList = {{"c1", "Bills", {}}, {"c2", "Home", {}}};
  const auto add = [&](const std::string& calendar, const std::string& title, Date day) {
    const std::string identifier = std::to_string(desktop.calendars.eventList.size());
    desktop.calendars.eventList.push_back({identifier, calendar, title, day, day, false, {}});
  };
  add("c1", "Pay Rent", noon(2028, 4, 9));
  add("c1", "Pay Rent", noon(2028, 4, 11));
  add("c1", "Pay Rent", noon(2026, 2, 11));
  add("c1", "Pay Rent", noon(2026, 2, 9));
  add("c1", "Pay Rental", noon(2027, 3, 10));
  add("c2", "Pay Rent", noon(2027, 3, 10));
  QMReminderManager{desktop.platform}.removeTallyvaneRemindersForBillName("Rent");
  std::vector<Date> left;
  for (const auto& event : desktop.calendars.eventList) left.push_back(event.start);
  EXPECT_THAT(left, ElementsAre(noon(2028, 4, 11), noon(2026, 2, 9), noon(2027, 3, 10), noon(2027, 3, 10)));
}

TEST_F(Reminders, RemoveDeliveredAndScheduledNotificationsOfOneBill) {
  QMReminderManager manager{desktop.platform};
  manager.createTallyvaneReminderForBill(reminding("A1", "Rent", daysFromToday(5)));
  manager.createTallyvaneReminderForBill(reminding("B2", "Gym", daysFromToday(5)));
  (void)desktop.notifications.schedule(UserNotification{});  // another program's, without a bill
  manager.removeNotificationCenterRemindersForBid("");
  desktop.notifications.deliveredList = desktop.notifications.scheduledList;
  manager.removeNotificationCenterRemindersForBid("A1");
  ASSERT_EQ(desktop.notifications.scheduledList.size(), 2U);
  ASSERT_EQ(desktop.notifications.deliveredList.size(), 2U);
  EXPECT_EQ(desktop.notifications.deliveredList[0].title, "Pay Gym");
}

TEST_F(Reminders, TheCalendarIsTheChosenOneOfTheUsersList) {
  struct Case {
    std::optional<Value> list;
    Value number;
    std::optional<std::string> name;
  };
  const Case cases[] = {{Array{"Home", "Bills"}, 1, "Bills"},
                        {Array{"Home", "Bills"}, 5, "Tallyvane"},
                        {Array{"Home", "Bills"}, -1, "Tallyvane"},
                        {Array{}, 0, "Tallyvane"},
                        {Array{"Home"}, std::int64_t{1} << 32, "Home"},
                        {Array{5, "Bills"}, 1, "Bills"},
                        {std::nullopt, 0, std::nullopt}};
  for (const Case& c : cases) {
    desktop.defaults.content.erase("QMCalendarList");
    if (c.list) desktop.defaults.content.set("QMCalendarList", *c.list);
    desktop.defaults.content.set("QMReminderCalendarNumber", c.number);
    QMReminderManager manager{desktop.platform};
    EXPECT_EQ(manager.tallyvaneCalendar(), c.name);
    desktop.defaults.content.set("QMCalendarList", Array{"Other"});
    desktop.defaults.content.set("QMReminderCalendarNumber", 0);
    EXPECT_EQ(manager.tallyvaneCalendar(), c.name.value_or("Other")) << "kept once found";
  }
  EXPECT_EQ(QMReminderManager{desktop.platform}.reminderCalendar(), "Reminders");
}

TEST_F(Reminders, AnUnreadableListOfCalendarsIsLoggedAndKeepsOnlyTheEventsAway) {
  desktop.calendars.unreadable = true;
  QMReminderManager manager{desktop.platform};
  manager.removeTallyvaneRemindersForBillName("Rent");
  EXPECT_THAT(desktop.log.lines, ElementsAre("Calendar error, using default"));
  manager.createTallyvaneReminderForBill(reminding("A1", "Rent", daysFromToday(5)));
  EXPECT_THAT(desktop.log.lines, ElementsAre("Calendar error, using default", "Updating Reminder"));
  EXPECT_TRUE(desktop.calendars.calendarList.empty()) << "no second calendar of the same name";
  EXPECT_EQ(desktop.notifications.scheduledList.size(), 1U);
}

TEST_F(Reminders, SpeakTheUsersLanguage) {
  desktop.region.words = bracketed;
  QMReminderManager{desktop.platform}.createTallyvaneReminderForBill(reminding("A1", "Rent", daysFromToday(5)));
  EXPECT_EQ(desktop.calendars.eventList.at(0).title, "[Pay ]Rent");
  const UserNotification& notification = desktop.notifications.scheduledList.at(0);
  EXPECT_EQ(notification.title, "[Pay ]Rent");
  EXPECT_EQ(notification.informativeText, "[Bill is due on] Mon, Mar 15, 2027");
  EXPECT_EQ(notification.actionButtonTitle, "[View]");
  QMReminderManager{desktop.platform}.removeTallyvaneRemindersForBillName("Rent");
  EXPECT_THAT(desktop.calendars.eventList, IsEmpty());
}

TEST_F(Reminders, FailuresOfTheCalendarAreAbsorbedAndKeptForTheOperator) {
  desktop.calendars.failing = true;
  QMReminderManager{desktop.platform}.createTallyvaneReminderForBill(reminding("A1", "Rent", daysFromToday(5)));
  EXPECT_EQ(desktop.notifications.scheduledList.size(), 1U);
  EXPECT_THAT(desktop.log.diagnostics, Contains("A calendar event was not saved: no room"));
  EXPECT_THAT(desktop.log.lines, ElementsAre("Updating Reminder"));
}

TEST_F(Reminders, EachKindHasItsOwnSwitch) {
  const std::pair<std::string, bool (QMReminderManager::*)() const> switches[] = {
      {"QMRemindersTasks", &QMReminderManager::shouldAddTasks},
      {"QMReminderEvents", &QMReminderManager::shouldAddEvents},
      {"QMEnableNotificationCenter", &QMReminderManager::shouldAddNotifications},
      {"QMEmailsEnabled", &QMReminderManager::shouldAddEmails}};
  const QMReminderManager manager{desktop.platform};
  for (const auto& [on, shouldAdd] : switches) {
    desktop.defaults.content = Dictionary{{on, true}};
    for (const auto& [each, shouldAddEach] : switches) EXPECT_EQ((manager.*shouldAddEach)(), each == on) << each << on;
  }
}

TEST_F(Reminders, NeedADueDateAndAPlaceToGo) {
  const QMReminderManager manager{desktop.platform};
  QMReminderManager{desktop.platform}.createTallyvaneReminderForBill(
      without(reminding("A1", "Rent", daysFromToday(5)), "DueDate"));
  desktop.defaults.content.set("QMReminderEvents", false);
  desktop.platform.notifications = nullptr;
  EXPECT_FALSE(manager.shouldAddNotifications());
  QMReminderManager{desktop.platform}.createTallyvaneReminderForBill(reminding("A1", "Rent", daysFromToday(5)));
  QMReminderManager{desktop.platform}.removeNotificationCenterRemindersForBid("A1");
  EXPECT_THAT(desktop.calendars.eventList, IsEmpty());
  EXPECT_THAT(desktop.notifications.scheduledList, IsEmpty());
}

}  // namespace
}  // namespace tallyvane::testing
