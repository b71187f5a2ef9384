// Instants and civil days.
#pragma once

#include <chrono>
#include <cstdint>

namespace tallyvane {

/// An absolute instant, independent of any time zone. Files keep whole seconds.
using Date = std::chrono::sys_time<std::chrono::microseconds>;

/// A civil day of the proleptic Gregorian calendar as a clock on the wall shows it; which instants belong to it
/// depends on the time zone (Calendar). A type of its own, so that no instant passes for a day.
using CivilDay = std::chrono::local_days;

/// The first instants of the years 1 and 4001 (UTC): "never was" and "never will be".
inline constexpr Date distantPast = std::chrono::sys_days{std::chrono::year{1} / 1 / 1};
inline constexpr Date distantFuture = std::chrono::sys_days{std::chrono::year{4001} / 1 / 1};

/// Whole seconds from `from` to `to`, cut toward zero; the two lie within the years that a calendar holds.
constexpr std::int64_t wholeSecondsBetween(Date from, Date to) {
  return std::chrono::duration_cast<std::chrono::seconds>(to - from).count();
}

}  // namespace tallyvane
