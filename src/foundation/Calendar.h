// Days, wall times and calendar arithmetic in the user's zone.
#pragma once

#include <cstdint>
#include <memory>

#include "foundation/Date.h"
#include "foundation/Region.h"

namespace tallyvane {

/// What a date reads as on the wall, in one calendar and zone.
struct DateFields {
  int era = 0;  ///< numbered as the calendar numbers its eras
  int year = 0;
  int month = 0;    ///< 1 is the calendar's first month
  int day = 0;      ///< 1 is the month's first day
  int weekday = 0;  ///< 1 Sunday … 7 Saturday
  int hour = 0;
  int minute = 0;
};

/// A month of one calendar. Two are equal when they are the same month of the same year of the same era.
struct CalendarMonth {
  int month = 0;  ///< 1 is the calendar's first month; some have a 13th
  int year = 0;
  int era = 0;
  friend bool operator==(const CalendarMonth&, const CalendarMonth&) = default;
};

/// Steps of one addition, applied from the largest unit to the smallest. A day that the target month does not have
/// becomes that month's last day; the wall time is kept. Steps so large that they leave the calendar's range stop at
/// its end.
struct DateSteps {
  std::int64_t months = 0;
  std::int64_t weeks = 0;
  std::int64_t days = 0;
};

/// The calendar of a region: its zone, and the calendar system of its locale (Gregorian for most). Days are kept by
/// std::chrono with the zone's offset looked up once per span between two clock changes; only the fields and steps go
/// through the calendar system. An unknown zone is UTC. Not for use by several threads at once: `of` gives each its
/// own.
class Calendar {
 public:
  /// The calling thread's calendar for the region's locale and zone; made at first use, kept, never moved.
  static const Calendar& of(const Region& region);

  ~Calendar();
  Calendar(const Calendar&) = delete;
  Calendar& operator=(const Calendar&) = delete;

  /// The civil day that an instant falls on.
  [[nodiscard]] CivilDay civilDay(Date date) const;
  /// Midnight at the start of a day. A midnight that a clock change skips is the first instant of its day; of a
  /// midnight that comes twice it is the first.
  [[nodiscard]] Date startOfDay(CivilDay day) const;
  [[nodiscard]] Date startOfDay(Date date) const { return startOfDay(civilDay(date)); }
  /// That hour and minute of that day on the wall; a skipped wall time is read with the offset before the clock change,
  /// a repeated one is the second of the two (both as ICU's calendar has it). Midnight is startOfDay.
  [[nodiscard]] Date wallTime(CivilDay day, int hour, int minute) const;
  /// 1 Sunday … 7 Saturday.
  [[nodiscard]] int weekday(Date date) const;

  [[nodiscard]] DateFields fields(Date date) const;
  /// The month of the fields, at a hundredth of their cost: for walks over many payments.
  [[nodiscard]] CalendarMonth month(Date date) const;
  /// Midnight of a year, month and day of the user's own calendar system and its current era; months and days beyond
  /// their range run on.
  [[nodiscard]] Date date(int year, int month, int day) const;
  /// Both leave the wall time as it is (midnight stays startOfDay); the first steps in the user's calendar system, the
  /// second in the Gregorian one.
  [[nodiscard]] Date adding(Date date, DateSteps steps) const;
  [[nodiscard]] Date addingGregorian(Date date, DateSteps steps) const;

 private:
  struct Parts;
  explicit Calendar(const Region& region);
  std::unique_ptr<Parts> parts_;
};

/// The day so many days later or earlier; stops at the ends of what a calendar can hold.
[[nodiscard]] CivilDay addDays(CivilDay day, std::int64_t count);

}  // namespace tallyvane
