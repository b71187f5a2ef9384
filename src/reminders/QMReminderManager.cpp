#include "reminders/QMReminderManager.h"

#include <algorithm>

#include "foundation/Calendar.h"
#include "foundation/NumberReading.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

constexpr int localSourceType = 0;
constexpr int searchedMonthsEachWay = 13;

std::string reminderTitle(const Region& region, const std::string& name) { return region.localized("Pay ") + name; }

std::string nameOf(const Dictionary& bill) { return bill.valueOr(key::Name, std::string()); }

/// The product goes on after a failure; the reason is kept where an operator finds it.
void note(Log& log, std::string_view what, const Result<>& outcome) {
  if (!outcome) log.diagnostic(std::string(what) + ": " + outcome.error());
}

/// The title at the chosen place of the user's list; "Tallyvane" when the place is outside it, nothing without a list.
std::optional<std::string> chosenCalendar(UserDefaults& defaults) {
  const std::optional<Array> list = settingOf<Array>(defaults, key::CalendarList);
  if (!list) return std::nullopt;
  const auto index = static_cast<std::uint32_t>(int32Setting(defaults, key::ReminderCalendarNumber));
  if (index >= list->size()) return "Tallyvane";
  const auto* title = (*list)[index].get<std::string>();
  return title == nullptr ? std::nullopt : std::optional(*title);
}

std::vector<UserNotification> ofBill(std::vector<UserNotification> notifications, const std::string& bid) {
  std::erase_if(notifications, [&](const UserNotification& notification) {
    const auto* owner = notification.userInfo.get<std::string>(key::Bid);
    return owner == nullptr || *owner != bid;
  });
  return notifications;
}

CalendarEvent eventForBill(CalendarStore& store, const std::string& calendar, const std::string& title, Date due,
                           Date alarm) {
  CalendarEvent event = store.newEvent();
  event.calendar = calendar;
  event.title = title;
  event.start = due;
  event.end = due;
  event.allDay = true;
  event.alarms = {Alarm{alarm, "Submarine"}};  // in place of those that the calendar adds by default
  return event;
}

UserNotification notificationForBill(const Platform& platform, const Dictionary& bill, Date due, Date alarm) {
  const Region& region = platform.region;
  UserNotification notification;
  notification.title = reminderTitle(region, nameOf(bill));
  notification.informativeText =
      region.localized("Bill is due on") + " " + QMBillsLoader{platform}.createDueDateStringWithDate(due);
  notification.actionButtonTitle = region.localized("View");
  notification.hasActionButton = true;
  notification.userInfo.set(key::Bid, bill.valueOr(key::Bid, std::string()));
  notification.soundName = "default";
  notification.deliveryDate = alarm;
  return notification;
}

}  // namespace

std::optional<std::string> QMReminderManager::tallyvaneCalendar() {
  if (!tallyvaneCalendar_) tallyvaneCalendar_ = chosenCalendar(platform_.defaults);
  return tallyvaneCalendar_;
}

void QMReminderManager::checkForNotificationsToAddWithBillList(const std::vector<Dictionary>& bills) {
  for (const Dictionary& bill : bills) {
    if (!boolValue(bill, key::RemindMe)) continue;
    removeTallyvaneRemindersForBillName(nameOf(bill));
    createTallyvaneReminderForBill(bill);
  }
}

void QMReminderManager::createTallyvaneReminderForBill(const Dictionary& bill) {
  platform_.log.line("Updating Reminder");
  const Date* due = bill.get<Date>(key::DueDate);
  const std::optional<Date> alarm = calculateAlarmDateWithBill(bill);
  if (due == nullptr || !alarm) return;
  if (shouldAddEvents()) addEvent(bill, *due, *alarm);
  if (shouldAddNotifications()) {
    note(platform_.log, "A notification was not scheduled",
         platform_.notifications->schedule(notificationForBill(platform_, bill, *due, *alarm)));
  }
}

void QMReminderManager::addEvent(const Dictionary& bill, Date due, Date alarm) {
  const std::optional<std::string> calendarName = tallyvaneCalendar();
  if (!calendarName) {
    platform_.log.diagnostic("No calendar is chosen in QMCalendarList; no event was made for " + nameOf(bill));
    return;
  }
  CalendarStore& store = platform_.calendars;
  const std::optional<std::vector<EventCalendar>> calendars = readCalendars();
  if (!calendars) return;  // not as if there were none: that would make a second calendar of the same name
  const EventCalendar calendar = createCalendarInCalendars(*calendarName, *calendars);
  const std::string title = reminderTitle(platform_.region, nameOf(bill));
  note(platform_.log, "A calendar event was not saved",
       store.save(eventForBill(store, calendar.identifier, title, due, alarm)));
}

