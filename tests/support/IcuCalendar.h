// What ICU's own calendar says about days and clock changes, to hold the product's calendar against.
#pragma once

#include <unicode/basictz.h>
#include <unicode/gregocal.h>

#include <memory>
#include <string>
#include <vector>

#include "foundation/Date.h"
#include "support/Dates.h"

namespace tallyvane::testing {

class IcuCalendar {
 public:
  /// Told to resolve midnights as the product does.
  explicit IcuCalendar(const std::string& zone)
      : calendar_(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone)), status_) {
    calendar_.setGregorianChange(-8.64e15, status_);
    calendar_.setSkippedWallTimeOption(UCAL_WALLTIME_NEXT_VALID);
    calendar_.setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
  }

  static std::vector<std::string> zones() {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::StringEnumeration> all(
        icu::TimeZone::createTimeZoneIDEnumeration(UCAL_ZONE_TYPE_CANONICAL, nullptr, nullptr, status));
    std::vector<std::string> names;
    while (const char* name = all->next(nullptr, status)) names.emplace_back(name);
    return names;
  }

  /// The instants from 1779 to 2033 at which the zone's clocks change.
  std::vector<Date> clockChanges() {
    const auto& rules = dynamic_cast<const icu::BasicTimeZone&>(calendar_.getTimeZone());
    std::vector<Date> changes;
    icu::TimeZoneTransition change;
    for (UDate at = -6e12; rules.getNextTransition(at, false, change) && at < 2e12; at = change.getTime())
      changes.push_back(dateOf(change.getTime()));
    return changes;
  }

  Date startOfDay(CivilDay day) {
    const std::chrono::year_month_day ymd{day};
    calendar_.clear();
    calendar_.set(int{ymd.year()}, static_cast<int>(unsigned{ymd.month()}) - 1, static_cast<int>(unsigned{ymd.day()}));
    return dateOf(calendar_.getTime(status_));
  }

  CivilDay civilDay(Date date) {
    using std::chrono::milliseconds;
    calendar_.setTime(static_cast<double>(std::chrono::floor<milliseconds>(date.time_since_epoch()).count()), status_);
    const auto field = [this](UCalendarDateFields which) { return calendar_.get(which, status_); };
    const int year = field(UCAL_ERA) == 1 ? field(UCAL_YEAR) : 1 - field(UCAL_YEAR);
    return civil(year, static_cast<unsigned>(field(UCAL_MONTH) + 1), static_cast<unsigned>(field(UCAL_DAY_OF_MONTH)));
  }

 private:
  static Date dateOf(UDate date) { return Date{std::chrono::milliseconds{static_cast<std::int64_t>(date)}}; }

  UErrorCode status_ = U_ZERO_ERROR;
  icu::GregorianCalendar calendar_;
};

}  // namespace tallyvane::testing
