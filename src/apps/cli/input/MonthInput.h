#pragma once

#include <string_view>

#include "foundation/Date.h"
#include "foundation/Region.h"
#include "foundation/Result.h"

namespace tallyvane::cli {

/// A day of the month that a person means, for something that was paid in it; or a sentence on why there is none.
///
///   2027-02                  the user's month in which the first day of that Gregorian month lies
///   february, feb 2027       names as in a date; without a year, the latest such month that has begun
///   this month, last month
///   any day                  as readPaymentDate has it: the month in which it lies
[[nodiscard]] Result<Date> readMonth(const Region& region, Date now, std::string_view text);

}  // namespace tallyvane::cli
