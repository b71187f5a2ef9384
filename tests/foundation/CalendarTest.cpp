#include "foundation/Calendar.h"

#include <gtest/gtest.h>
#include <unicode/basictz.h>
#include <unicode/gregocal.h>

#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace tallyvane {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

Region regionIn(std::string zone, std::string locale = "en_US") {
  return {.locale = std::move(locale), .timeZone = std::move(zone), .words = {}};
}

Date utc(int y, unsigned m, unsigned d, minutes time = 0min, seconds extra = 0s) {
  return sys_days{year{y} / month{m} / day{d}} + time + extra;
}

CivilDay civil(int y, unsigned m, unsigned d) { return local_days{year{y} / month{m} / day{d}}; }

std::string textOf(Date date) {
  const auto onDay = floor<days>(date);
  const year_month_day ymd{onDay};
  const auto inDay = duration_cast<seconds>(date - onDay).count();
  return std::to_string(int{ymd.year()}) + "-" + std::to_string(unsigned{ymd.month()}) + "-" +
         std::to_string(unsigned{ymd.day()}) + " " + std::to_string(inDay / 3600) + ":" +
         std::to_string(inDay / 60 % 60) + ":" + std::to_string(inDay % 60);
}

// ICU's own calendar, told to resolve midnights as the product does.
std::unique_ptr<icu::GregorianCalendar> reference(const std::string& zone) {
  UErrorCode status = U_ZERO_ERROR;
  auto calendar = std::make_unique<icu::GregorianCalendar>(
      icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone)), status);
  calendar->setGregorianChange(-8.64e15, status);
  calendar->setSkippedWallTimeOption(UCAL_WALLTIME_NEXT_VALID);
  calendar->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
  EXPECT_TRUE(U_SUCCESS(status));
  return calendar;
}

double icuDate(Date date) { return static_cast<double>(floor<milliseconds>(date.time_since_epoch()).count()); }

Date referenceStart(icu::GregorianCalendar& calendar, CivilDay day) {
  const year_month_day ymd{day};
  UErrorCode status = U_ZERO_ERROR;
  calendar.clear();
  calendar.set(int{ymd.year()}, static_cast<int>(unsigned{ymd.month()}) - 1, static_cast<int>(unsigned{ymd.day()}));
  return Date{milliseconds{static_cast<std::int64_t>(calendar.getTime(status))}};
}

CivilDay referenceDay(icu::GregorianCalendar& calendar, Date date) {
  UErrorCode status = U_ZERO_ERROR;
  calendar.setTime(icuDate(date), status);
  const auto field = [&](UCalendarDateFields which) { return calendar.get(which, status); };
  const int y = field(UCAL_ERA) == 1 ? field(UCAL_YEAR) : 1 - field(UCAL_YEAR);
  return civil(y, static_cast<unsigned>(field(UCAL_MONTH) + 1), static_cast<unsigned>(field(UCAL_DAY_OF_MONTH)));
}

TEST(Calendar, StartsADayAtItsFirstInstantWhateverTheClockDoes) {
  const struct {
    const char* zone;
    CivilDay day;
    Date start;
  } rows[] = {
      {"UTC", civil(2027, 3, 1), utc(2027, 3, 1)},
      {"America/New_York", civil(2026, 7, 4), utc(2026, 7, 4, 4h)},
      {"America/Havana", civil(2026, 11, 1), utc(2026, 11, 1, 4h)},     // midnight comes twice: the first
      {"America/Havana", civil(2026, 3, 8), utc(2026, 3, 8, 5h)},       // no midnight: 1:00
      {"America/Sao_Paulo", civil(2018, 11, 4), utc(2018, 11, 4, 3h)},  // no midnight
      {"America/Sao_Paulo", civil(2018, 2, 18), utc(2018, 2, 18, 3h)},  // the hour before midnight comes twice
      {"Africa/Cairo", civil(2024, 4, 26), utc(2024, 4, 25, 22h)},      // no midnight
      {"Asia/Beirut", civil(2024, 3, 31), utc(2024, 3, 30, 22h)},       // no midnight
      {"Pacific/Apia", civil(2011, 12, 30), utc(2011, 12, 30, 10h)},    // no such day: the next one's start
      {"Pacific/Apia", civil(2011, 12, 31), utc(2011, 12, 30, 10h)},
      {"America/St_Johns", civil(2010, 11, 7), utc(2010, 11, 7, 2h + 30min)},  // back at 0:01: the first midnight
      {"America/Toronto", civil(1919, 3, 31), utc(1919, 3, 31, 4h + 30min)},   // 23:30 to 0:30
      {"Mars/Olympus", civil(2026, 7, 4), utc(2026, 7, 4)},
  };
  for (const auto& row : rows)
    EXPECT_EQ(textOf(Calendar::of(regionIn(row.zone)).startOfDay(row.day)), textOf(row.start))
        << row.zone << " on " << textOf(Date{row.day.time_since_epoch()});
}

