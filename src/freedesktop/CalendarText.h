// A whole calendar as iCalendar text (RFC 5545), for programs that take it in.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Result.h"

namespace tallyvane {

/// Every so many units; of months, possibly on certain days.
struct RecurrenceRule {
  enum class Unit { days, weeks, months };
  Unit unit = Unit::months;
  int interval = 1;
  std::vector<int> monthDays;
};

/// An event of a whole day. It recurs by the rule, or else on the further days.
struct DayEvent {
  std::string uid;
  std::string title;
  std::string description;
  CivilDay day;
  std::optional<RecurrenceRule> rule;
  std::vector<CivilDay> furtherDays;
  Date stamp;  ///< when it was last changed
};

/// With CRLF and folded lines. Days outside the years 1 to 9998, which the form cannot say, are left out; an error when
/// that leaves no event.
[[nodiscard]] Result<std::string> calendarText(const std::vector<DayEvent>& events);

}  // namespace tallyvane
