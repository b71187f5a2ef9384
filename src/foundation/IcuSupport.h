// The few things that everything built on ICU shares.
#pragma once

#include <unicode/basictz.h>
#include <unicode/calendar.h>
#include <unicode/gregocal.h>
#include <unicode/unistr.h>

#include <memory>
#include <string>
#include <string_view>

#include "foundation/Date.h"
#include "foundation/Region.h"

namespace tallyvane {

/// The range of what a calendar can hold. std::chrono's years end a little beyond it on both sides, so that the local
/// time of any instant in it, in any zone, is still a date.
inline constexpr Date earliestDate = std::chrono::sys_days{std::chrono::year{-32766} / 1 / 1};
inline constexpr Date latestDate = std::chrono::sys_days{std::chrono::year{32766} / 12 / 31};

/// Throws std::runtime_error when ICU lacks the data that Tallyvane cannot do without.
void requireIcu(UErrorCode status, const char* what);

[[nodiscard]] std::string utf8Of(const icu::UnicodeString& text);
[[nodiscard]] icu::UnicodeString unicodeOf(std::string_view utf8);

/// ICU counts milliseconds. An instant beyond the calendar's range is its nearest end, in both directions.
[[nodiscard]] UDate icuDateOf(Date date);
[[nodiscard]] Date dateOfIcu(UDate date);

/// The zone of an identifier; UTC for an unknown one.
[[nodiscard]] std::unique_ptr<icu::BasicTimeZone> zoneOf(const Region& region);
/// The calendar system of the region's locale in its zone. Those that share the Gregorian months have no Julian past,
/// so that they agree with std::chrono about every day.
[[nodiscard]] std::unique_ptr<icu::Calendar> calendarSystemOf(const Region& region);
[[nodiscard]] std::unique_ptr<icu::Calendar> gregorianCalendarOf(const Region& region);

}  // namespace tallyvane
