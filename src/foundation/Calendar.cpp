#include "foundation/Calendar.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "foundation/IcuSupport.h"
#include "foundation/PerRegion.h"
#include "foundation/ZoneOffsets.h"

namespace tallyvane {

namespace {

using namespace std::chrono_literals;

// Nothing in the calendar's range is further apart than this, even in years of 13 months.
constexpr std::int64_t mostMonths = 900'000;
constexpr std::int64_t mostDays = 24'000'000;

constexpr CivilDay earliestDay = std::chrono::local_days{std::chrono::year{-32767} / 1 / 1};
constexpr CivilDay latestDay = std::chrono::local_days{std::chrono::year{32767} / 12 / 31};

using LocalTime = std::chrono::local_time<Date::duration>;

std::int32_t limited(std::int64_t step, std::int64_t most) {
  return static_cast<std::int32_t>(std::clamp(step, -most, most));
}

int field(const icu::Calendar& calendar, UCalendarDateFields which) {
  UErrorCode status = U_ZERO_ERROR;
  const int value = calendar.get(which, status);
  requireIcu(status, "a field of a date");
  return value;
}

Date timeOf(const icu::Calendar& calendar) {
  UErrorCode status = U_ZERO_ERROR;
  const UDate time = calendar.getTime(status);
  requireIcu(status, "a date from its fields");
  return dateOfIcu(time);
}

void setTime(icu::Calendar& calendar, Date date) {
  UErrorCode status = U_ZERO_ERROR;
  calendar.setTime(icuDateOf(date), status);
  requireIcu(status, "the fields of a date");
}

Date stepped(icu::Calendar& calendar, Date date, DateSteps steps) {
  constexpr std::int64_t mostWeeks = mostDays / 7;
  const Date held = std::clamp(date, earliestDate, latestDate);
  const Date::duration belowMilliseconds = held - std::chrono::floor<std::chrono::milliseconds>(held);
  const std::int64_t days = 7 * std::int64_t{limited(steps.weeks, mostWeeks)} + limited(steps.days, mostDays);
  UErrorCode status = U_ZERO_ERROR;
  setTime(calendar, held);
  calendar.add(UCAL_MONTH, limited(steps.months, mostMonths), status);
  calendar.add(UCAL_DAY_OF_MONTH, limited(days, 2 * mostDays), status);
  requireIcu(status, "a step from a date");
  return timeOf(calendar) + belowMilliseconds;
}

}  // namespace

// The calendars are ICU's working space: every operation sets them anew.
struct Calendar::Parts {
  std::unique_ptr<icu::BasicTimeZone> zone;
  std::unique_ptr<icu::Calendar> own;
  std::unique_ptr<icu::Calendar> gregorian;
  ZoneOffsets offsets{*zone};
  bool ownIsGregorian = own->getType() == std::string_view("gregorian");
  std::unordered_map<CivilDay::rep, CalendarMonth>
      months{};  // of other calendars, by civil day; asked of ICU once each

  [[nodiscard]] LocalTime local(Date date) {
    const Date held = std::clamp(date, earliestDate, latestDate);
    return LocalTime{held.time_since_epoch() + offsets.at(held).offset};
  }

  // The day starts at the first instant, going forward, at which the clock on the wall is not before midnight. That is
  // midnight itself or, where a clock change skips it, the change; and the first of two midnights.
  [[nodiscard]] Date startOfDay(CivilDay day) {
    const Date midnightInUtc{std::clamp(day, earliestDay, latestDay).time_since_epoch()};
    OffsetSpan span = offsets.at(midnightInUtc - 24h);  // no zone is a day ahead: the wall is before midnight then
    while (midnightInUtc - span.offset >= span.to) span = offsets.at(span.to);
    return std::max(midnightInUtc - span.offset, span.from);
  }