TEST(Calendar, ReadsSkippedAndRepeatedWallTimesAsIcuDoes) {
  const Calendar& berlin = Calendar::of(regionIn("Europe/Berlin"));
  EXPECT_EQ(textOf(berlin.wallTime(civil(2026, 6, 1), 9, 30)), textOf(utc(2026, 6, 1, 7h + 30min)));
  EXPECT_EQ(textOf(berlin.wallTime(civil(2026, 3, 29), 2, 30)), textOf(utc(2026, 3, 29, 1h + 30min)));
  EXPECT_EQ(textOf(berlin.wallTime(civil(2026, 10, 25), 2, 30)), textOf(utc(2026, 10, 25, 1h + 30min)));
  const Calendar& havana = Calendar::of(regionIn("America/Havana"));
  EXPECT_EQ(textOf(havana.wallTime(civil(2026, 11, 1), 0, 0)), textOf(utc(2026, 11, 1, 4h)));
}

TEST(Calendar, AgreesWithIcuAboutEveryClockChangeOfEveryZone) {
  std::unique_ptr<icu::StringEnumeration> zones;
  UErrorCode status = U_ZERO_ERROR;
  zones.reset(icu::TimeZone::createTimeZoneIDEnumeration(UCAL_ZONE_TYPE_CANONICAL, nullptr, nullptr, status));
  ASSERT_TRUE(U_SUCCESS(status));
  while (const char* zone = zones->next(nullptr, status)) {
    const Calendar& calendar = Calendar::of(regionIn(zone));
    const auto icu = reference(zone);
    const auto& rules = dynamic_cast<const icu::BasicTimeZone&>(icu->getTimeZone());
    icu::TimeZoneTransition change;
    for (UDate at = -6e12; rules.getNextTransition(at, false, change) && at < 2e12; at = change.getTime()) {
      const Date moment{milliseconds{static_cast<std::int64_t>(change.getTime())}};
      for (const auto apart : {-1us, 0us, 1us})
        ASSERT_EQ(calendar.civilDay(moment + apart), referenceDay(*icu, moment + apart)) << zone << textOf(moment);
      for (int apart = -2; apart <= 2; ++apart) {
        const CivilDay day = calendar.civilDay(moment) + days{apart};
        ASSERT_EQ(textOf(calendar.startOfDay(day)), textOf(referenceStart(*icu, day))) << zone << textOf(moment);
      }
    }
  }
}

TEST(Calendar, AgreesWithIcuOnRandomDaysInAnyOrder) {
  std::mt19937 random(20270310);
  std::uniform_int_distribution<std::int64_t> anySecond(distantPast.time_since_epoch() / 1s,
                                                        distantFuture.time_since_epoch() / 1s);
  for (const char* zone : {"America/New_York", "Europe/Dublin", "Asia/Kolkata", "Australia/Lord_Howe",
                           "Africa/Casablanca", "Pacific/Apia", "America/Juneau", "Etc/GMT+12"}) {
    const Calendar& calendar = Calendar::of(regionIn(zone));
    const auto icu = reference(zone);
    for (int i = 0; i < 2000; ++i) {
      const Date date{seconds{anySecond(random)}};
      const CivilDay day = referenceDay(*icu, date);
      ASSERT_EQ(calendar.civilDay(date), day) << zone << " " << textOf(date);
      ASSERT_EQ(textOf(calendar.startOfDay(day)), textOf(referenceStart(*icu, day))) << zone << " " << textOf(date);
    }
  }
}

