#include "cli/input/NextDueDates.h"

#include <optional>

#include "foundation/Calendar.h"
#include "foundation/NumberReading.h"

namespace tallyvane::cli {

namespace {

// The 1st and the 15th of the user's own calendar system, at midnight.
Date nextTwicePerMonth(const Calendar& calendar, Date due) {
  constexpr int firstDay = 1;
  constexpr int secondDay = 15;
  constexpr int lastMonth = 12;
  const DateFields fields = calendar.fields(due);
  if (fields.day < secondDay) return calendar.date(fields.year, fields.month, secondDay);
  if (fields.month == lastMonth) return calendar.date(fields.year + 1, 1, firstDay);
  return calendar.date(fields.year, fields.month + 1, firstDay);
}

std::optional<Date> nextDueDate(const Calendar& calendar, Date due, std::int32_t count, std::int32_t kind) {
  switch (kind) {
    case 0:
      return calendar.addingGregorian(due, {.weeks = count});
    case 1:
      return nextTwicePerMonth(calendar, due);
    case 2:
      return calendar.addingGregorian(due, {.months = count});
    case 3:
      return calendar.addingGregorian(due, {.days = count});
    default:
      return std::nullopt;
  }
}

}  // namespace

std::vector<Date> nextDueDates(const Region& region, Date due, const Array& repeat, std::size_t count) {
  std::vector<Date> dates;
  if (repeat.size() < 2) return dates;
  const Calendar& calendar = Calendar::of(region);
  while (dates.size() < count) {
    const Date last = dates.empty() ? due : dates.back();
    const auto next = nextDueDate(calendar, last, int32Value(&repeat[0]), int32Value(&repeat[1]));
    if (!next || *next <= last || *next >= distantFuture) break;
    dates.push_back(*next);
  }
  return dates;
}

}  // namespace tallyvane::cli
