#include "foundation/Calendar.h"
#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillText.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/DisplayText.h"
#include "cli/terminal/Table.h"
#include "common/Sentences.h"
#include "foundation/Texts.h"
#include "reminders/QMReminderManager.h"

namespace tallyvane::cli {

namespace {

/// As far as events of bills are looked for when they are placed anew.
constexpr int monthsEachWay = 13;

struct Listed {
  EventCalendar calendar;
  bool receives = false;  ///< events of bills are placed here
  std::vector<CalendarEvent> events;
};

struct Calendars {
  std::string folder;
  bool areOn = false;
  std::optional<std::string> chosen;  ///< title of the calendar for the events of bills, whether it is there or not
  std::vector<Listed> all;
};

std::vector<EventCalendar> requireCalendars(const Platform& platform) {
  try {
    return platform.calendars.calendars();
  } catch (const CalendarStoreError& error) {
    couldNot(sentence("The calendars cannot be read: {}.", error.what()));
  }
}

std::string localFolder(const Platform& platform) {
  for (const CalendarSource& source : platform.calendars.sources()) {
    if (source.type == 0) return source.identifier;
  }
  return {};
}

Calendars readCalendars(const Platform& platform) {
  QMReminderManager reminders{platform};
  Calendars found{localFolder(platform), reminders.shouldAddEvents(), reminders.tallyvaneCalendar(), {}};
  const auto receiving = reminders.findCalendarWithName(found.chosen);
  const Calendar& days = Calendar::of(platform.region);
  const Date now = platform.clock.now();
  for (const EventCalendar& calendar : requireCalendars(platform)) {
    found.all.push_back({calendar, receiving && receiving->identifier == calendar.identifier,
                         platform.calendars.events(calendar.identifier, days.adding(now, {.months = -monthsEachWay}),
                                                   days.adding(now, {.months = monthsEachWay}))});
  }
  return found;
}

Json eventJson(const Platform& platform, const CalendarEvent& event) {
  Json alarms = Json::array();
  for (const Alarm& alarm : event.alarms) alarms.push_back(isoMinute(platform, alarm.at));
  const auto moment = [&](Date date) { return event.allDay ? isoDay(platform, date) : isoMinute(platform, date); };
  return {{"title", event.title},
          {"start", moment(event.start)},
          {"end", moment(event.end)},
          {"allDay", event.allDay},
          {"alarms", alarms}};
}

void printCalendarsJson(Session& session, const Calendars& calendars) {
  Json list = Json::array();
  for (const Listed& listed : calendars.all) {
    Json events = Json::array();
    for (const CalendarEvent& event : listed.events) events.push_back(eventJson(session.platform, event));
    list.push_back({{"id", listed.calendar.identifier},
                    {"title", listed.calendar.title},
                    {"receives", listed.receives},
                    {"events", events}});
  }
  printJson(session.console, {{"folder", calendars.folder},
                              {"on", calendars.areOn},
                              {"chosen", calendars.chosen ? Json(*calendars.chosen) : Json(nullptr)},
                              {"calendars", list}});
}

Cell startCell(const Platform& platform, const CalendarEvent& event) {
  if (!event.allDay) return timeCell(platform, event.start);
  return {formattedDate(platform.region, event.start, "EEEMMMdyyyy"), isoDay(platform, event.start)};
}

Cell alarmCell(const Platform& platform, const CalendarEvent& event) {
  return event.alarms.empty() ? Cell("") : timeCell(platform, event.alarms.front().at);
}

Table tableOf(const Platform& platform, const Calendars& calendars) {
  Table table({{marked("When"), false, 0, 0}, {marked("Event"), false, 16, 0}, {marked("Alarm"), false, 0, 1}});
  for (const Listed& listed : calendars.all) {
    if (listed.events.empty()) continue;
    table.startSection(printable(listed.calendar.title));
    for (const CalendarEvent& event : listed.events) {
      table.add({startCell(platform, event), event.title, alarmCell(platform, event)});
    }
  }
  return table;
}

std::string described(const Listed& listed) {
  const std::size_t count = listed.events.size();
  const std::string& title = listed.calendar.title;
  return listed.receives
             ? countedSentence(count, "Calendar \"{}\": {} event, receives the bills' reminders",
                               "Calendar \"{}\": {} events, receives the bills' reminders", title, count)
             : countedSentence(count, "Calendar \"{}\": {} event", "Calendar \"{}\": {} events", title, count);
}

void printLines(Console& console, const std::string& text) {
  for (const std::string& line : wrapped(printable(text), console.terminal().width)) console.line(line);
}

void printOverview(Session& session, const Calendars& calendars) {
  Console& console = session.console;
  printLines(console, sentence("Folder: {}", calendars.folder));
  printLines(console, calendars.areOn
                          ? sentence("Events for bills: on, in the calendar \"{}\"", calendars.chosen.value_or(""))
                          : sentence("Events for bills: off. Switch them on: {}",
                                     "tallyvane settings set QMReminderEvents yes"));
  for (const Listed& listed : calendars.all) printLines(console, described(listed));
}

void printHookUp(Console& console, const std::string& folder) {
  console.line();
  printLines(console, sentence("khal shows them with path = {}/* and type = discover in its settings.", folder));
  printLines(console,
             translated("GNOME, KDE, Thunderbird and phones show them through a CalDAV server, to which vdirsyncer "
                        "carries this folder; docs/calendars.md says how."));
}

void showCalendars(Session& session) {
  const Calendars calendars = readCalendars(session.platform);
  if (session.json) return printCalendarsJson(session, calendars);
  const Table table = tableOf(session.platform, calendars);
  if (!session.console.interactive()) return table.print(session.console);
  printOverview(session, calendars);
  session.console.line();
  table.print(session.console);
  printHookUp(session.console, calendars.folder);
}

}  // namespace

void addCalendar(CLI::App& app, Invocation& invocation) {
  addCommand(app, invocation,
             {"calendar", marked("Say where the calendars are, list their events, and say how to show them elsewhere"),
              "tallyvane calendar"},
             showCalendars);
}

}  // namespace tallyvane::cli
