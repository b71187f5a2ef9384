#include "foundation/IcuSupport.h"

#include <algorithm>
#include <stdexcept>

namespace tallyvane {

namespace {

void dropJulianPast(icu::Calendar& calendar) {
  constexpr UDate beforeAllDates = -8.64e15;
  UErrorCode status = U_ZERO_ERROR;
  if (auto* gregorian = dynamic_cast<icu::GregorianCalendar*>(&calendar))
    gregorian->setGregorianChange(beforeAllDates, status);
  requireIcu(status, "the Gregorian calendar");
}

}  // namespace

void requireIcu(UErrorCode status, const char* what) {
  if (U_FAILURE(status)) throw std::runtime_error(std::string("ICU cannot make ") + what + ": " + u_errorName(status));
}

std::string utf8Of(const icu::UnicodeString& text) {
  std::string utf8;
  text.toUTF8String(utf8);
  return utf8;
}

icu::UnicodeString unicodeOf(std::string_view utf8) {
  return icu::UnicodeString::fromUTF8({utf8.data(), static_cast<std::int32_t>(utf8.size())});
}

UDate icuDateOf(Date date) {
  const Date held = std::clamp(date, earliestDate, latestDate);
  return static_cast<UDate>(std::chrono::floor<std::chrono::milliseconds>(held.time_since_epoch()).count());
}

Date dateOfIcu(UDate date) {
  const UDate held = std::clamp(date, icuDateOf(earliestDate), icuDateOf(latestDate));
  return Date{std::chrono::milliseconds{static_cast<std::int64_t>(held)}};
}

std::unique_ptr<icu::BasicTimeZone> zoneOf(const Region& region) {
  const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(unicodeOf(region.timeZone)));
  const auto* basic = dynamic_cast<const icu::BasicTimeZone*>(zone.get());
  if (basic == nullptr) throw std::runtime_error("ICU gives no rules for the time zone " + region.timeZone);
  return std::unique_ptr<icu::BasicTimeZone>(basic->clone());
}

std::unique_ptr<icu::Calendar> calendarSystemOf(const Region& region) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Calendar> calendar(
      icu::Calendar::createInstance(zoneOf(region).release(), icu::Locale(region.locale.c_str()), status));
  requireIcu(status, "the calendar");
  dropJulianPast(*calendar);
  return calendar;
}

std::unique_ptr<icu::Calendar> gregorianCalendarOf(const Region& region) {
  UErrorCode status = U_ZERO_ERROR;
  auto calendar = std::make_unique<icu::GregorianCalendar>(zoneOf(region).release(), status);
  requireIcu(status, "the Gregorian calendar");
  dropJulianPast(*calendar);
  return calendar;
}

}  // namespace tallyvane