TEST(Calendar, StepsKeepTheWallTimeAndEndAtTheMonthsLastDay) {
  const struct {
    const char* zone;
    Date from;
    DateSteps steps;
    Date to;
  } rows[] = {
      {"UTC", utc(2027, 1, 31, 14h), {.months = 1}, utc(2027, 2, 28, 14h)},
      {"UTC", utc(2027, 2, 28), {.months = 1}, utc(2027, 3, 28)},
      {"UTC", utc(2028, 2, 29), {.months = -12}, utc(2027, 2, 28)},
      {"UTC", utc(2027, 1, 31), {.months = 1, .weeks = 1, .days = -2}, utc(2027, 3, 5)},
      {"UTC", utc(1582, 10, 4), {.days = 1}, utc(1582, 10, 5)},
      {"UTC", utc(1500, 2, 28), {.days = 1}, utc(1500, 3, 1)},
      {"UTC", utc(2027, 1, 1, 1h) + 123456us, {.days = 1}, utc(2027, 1, 2, 1h) + 123456us},
      {"Europe/Berlin", utc(2026, 3, 28, 8h), {.days = 1}, utc(2026, 3, 29, 7h)},
      {"Europe/Berlin", utc(2026, 2, 28, 23h), {.months = 1}, utc(2026, 3, 31, 22h)},  // 1 March to 1 April, midnight
      {"America/Havana", utc(2026, 10, 1, 4h), {.months = 1}, utc(2026, 11, 1, 4h)},   // the first of two midnights
      {"America/Havana", utc(2026, 2, 8, 5h), {.weeks = 4}, utc(2026, 3, 8, 5h)},      // no midnight
      {"America/Toronto", utc(1919, 3, 30, 5h), {.days = 1}, utc(1919, 3, 31, 4h + 30min)},
      {"Pacific/Apia", utc(2011, 12, 29, 10h), {.days = 1}, utc(2011, 12, 30, 10h)},  // 29 to 31 December
      {"Europe/Berlin", utc(2026, 10, 25, 0h + 30min), {}, utc(2026, 10, 25, 0h + 30min)},
  };
  for (const auto& row : rows) {
    const Calendar& calendar = Calendar::of(regionIn(row.zone));
    EXPECT_EQ(textOf(calendar.addingGregorian(row.from, row.steps)), textOf(row.to)) << row.zone << textOf(row.from);
    EXPECT_EQ(calendar.adding(row.from, row.steps), calendar.addingGregorian(row.from, row.steps)) << textOf(row.from);
  }
}

TEST(Calendar, CountsInTheLocalesOwnSystem) {
  const struct {
    const char* locale;
    int year, month, day;
    Date monthLater;
  } rows[] = {
      {"en_US", 2027, 3, 21, utc(2027, 4, 21)},
      {"th_TH", 2570, 3, 21, utc(2027, 4, 21)},
      {"fa_IR", 1406, 1, 1, utc(2027, 4, 21)},
      {"ar_SA", 1448, 10, 13, utc(2027, 4, 20)},
      {"ja_JP@calendar=japanese", 9, 3, 21, utc(2027, 4, 21)},
      {"he_IL@calendar=hebrew", 5787, 7, 12, utc(2027, 4, 19)},
      {"en_US@calendar=chinese", 44, 2, 14, utc(2027, 4, 20)},
  };
  for (const auto& row : rows) {
    const Calendar& calendar = Calendar::of(regionIn("UTC", row.locale));
    const Date date = utc(2027, 3, 21);
    const DateFields fields = calendar.fields(date + 14h + 5min);
    EXPECT_EQ(fields.year, row.year) << row.locale;
    EXPECT_EQ(fields.month, row.month) << row.locale;
    EXPECT_EQ(fields.day, row.day) << row.locale;
    EXPECT_EQ(fields.weekday, 1) << row.locale;
    EXPECT_EQ(fields.hour * 60 + fields.minute, 14 * 60 + 5) << row.locale;
    EXPECT_EQ(textOf(calendar.date(row.year, row.month, row.day)), textOf(date)) << row.locale;
    EXPECT_EQ(textOf(calendar.adding(date, {.months = 1})), textOf(row.monthLater)) << row.locale;
    EXPECT_EQ(textOf(calendar.addingGregorian(date, {.months = 1})), textOf(utc(2027, 4, 21))) << row.locale;
  }
}

