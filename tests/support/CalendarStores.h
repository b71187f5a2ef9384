// Calendars in memory and in a folder, for the contract of their port.
#pragma once

#include "freedesktop/FolderCalendarStore.h"
#include "freedesktop/PosixFileStore.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {

struct CalendarsInMemory {
  FakeCalendarStore store;
};

struct CalendarsInAFolder {
  TemporaryFolder folder;
  std::string root = folder.path + "/made/at first use";
  PosixFileStore files{folder.path};
  FakeClock clock;
  Region region{"en_US", "America/New_York", {}};
  RecordingLog log;
  FolderCalendarStore store = over(files);

  FolderCalendarStore over(FileStore& decorated) {
    return {[this] { return root; }, decorated, clock, region, log};
  }
};

/// Midnight in New York in winter.
inline Date winterDay(int year, unsigned month, unsigned day) {
  return std::chrono::sys_days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}} +
         std::chrono::hours{5};
}

inline CalendarEvent allDayEvent(const std::string& calendar, const std::string& title, Date day) {
  CalendarEvent event;
  event.calendar = calendar;
  event.title = title;
  event.start = day;
  event.end = day;
  event.allDay = true;
  event.alarms = {Alarm{day - std::chrono::hours{15}, "Submarine"}};
  return event;
}

}  // namespace tallyvane::testing