  // ICU would take the second of two midnights and a skipped one as far behind the change as it was skipped.
  [[nodiscard]] Date added(icu::Calendar& calendar, Date date, DateSteps steps) {
    if (steps.months == 0 && steps.weeks == 0 && steps.days == 0) return date;
    const LocalTime wall = local(date);
    const Date result = stepped(calendar, date, steps);
    const bool atMidnight = wall == std::chrono::floor<std::chrono::days>(wall);
    return atMidnight ? startOfDay(std::chrono::floor<std::chrono::days>(local(result))) : result;
  }
};

const Calendar& Calendar::of(const Region& region) {
  return perRegion<Calendar>(region, [](const Region& its) { return std::unique_ptr<Calendar>(new Calendar(its)); });
}

Calendar::Calendar(const Region& region)
    : parts_(new Parts{
          .zone = zoneOf(region), .own = calendarSystemOf(region), .gregorian = gregorianCalendarOf(region)}) {}

Calendar::~Calendar() = default;

CivilDay Calendar::civilDay(Date date) const { return std::chrono::floor<std::chrono::days>(parts_->local(date)); }

Date Calendar::startOfDay(CivilDay day) const { return parts_->startOfDay(day); }

Date Calendar::wallTime(CivilDay day, int hour, int minute) const {
  if (hour == 0 && minute == 0) return startOfDay(day);
  const Date inUtc = Date{std::clamp(day, earliestDay, latestDay).time_since_epoch()} + std::chrono::hours{hour} +
                     std::chrono::minutes{minute};
  std::int32_t standard = 0;
  std::int32_t saving = 0;
  UErrorCode status = U_ZERO_ERROR;
  parts_->zone->getOffsetFromLocal(icuDateOf(inUtc), UCAL_TZ_LOCAL_FORMER, UCAL_TZ_LOCAL_LATTER, standard, saving,
                                   status);
  requireIcu(status, "the offset of a time zone");
  return inUtc - std::chrono::milliseconds{standard + saving};
}

int Calendar::weekday(Date date) const {
  return static_cast<int>(std::chrono::weekday{civilDay(date)}.c_encoding()) + 1;
}

DateFields Calendar::fields(Date date) const {
  icu::Calendar& own = *parts_->own;
  setTime(own, date);
  return {.era = field(own, UCAL_ERA),
          .year = field(own, UCAL_YEAR),
          .month = field(own, UCAL_MONTH) + 1,
          .day = field(own, UCAL_DAY_OF_MONTH),
          .weekday = field(own, UCAL_DAY_OF_WEEK),
          .hour = field(own, UCAL_HOUR_OF_DAY),
          .minute = field(own, UCAL_MINUTE)};
}

CalendarMonth Calendar::month(Date date) const {
  const CivilDay day = civilDay(date);
  if (parts_->ownIsGregorian) {
    const std::chrono::year_month_day ymd{day};
    const int year{ymd.year()};
    const auto month = static_cast<int>(unsigned{ymd.month()});
    return year > 0 ? CalendarMonth{month, year, 1} : CalendarMonth{month, 1 - year, 0};
  }
  const auto [known, isNew] = parts_->months.try_emplace(day.time_since_epoch().count());
  if (isNew) {
    const DateFields its = fields(date);
    known->second = {its.month, its.year, its.era};
  }
  return known->second;
}

// Noon is asked of ICU, because clock changes leave it alone; the day's start is then ours. The era of a fixed recent
// day stands for the current one, which only the calendars that count years anew (by reign, by cycle) need.
Date Calendar::date(int year, int month, int day) const {
  constexpr int mostYears = 40'000;
  constexpr Date recent = std::chrono::sys_days{std::chrono::year{2026} / 7 / 1};
  icu::Calendar& own = *parts_->own;
  setTime(own, recent);
  const int era = field(own, UCAL_ERA);
  own.clear();
  own.set(UCAL_ERA, era);
  own.set(limited(year, mostYears), limited(std::int64_t{month} - 1, mostMonths), limited(day, mostDays), 12, 0);
  return startOfDay(timeOf(own));
}

Date Calendar::adding(Date date, DateSteps steps) const { return parts_->added(*parts_->own, date, steps); }

Date Calendar::addingGregorian(Date date, DateSteps steps) const {
  return parts_->added(*parts_->gregorian, date, steps);
}

CivilDay addDays(CivilDay day, std::int64_t count) {
  const std::chrono::days step{limited(count, 2 * mostDays)};
  return std::clamp(std::clamp(day, earliestDay, latestDay) + step, earliestDay, latestDay);
}

}  // namespace tallyvane