TEST(Calendar, LetsMonthsAndDaysOfADateRunOn) {
  const Calendar& calendar = Calendar::of(regionIn("America/New_York"));
  EXPECT_EQ(textOf(calendar.date(2026, 13, 1)), textOf(utc(2027, 1, 1, 5h)));
  EXPECT_EQ(textOf(calendar.date(2027, 2, 31)), textOf(utc(2027, 3, 3, 5h)));
  EXPECT_EQ(textOf(calendar.date(2027, 3, 0)), textOf(utc(2027, 2, 28, 5h)));
}

TEST(Calendar, StopsAtTheEndsOfItsRangeForAnyDateAndStep) {
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
  constexpr int mostInt = std::numeric_limits<int>::max();
  constexpr int leastInt = std::numeric_limits<int>::min();
  for (const char* locale : {"en_US", "th_TH", "fa_IR", "ar_SA", "en_US@calendar=chinese", "en_US@calendar=hebrew"}) {
    const Calendar& calendar = Calendar::of(regionIn("America/New_York", locale));
    const Date end = calendar.adding(Date::max(), {.days = most});
    const Date start = calendar.adding(Date::min(), {.days = least});
    EXPECT_EQ(textOf(end), "32766-12-31 0:0:0") << locale;
    EXPECT_EQ(textOf(start), "-32766-1-1 0:0:0") << locale;
    for (const Date date : {Date::min(), distantPast, utc(2027, 3, 1), distantFuture, Date::max()}) {
      EXPECT_LE(calendar.startOfDay(date), std::max(date, start)) << locale;
      EXPECT_LT(abs(calendar.adding(date, {most, most, most}) - end), 24h) << locale;
      EXPECT_LT(abs(calendar.adding(date, {least, least, least}) - start), 24h) << locale;
      EXPECT_LT(abs(calendar.addingGregorian(date, {.months = most}) - end), 24h) << locale;
      EXPECT_LT(abs(calendar.addingGregorian(date, {.weeks = least}) - start), 24h) << locale;
      EXPECT_GE(calendar.fields(date).weekday, 1) << locale;
    }
    EXPECT_GT(calendar.date(mostInt, mostInt, mostInt), calendar.date(leastInt, leastInt, leastInt)) << locale;
  }
  const Calendar& calendar = Calendar::of(regionIn("Asia/Tokyo"));
  EXPECT_GT(calendar.wallTime(CivilDay::max(), mostInt, mostInt),
            calendar.wallTime(CivilDay::min(), leastInt, leastInt));
  EXPECT_GT(addDays(CivilDay::min(), most), addDays(CivilDay::max(), least));
  EXPECT_EQ(addDays(civil(2027, 2, 28), 1), civil(2027, 3, 1));
}

TEST(Calendar, IsOneForEachLocaleAndZone) {
  const Calendar* first = &Calendar::of(regionIn("Asia/Tokyo"));
  const Calendar* second = &Calendar::of(regionIn("Asia/Seoul"));
  EXPECT_NE(first, second);
  EXPECT_EQ(&Calendar::of(regionIn("Asia/Tokyo")), first);
  EXPECT_NE(&Calendar::of(regionIn("Asia/Tokyo", "th_TH")), first);
  EXPECT_EQ(first->civilDay(utc(2027, 3, 1, 15h)), civil(2027, 3, 2));
  EXPECT_EQ(first->weekday(utc(2027, 3, 1, 15h)), 3);
}

}  // namespace
}  // namespace tallyvane
