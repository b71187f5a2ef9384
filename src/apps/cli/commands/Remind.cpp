#include <algorithm>
#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/DisplayText.h"
#include "cli/terminal/Table.h"
#include "common/ReminderPass.h"
#include "common/Sentences.h"
#include "foundation/Calendar.h"
#include "reminders/QMReminderManager.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

/// What the pass places for one bill.
struct Placing {
  std::string bid;
  std::string name;
  Date due;
  Date at;  ///< when it rings
};

struct Plan {
  std::vector<Placing> placings;        ///< by their time
  std::optional<std::string> calendar;  ///< its title; none: no events
  bool notifications = false;

  [[nodiscard]] bool isNowhere() const { return !calendar && !notifications; }
};

Plan makePlan(const Platform& platform) {
  QMReminderManager reminders{platform};
  Plan plan;
  if (reminders.shouldAddEvents()) plan.calendar = reminders.tallyvaneCalendar();
  plan.notifications = reminders.shouldAddNotifications();
  programs::forEachBillToRemindOf(platform, [&](const Dictionary& bill) {
    const Date* due = bill.get<Date>(key::DueDate);
    const auto at = reminders.calculateAlarmDateWithBill(bill);
    if (due == nullptr || !at) return;
    const auto text = [&](std::string_view key) { return bill.valueOr(key, std::string()); };
    plan.placings.push_back({text(key::Bid), text(key::Name), *due, *at});
  });
  std::stable_sort(plan.placings.begin(), plan.placings.end(),
                   [](const Placing& a, const Placing& b) { return a.at < b.at; });
  return plan;
}

/// The events that are in the calendar now, from the first due date of the plan to the last: the operations of the
/// model tell nobody when they fail.
std::vector<CalendarEvent> placedEvents(const Platform& platform, const Plan& plan) {
  if (!plan.calendar || plan.placings.empty()) return {};
  const auto calendar = QMReminderManager{platform}.findCalendarWithName(*plan.calendar);
  if (!calendar) return {};
  const auto [first, last] = std::minmax_element(plan.placings.begin(), plan.placings.end(),
                                                 [](const Placing& a, const Placing& b) { return a.due < b.due; });
  const Date from = Calendar::of(platform.region).startOfDay(first->due);  // where the store has all-day events begin
  return platform.calendars.events(calendar->identifier, from, last->due);
}

bool hasEvent(const Platform& platform, const std::vector<CalendarEvent>& events, const Placing& placing) {
  const std::string title = platform.region.localized("Pay ") + placing.name;
  const Calendar& days = Calendar::of(platform.region);
  return std::any_of(events.begin(), events.end(), [&](const CalendarEvent& event) {
    return event.title == title && days.civilDay(event.start) == days.civilDay(placing.due);
  });
}

bool hasNotification(const std::vector<UserNotification>& scheduled, const Placing& placing) {
  return std::any_of(scheduled.begin(), scheduled.end(), [&](const UserNotification& notification) {
    return notification.userInfo.valueOr(key::Bid, std::string()) == placing.bid &&
           notification.deliveryDate == placing.at;
  });
}

/// Names of the bills whose reminders are not where the plan has them.
std::vector<std::string> missing(const Platform& platform, const Plan& plan) {
  std::vector<std::string> names;
  const auto events = placedEvents(platform, plan);
  const auto scheduled = plan.notifications ? platform.notifications->scheduled() : std::vector<UserNotification>();
  for (const Placing& placing : plan.placings) {
    const bool isThere = (!plan.calendar || hasEvent(platform, events, placing)) &&
                         (!plan.notifications || hasNotification(scheduled, placing));
    if (!isThere) names.push_back(placing.name);
  }
  return names;
}

Cell placeCell(const Plan& plan) {
  // translators: where a reminder is placed, in a table
  if (plan.isNowhere()) return wordCell(marked("nowhere"));
  if (!plan.calendar) return wordCell(marked("notification"));
  return plan.notifications ? sentenceCell("calendar \"{}\", notification", *plan.calendar)
                            : sentenceCell("calendar \"{}\"", *plan.calendar);
}

void printPlanJson(Session& session, const Plan& plan) {
  Json list = Json::array();
  for (const Placing& placing : plan.placings) {
    list.push_back({{"id", placing.bid},
                    {"name", placing.name},
                    {"due", isoDay(session.platform, placing.due)},
                    {"at", isoMinute(session.platform, placing.at)},
                    {"calendar", plan.calendar ? Json(*plan.calendar) : Json(nullptr)},
                    {"notification", plan.notifications}});
  }
  printJson(session.console, list);
}

void printPlan(Session& session, const Plan& plan) {
  const Platform& platform = session.platform;
  if (session.json) return printPlanJson(session, plan);
  const bool speaks = session.console.interactive();
  if (plan.placings.empty()) {
    if (speaks)
      session.console.line(sentence("No bill asks for reminders. Have one ask: {}", "tallyvane edit Rent --remind 3"));
    return;
  }
  Table table({{marked("Reminder"), false, 0, 0},
               {marked("Bill"), false, 16, 0},
               {marked("Due"), false, 0, 1},
               {marked("Where"), false, 8, 2}});
  for (const Placing& placing : plan.placings) {
    table.add({timeCell(platform, placing.at), placing.name,
               Cell(QMBillsLoader{platform}.createDueDateStringWithDate(placing.due), isoDay(platform, placing.due)),
               placeCell(plan)});
  }
  table.print(session.console);
  if (!plan.isNowhere() || !speaks) return;
  session.console.line();
  session.console.line(translated("Calendar events and notifications are both switched off. Switch one on:"));
  session.console.line("tallyvane settings set QMEnableNotificationCenter yes");
}

std::string listed(const std::vector<std::string>& names) {
  constexpr std::size_t most = 5;
  std::string text;
  for (std::size_t i = 0; i < std::min(names.size(), most); ++i) text += (i == 0 ? "" : ", ") + names[i];
  if (names.size() <= most) return text;
  const std::size_t further = names.size() - most;
  // translators: the names of some bills, and how many more there are
  return countedSentence(further, "{} and {} more", "{} and {} more", text, further);
}

void remind(Session& session, bool dryRun) {
  const Platform& platform = session.platform;
  requireReadableData(platform);
  if (dryRun) return printPlan(session, makePlan(platform));
  Plan plan;
  std::vector<std::string> notPlaced;
  session.write([&] {
    plan = makePlan(platform);
    if (const Result<> passed = programs::runReminderPass(platform); !passed)
      couldNot(sentence("The notifications stay as they were: {}.", passed.error()));
    notPlaced = missing(platform, plan);
  });
  if (!notPlaced.empty()) couldNot(sentence("Not all reminders could be placed, those of: {}.", listed(notPlaced)));
  printPlan(session, plan);
}

}  // namespace

void addRemind(CLI::App& app, Invocation& invocation) {
  auto dryRun = std::make_shared<bool>(false);
  CLI::App* command = addCommand(app, invocation,
                                 {"remind", marked("Place the reminders of all bills anew, and show where and when"),
                                  "tallyvane remind --dry-run"},
                                 [dryRun](Session& session) { remind(session, *dryRun); });
  command->add_flag("--dry-run", *dryRun, "Only show what would be placed");
}

}  // namespace tallyvane::cli
