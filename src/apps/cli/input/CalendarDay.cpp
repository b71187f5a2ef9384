#include "cli/input/CalendarDay.h"

#include <algorithm>

#include "cli/input/InputText.h"
#include "common/Sentences.h"
#include "foundation/Calendar.h"

namespace tallyvane::cli {

namespace {

constexpr int firstYear = 1;
constexpr int lastYear = 9999;
constexpr int longestMonth = 32;         // some calendar systems have one of 32 days
constexpr int yearsBetweenLeapDays = 8;  // at most

int gregorianYear(Date date, const Calendar& calendar) {
  return int{std::chrono::year_month_day{calendar.civilDay(date)}.year()};
}

// A day that the calendar runs on to another one does not exist.
std::optional<Date> existingDay(bool isGregorian, int year, int month, int day, const Calendar& calendar) {
  if (isGregorian) {
    if (month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
    const std::chrono::year_month_day ymd{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                                          std::chrono::day{static_cast<unsigned>(day)}};
    return ymd.ok() ? std::optional(calendar.startOfDay(std::chrono::local_days{ymd})) : std::nullopt;
  }
  const Date date = calendar.date(year, month, day);
  const DateFields fields = calendar.fields(date);
  const bool isThatDay = fields.year == year && fields.month == month && fields.day == day;
  return isThatDay ? std::optional(date) : std::nullopt;
}

// Two digits mean the year nearest to this one that ends in them.
std::optional<int> yearOf(const std::string& digits, int thisYear) {
  constexpr int century = 100;
  const auto number = wholeNumber(digits);
  if (!number || digits.size() == 4) return number;
  if (digits.size() != 2) return std::nullopt;
  const int earliest = thisYear - century / 2;
  return earliest + ((*number - earliest) % century + century) % century;
}

// translators: stands after "is not a date:", as do the other texts without a full stop
Error yearOutOfRange() { return {sentence("the year must be {} to {}", firstYear, lastYear)}; }

Error missingDay(const CalendarDay& day, int from, int to, const Calendar& calendar) {
  for (int last = std::min(day.day - 1, longestMonth); last > 0; --last)
    for (int year = from; year <= to; ++year)
      if (existingDay(day.isGregorian, year, day.month, last, calendar))
        return {from == to ? countedSentence(static_cast<std::size_t>(last), "that month has {} day",
                                             "that month has {} days", last)
                           : countedSentence(static_cast<std::size_t>(last), "that month has at most {} day",
                                             "that month has at most {} days", last)};
  return {day.day < 1 ? translated("days are counted from 1") : sentence("there is no month {}", day.month)};
}

}  // namespace

Result<Date> withinYears(Date date, const Region& region) {
  const int year = gregorianYear(date, Calendar::of(region));
  if (year < firstYear || year > lastYear) return yearOutOfRange();
  return date;
}

Result<Date> startOf(const CalendarDay& day, const Region& region, Date now, Side side) {
  const Calendar& calendar = Calendar::of(region);
  const int thisYear = day.isGregorian ? gregorianYear(now, calendar) : calendar.fields(now).year;
  const auto writtenYear = yearOf(day.year, thisYear);
  if (!day.year.empty() && !writtenYear) return Error{translated("the year must have four digits")};
  if (writtenYear && *writtenYear < firstYear) return yearOutOfRange();
  const int from = writtenYear.value_or(thisYear);
  const int tries = writtenYear ? 1 : 1 + yearsBetweenLeapDays;
  const int step = side == Side::ahead ? 1 : -1;
  for (int i = 0; i < tries; ++i) {
    const auto date = existingDay(day.isGregorian, from + i * step, day.month, day.day, calendar);
    const bool isOnSide = date && (side == Side::ahead ? *date >= calendar.startOfDay(now) : *date <= now);
    if (date && (writtenYear || isOnSide)) return withinYears(*date, region);
  }
  return missingDay(day, from, from + tries - 1, calendar);
}

}  // namespace tallyvane::cli
