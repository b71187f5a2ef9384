#pragma once

#include <optional>
#include <string>

#include "foundation/Date.h"
#include "foundation/Region.h"
#include "foundation/Result.h"

namespace tallyvane::cli {

/// Which of its days a date without a year means, or a weekday: the nearest from today on, or the latest up to today.
enum class Side { ahead, back };

/// A day as a person writes it, not yet known to exist.
struct CalendarDay {
  bool isGregorian = true;  ///< else of the locale's own calendar system
  std::string year;         ///< in ASCII digits; "" when none was written
  int month = 0;
  int day = 0;
};

/// The start of that day, without a year of the one on that side of today. Fails with a sentence for a day that does
/// not exist.
[[nodiscard]] Result<Date> startOf(const CalendarDay& day, const Region& region, Date now, Side side);

/// Fails with a sentence when the date lies outside the years 1 to 9999.
[[nodiscard]] Result<Date> withinYears(Date date, const Region& region);

}  // namespace tallyvane::cli
