#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/Region.h"

namespace tallyvane::cli {

/// A name in plain text and its number from 1.
using NumberedName = std::pair<std::string, int>;

/// Months of the locale's own calendar system, in its language: long and short, as they stand in a date and alone.
[[nodiscard]] std::vector<NumberedName> ownMonthNames(const Region& region);
/// The Gregorian months in English.
[[nodiscard]] std::vector<NumberedName> englishMonthNames();
/// The weekdays in the locale's language and in English; 1 is Sunday.
[[nodiscard]] std::vector<NumberedName> weekdayNames(const Region& region);

/// Words that stand between the figures and the month's name: "of", and those of the locale ("de").
[[nodiscard]] std::vector<std::string> dateFillers(const Region& region);

enum class DatePart { year, month, day };
/// The order in which the locale writes year, month and day in figures.
[[nodiscard]] std::vector<DatePart> numericDateOrder(const Region& region);

}  // namespace tallyvane::cli
