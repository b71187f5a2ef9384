#include <fmt/format.h>

#include "foundation/Calendar.h"
#include "foundation/Texts.h"
#include "schedule/DateDescription.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane {

namespace {

constexpr std::int64_t secondsPerDay = 86400;
constexpr std::int64_t horizonInDays = 10000;  ///< further away reads as never

std::string counted(const Region& region, std::string_view lead, std::int64_t number, std::string_view unit) {
  return fmt::format("{} {} {}", region.localized(lead), number, region.localized(unit));
}

/// First and last number of the calendar's weekday range: Sunday and Saturday in every locale, also where people rest
/// on Friday; deliberate.
bool isWeekend(const Calendar& calendar, Date date) {
  const int weekday = calendar.weekday(date);
  return weekday == 1 || weekday == 7;
}

}  // namespace

Date QMBillsLoader::normalizedDate(Date date) const { return Calendar::of(platform_.region).startOfDay(date); }

std::int64_t QMBillsLoader::createSortableDueDateWithDueDateAndCurrentDate(Date due, Date current) const {
  return wholeSecondsBetween(normalizedDate(current), normalizedDate(due));
}

// The cut makes tomorrow "Due today" when a clock change makes today short; deliberate.
std::int64_t QMBillsLoader::getDaysApartWithDateAndCurrentDate(Date due, Date current) const {
  return createSortableDueDateWithDueDateAndCurrentDate(due, current) / secondsPerDay;
}

// The bands are uneven on purpose: exactly a week reads as a week but 8 to 28 days are counted in days, "about" holds
// for 29 to 31 and 59 to 61 days only, and a year has no plural.
std::string QMBillsLoader::createHumanDueDateWithDueDateAndCurrentDate(Date due, Date current) const {
  const Region& region = platform_.region;
  const std::int64_t d = getDaysApartWithDateAndCurrentDate(due, current);
  if (d < -1) return counted(region, "Overdue by", -d, "days");
  if (d == -1) return counted(region, "Overdue by", 1, "day");
  if (d == 0) return region.localized("Due today");
  if (d == 1) return counted(region, "Due in", 1, "day");
  if (d == 7) return counted(region, "Due in", 1, "week");
  if (d <= 28) return counted(region, "Due in", d, "days");
  if (d <= 31) return counted(region, "Due in about", 1, "month");
  if (d <= 58) return counted(region, "Due in over", 1, "month");
  if (d <= 61) return counted(region, "Due in about", 2, "months");
  if (d <= 365) return counted(region, "Due in over", d / 30, "months");
  if (d <= horizonInDays) return counted(region, "Due in over", 1, "year");
  return region.localized("Never");
}

bool QMBillsLoader::isBeyondHorizon(Date date) const {
  const std::int64_t d = getDaysApartWithDateAndCurrentDate(date, platform_.clock.now());
  return d < -horizonInDays || d > horizonInDays;
}

std::string QMBillsLoader::createDueDateStringWithDate(Date date) const {
  if (isBeyondHorizon(date)) return platform_.region.localized("Never");
  return formattedDate(platform_.region, date, "EEEMMMdyyyy");
}

std::string QMBillsLoader::createShortDueDateStringWithDueDate(Date date) const {
  if (isBeyondHorizon(date)) return platform_.region.localized("Never");
  return formattedDate(platform_.region, date, "MMMd");
}

std::string QMBillsLoader::createDayStringWithDate(Date date) const {
  if (isBeyondHorizon(date)) return platform_.region.localized(" ");  // one blank, looked up as a word; deliberate
  return formattedDate(platform_.region, date, "EEEE");
}

bool QMBillsLoader::isDueDateInThisMonth(Date due, Date reference) const {
  const Calendar& calendar = Calendar::of(platform_.region);
  const DateFields left = calendar.fields(due);
  const DateFields right = calendar.fields(reference);
  return left.month == right.month && left.year == right.year;
}

std::optional<Date> QMBillsLoader::modifyDueDateToAvoidWeekendsWithAmount(Date due, std::int64_t step) const {
  const Calendar& calendar = Calendar::of(platform_.region);
  if (!isWeekend(calendar, due)) return std::nullopt;
  platform_.log.line("weekend!");
  Date moved = calendar.adding(due, {.days = step});
  platform_.log.line(fmt::format("nextDate: {} ...", dateDescription(moved)));
  // Logged before the second step, and there is no third; deliberate.
  if (isWeekend(calendar, moved)) moved = calendar.adding(moved, {.days = step});
  return moved;
}

std::string QMBillsLoader::currencyFormattedNumber(const Value* number) const {
  return currencyText(platform_.region, number);
}

std::string QMBillsLoader::numberFormattedNumber(const Value* number) const {
  return decimalText(platform_.region, number);
}

std::string QMBillsLoader::formattedTimesPaidWithPayments(const Array* payments) const {
  const auto times = static_cast<std::int32_t>(payments == nullptr ? 0 : payments->size());
  return counted(platform_.region, "Paid", times, times == 1 ? "time" : "times");
}

}  // namespace tallyvane
