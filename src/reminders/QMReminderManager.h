// Calendar events and desktop notifications that remind of bills.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane {

/// Made fresh for each use. Errors of saving and removing are ignored by the product; they go to the log's diagnostics.
class QMReminderManager {
 public:
  explicit QMReminderManager(const Platform& platform) : platform_(platform) {}

  /// Title of the calendar that receives the events, worked out at first use and kept; nothing while the user has no
  /// list of calendars.
  [[nodiscard]] std::optional<std::string> tallyvaneCalendar();
  void setTallyvaneCalendar(std::string title) { tallyvaneCalendar_ = std::move(title); }
  [[nodiscard]] std::string reminderCalendar() const { return reminderCalendar_; }
  void setReminderCalendar(std::string title) { reminderCalendar_ = std::move(title); }

  /// Rebuilds the calendar event of each bill that wants reminders. Notifications are scheduled anew without removing
  /// the earlier ones: running it twice schedules a second; deliberate.
  void checkForNotificationsToAddWithBillList(const std::vector<Dictionary>& bills);
  /// Does nothing for a bill without a due date. Makes no event, but the notification, while the user has no list of
  /// calendars or the calendars cannot be read.
  void createTallyvaneReminderForBill(const Dictionary& bill);
  void removeTallyvaneRemindersForBillName(const std::string& name);
  void removeNotificationCenterRemindersForBid(const std::string& bid);
  /// Events with exactly this title, from 13 months before now to 13 months after.
  void removeExistingCalendarEventsFromCalendarWithBillName(const EventCalendar& calendar, const std::string& title);
  /// Does nothing: task reminders have only their switch; deliberate.
  void removeExistingTasksFromCalendarWithBillName(const EventCalendar& calendar, const std::string& title);
  [[nodiscard]] EventCalendar createCalendarInCalendars(const std::string& name,
                                                        const std::vector<EventCalendar>& calendars);
  [[nodiscard]] std::optional<EventCalendar> findCalendarWithName(const std::optional<std::string>& name);
  /// "QMReminderTime" as a clock on the wall shows it, also on the day of a clock change, on the day that lies
  /// "ReminderDays" before the due day; 09:00 while that was never set. No value without a due date.
  [[nodiscard]] std::optional<Date> calculateAlarmDateWithBill(const Dictionary& bill) const;
  [[nodiscard]] Date normalizedDate(Date date) const;

  [[nodiscard]] bool shouldAddTasks() const;
  [[nodiscard]] bool shouldAddEvents() const;
  [[nodiscard]] bool shouldAddNotifications() const;
  [[nodiscard]] bool shouldAddEmails() const;

 private:
  [[nodiscard]] std::optional<std::vector<EventCalendar>> readCalendars();
  void addEvent(const Dictionary& bill, Date due, Date alarm);

  const Platform& platform_;
  std::optional<std::string> tallyvaneCalendar_;
  std::string reminderCalendar_ = "Reminders";
};

}  // namespace tallyvane
