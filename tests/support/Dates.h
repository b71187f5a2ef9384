// Dates, days and regions in few words.
#pragma once

#include <string>

#include "foundation/Date.h"
#include "foundation/Region.h"

namespace tallyvane::testing {

inline Region regionOf(std::string locale, std::string zone = "UTC") {
  return {.locale = std::move(locale), .timeZone = std::move(zone), .words = {}};
}

inline CivilDay civil(int year, unsigned month, unsigned day) {
  return std::chrono::local_days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}};
}

inline Date utc(int year, unsigned month, unsigned day, std::chrono::minutes time = {}) {
  return Date{civil(year, month, day).time_since_epoch()} + time;
}

/// In UTC: "2027-3-1 14:5:0".
inline std::string textOf(Date date) {
  const auto onDay = std::chrono::floor<std::chrono::days>(date);
  const std::chrono::year_month_day ymd{onDay};
  const auto inDay = (date - onDay) / std::chrono::seconds{1};
  return std::to_string(int{ymd.year()}) + "-" + std::to_string(unsigned{ymd.month()}) + "-" +
         std::to_string(unsigned{ymd.day()}) + " " + std::to_string(inDay / 3600) + ":" +
         std::to_string(inDay / 60 % 60) + ":" + std::to_string(inDay % 60);
}

}  // namespace tallyvane::testing