void QMReminderManager::removeTallyvaneRemindersForBillName(const std::string& name) {
  if (const auto calendar = findCalendarWithName(tallyvaneCalendar())) {
    removeExistingCalendarEventsFromCalendarWithBillName(*calendar, reminderTitle(platform_.region, name));
  }
}

void QMReminderManager::removeNotificationCenterRemindersForBid(const std::string& bid) {
  UserNotificationCenter* center = platform_.notifications;
  if (center == nullptr) return;
  const auto delivered = ofBill(center->delivered(), bid);
  const auto scheduled = ofBill(center->scheduled(), bid);
  for (const auto& notification : delivered) {
    note(platform_.log, "A notification was not removed", center->removeDelivered(notification));
  }
  for (const auto& notification : scheduled) {
    note(platform_.log, "A scheduled notification was not removed", center->removeScheduled(notification));
  }
}

void QMReminderManager::removeExistingCalendarEventsFromCalendarWithBillName(const EventCalendar& calendar,
                                                                             const std::string& title) {
  const Calendar& userCalendar = Calendar::of(platform_.region);
  const Date now = platform_.clock.now();
  const Date from = userCalendar.adding(now, {.months = -searchedMonthsEachWay});
  const Date to = userCalendar.adding(now, {.months = searchedMonthsEachWay});
  for (const CalendarEvent& event : platform_.calendars.events(calendar.identifier, from, to)) {
    if (event.title != title) continue;
    note(platform_.log, "A calendar event was not removed", platform_.calendars.remove(event));
  }
}

void QMReminderManager::removeExistingTasksFromCalendarWithBillName(const EventCalendar& /*calendar*/,
                                                                    const std::string& /*title*/) {}

EventCalendar QMReminderManager::createCalendarInCalendars(const std::string& name,
                                                           const std::vector<EventCalendar>& calendars) {
  for (const EventCalendar& calendar : calendars) {
    if (calendar.title == name) return calendar;
  }
  EventCalendar made{.identifier = {}, .title = name, .source = std::nullopt};
  for (const CalendarSource& source : platform_.calendars.sources()) {
    if (source.type != localSourceType) continue;
    made.source = source.identifier;
    break;
  }
  const Result<EventCalendar> saved = platform_.calendars.save(made);
  if (!saved) platform_.log.diagnostic("The calendar " + name + " was not saved: " + saved.error());
  return saved ? *saved : made;
}

std::optional<EventCalendar> QMReminderManager::findCalendarWithName(const std::optional<std::string>& name) {
  const std::optional<std::vector<EventCalendar>> calendars = readCalendars();
  if (!calendars) {
    platform_.log.line("Calendar error, using default");
    return std::nullopt;
  }
  const auto found = std::find_if(calendars->begin(), calendars->end(),
                                  [&](const EventCalendar& calendar) { return calendar.title == name; });
  return found == calendars->end() ? std::nullopt : std::optional(*found);
}

std::optional<std::vector<EventCalendar>> QMReminderManager::readCalendars() {
  try {
    return platform_.calendars.calendars();
  } catch (const CalendarStoreError& error) {
    platform_.log.diagnostic(std::string("The calendars cannot be read: ") + error.what());
    return std::nullopt;
  }
}

std::optional<Date> QMReminderManager::calculateAlarmDateWithBill(const Dictionary& bill) const {
  constexpr int defaultHour = 9;
  const Date* due = bill.get<Date>(key::DueDate);
  if (due == nullptr) return std::nullopt;
  const Calendar& calendar = Calendar::of(platform_.region);
  const CivilDay day = addDays(calendar.civilDay(*due), -std::int64_t{int32Value(bill, key::ReminderDays)});
  const std::optional<Date> time = settingOf<Date>(platform_.defaults, key::ReminderTime);
  if (!time) return calendar.wallTime(day, defaultHour, 0);
  const DateFields fields = calendar.fields(*time);
  return calendar.wallTime(day, fields.hour, fields.minute);
}

Date QMReminderManager::normalizedDate(Date date) const { return Calendar::of(platform_.region).startOfDay(date); }

bool QMReminderManager::shouldAddTasks() const { return boolSetting(platform_.defaults, key::RemindersTasks); }

bool QMReminderManager::shouldAddEvents() const { return boolSetting(platform_.defaults, key::ReminderEvents); }

bool QMReminderManager::shouldAddNotifications() const {
  return platform_.notifications != nullptr && boolSetting(platform_.defaults, key::EnableNotificationCenter);
}

bool QMReminderManager::shouldAddEmails() const { return boolSetting(platform_.defaults, key::EmailsEnabled); }

}  // namespace tallyvane
