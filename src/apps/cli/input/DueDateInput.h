#pragma once

#include <string_view>

#include "foundation/Date.h"
#include "foundation/Region.h"
#include "foundation/Result.h"

namespace tallyvane::cli {

/// The start of the day that a person means, in the region's zone; or a sentence on why there is none.
///
///   2027-03-01                     always year, month and day of the Gregorian calendar
///   3/1/2027, 3/1                  in the order and the calendar system of the locale
///   1 Mar, March 1st, 1 März 2028  month names in English (Gregorian) and in the locale's language and calendar system
///   today, tomorrow, yesterday, +10d, +2w, +3m, +1y, in 10 days, -10d, 10 days ago
///   friday, next (last) friday     weekdays in English and in the locale's language
///
/// Case does not count. A date without a year, and a weekday, is the next such day from today on; "next" and
/// "last" leave today out. Years have four digits, or two for the nearest such year; 1 to 9999.
[[nodiscard]] Result<Date> readDueDate(const Region& region, Date now, std::string_view text);

/// The same for a day on which something was paid: a date without a year, and a weekday, is the latest such day up to
/// today, and a day ahead is refused.
[[nodiscard]] Result<Date> readPaymentDate(const Region& region, Date now, std::string_view text);

}  // namespace tallyvane::cli
