#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Result.h"

namespace tallyvane {

/// Where calendars come from: 0 is the local computer; other types are servers.
struct CalendarSource {
  std::string identifier;
  int type = 0;
};

struct EventCalendar {
  std::string identifier;  ///< empty for a calendar that is not saved yet
  std::string title;
  std::optional<std::string> source;  ///< identifier of its source; none when the store has no fitting one
};

struct Alarm {
  Date at;  ///< an absolute moment
  std::string soundName;
  friend bool operator==(const Alarm&, const Alarm&) = default;
};

struct CalendarEvent {
  std::string identifier;  ///< empty for an event that is not saved yet
  std::string calendar;    ///< identifier of its calendar
  std::string title;
  Date start;  ///< of an all-day event only the day in the user's zone counts
  Date end;    ///< of an all-day event its last day, and only that counts
  bool allDay = false;
  std::vector<Alarm> alarms;
  friend bool operator==(const CalendarEvent&, const CalendarEvent&) = default;
};

/// The list of calendars cannot be read; what() says why.
class CalendarStoreError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The user's calendars of events. Every change is committed before the call returns and touches this one event only,
/// not the others of its series. Errors of reading the list of calendars are thrown as CalendarStoreError; all others
/// are results.
class CalendarStore {
 public:
  virtual ~CalendarStore() = default;
  [[nodiscard]] virtual std::vector<EventCalendar> calendars() = 0;
  [[nodiscard]] virtual std::vector<CalendarSource> sources() = 0;
  /// Saves a new calendar, whose title is not empty, and gives it back with its identifier.
  virtual Result<EventCalendar> save(const EventCalendar& calendar) = 0;
  /// A new event as the store makes it, possibly with alarms that its calendar adds by default.
  [[nodiscard]] virtual CalendarEvent newEvent() = 0;
  /// Saves a new event.
  virtual Result<> save(const CalendarEvent& event) = 0;
  virtual Result<> remove(const CalendarEvent& event) = 0;
  /// The events of one calendar that overlap the time from `from` to `to`, by start; each repetition of a series is an
  /// event. Days of all-day events are given as their first moments. No such calendar has no events.
  [[nodiscard]] virtual std::vector<CalendarEvent> events(const std::string& calendar, Date from, Date to) = 0;
};

}  // namespace tallyvane
