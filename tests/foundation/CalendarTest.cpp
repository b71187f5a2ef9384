#include "foundation/Calendar.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <random>

#include "support/IcuCalendar.h"

namespace tallyvane::testing {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

const Calendar& calendarIn(std::string zone, std::string locale = "en_US") {
  return Calendar::of(regionOf(std::move(locale), std::move(zone)));
}

TEST(Calendar, ReadsSkippedAndRepeatedWallTimesAsIcuDoes) {
  const Calendar& berlin = calendarIn("Europe/Berlin");
  EXPECT_EQ(textOf(berlin.wallTime(civil(2026, 3, 29), 2, 30)), "2026-3-29 1:30:0");
  EXPECT_EQ(textOf(berlin.wallTime(civil(2026, 10, 25), 2, 30)), "2026-10-25 1:30:0");
  EXPECT_EQ(textOf(calendarIn("America/Havana").wallTime(civil(2026, 11, 1), 0, 0)), "2026-11-1 4:0:0");
}

TEST(Calendar, AgreesWithIcuAboutEveryClockChangeOfEveryZone) {
  const auto zones = IcuCalendar::zones();
  ASSERT_GT(zones.size(), 300U);
  for (const std::string& zone : zones) {
    const Calendar& calendar = calendarIn(zone);
    IcuCalendar icu(zone);
    for (const Date moment : icu.clockChanges()) {
      for (const auto apart : {-1us, 0us, 1us})
        ASSERT_EQ(calendar.civilDay(moment + apart), icu.civilDay(moment + apart)) << zone << textOf(moment);
      for (int apart = -2; apart <= 2; ++apart) {
        const CivilDay day = calendar.civilDay(moment) + days{apart};
        ASSERT_EQ(textOf(calendar.startOfDay(day)), textOf(icu.startOfDay(day))) << zone << textOf(moment);
      }
    }
  }
}

TEST(Calendar, AgreesWithIcuOnRandomDaysInAnyOrder) {
  std::mt19937 random(20270310);
  std::uniform_int_distribution<std::int64_t> anySecond(distantPast.time_since_epoch() / 1s,
                                                        distantFuture.time_since_epoch() / 1s);
  for (const char* zone : {"America/New_York", "Europe/Dublin", "Australia/Lord_Howe", "Africa/Casablanca"}) {
    const Calendar& calendar = calendarIn(zone);
    IcuCalendar icu(zone);
    for (int i = 0; i < 2000; ++i) {
      const Date date{seconds{anySecond(random)}};
      const CivilDay day = icu.civilDay(date);
      ASSERT_EQ(calendar.civilDay(date), day) << zone << " " << textOf(date);
      ASSERT_EQ(textOf(calendar.startOfDay(day)), textOf(icu.startOfDay(day))) << zone << " " << textOf(date);
    }
  }
}

TEST(Calendar, TheMonthIsThatOfTheFieldsInEveryCalendarSystem) {
  std::mt19937 random(20270310);
  std::uniform_int_distribution<std::int64_t> anyDay(-800'000, 800'000);
  for (const char* locale : {"en_US", "th_TH", "fa_IR", "ja_JP@calendar=japanese", "he_IL@calendar=hebrew",
                             "am_ET@calendar=ethiopic", "zh_CN@calendar=chinese"}) {
    const Calendar& calendar = calendarIn("Pacific/Apia", locale);
    for (int i = 0; i < 2000; ++i) {
      const Date date = Date{days{anyDay(random) / (1 + i % 50)}} + 11h;
      const DateFields fields = calendar.fields(date);
      ASSERT_EQ(calendar.month(date), (CalendarMonth{fields.month, fields.year, fields.era})) << locale << textOf(date);
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
      {"UTC", utc(2028, 2, 29), {.months = -12}, utc(2027, 2, 28)},
      {"UTC", utc(2027, 1, 31), {.months = 1, .weeks = 1, .days = -2}, utc(2027, 3, 5)},
      {"UTC", utc(1582, 10, 4), {.days = 1}, utc(1582, 10, 5)},
      {"UTC", utc(2027, 1, 1, 1h) + 123456us, {.days = 1}, utc(2027, 1, 2, 1h) + 123456us},
      {"Europe/Berlin", utc(2026, 3, 28, 8h), {.days = 1}, utc(2026, 3, 29, 7h)},
      {"Europe/Berlin", utc(2026, 2, 28, 23h), {.months = 1}, utc(2026, 3, 31, 22h)},  // 1 March to 1 April, midnight
      {"America/Havana", utc(2026, 10, 1, 4h), {.months = 1}, utc(2026, 11, 1, 4h)},   // the first of two midnights
      {"America/Havana", utc(2026, 2, 8, 5h), {.weeks = 4}, utc(2026, 3, 8, 5h)},      // no midnight
      {"Pacific/Apia", utc(2011, 12, 29, 10h), {.days = 1}, utc(2011, 12, 30, 10h)},   // 29 to 31 December
      {"Europe/Berlin", utc(2026, 10, 25, 30min), {}, utc(2026, 10, 25, 30min)},
  };
  for (const auto& row : rows) {
    const Calendar& calendar = calendarIn(row.zone);
    EXPECT_EQ(calendar.addingGregorian(row.from, row.steps), row.to) << row.zone << textOf(row.from);
    EXPECT_EQ(calendar.adding(row.from, row.steps), row.to) << row.zone << textOf(row.from);
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
  const Date date = utc(2027, 3, 21);
  for (const auto& row : rows) {
    const Calendar& calendar = calendarIn("UTC", row.locale);
    const DateFields read = calendar.fields(date + 14h + 5min);
    EXPECT_EQ((std::array{read.year, read.month, read.day, read.weekday, read.hour, read.minute}),
              (std::array{row.year, row.month, row.day, 1, 14, 5}))
        << row.locale;
    EXPECT_EQ(textOf(calendar.date(row.year, row.month, row.day)), textOf(date)) << row.locale;
    EXPECT_EQ(textOf(calendar.adding(date, {.months = 1})), textOf(row.monthLater)) << row.locale;
    EXPECT_EQ(textOf(calendar.addingGregorian(date, {.months = 1})), "2027-4-21 0:0:0") << row.locale;
  }
}

TEST(Calendar, LetsMonthsAndDaysOfADateRunOn) {
  const Calendar& calendar = calendarIn("America/New_York");
  EXPECT_EQ(textOf(calendar.date(2026, 13, 1)), "2027-1-1 5:0:0");
  EXPECT_EQ(textOf(calendar.date(2027, 2, 31)), "2027-3-3 5:0:0");
  EXPECT_EQ(textOf(calendar.date(2027, 3, 0)), "2027-2-28 5:0:0");
}

TEST(Calendar, StopsAtTheEndsOfItsRangeForAnyDateAndStep) {
  using Ends = std::numeric_limits<int>;
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
  for (const char* locale : {"en_US", "th_TH", "fa_IR", "ar_SA", "en_US@calendar=chinese", "en_US@calendar=hebrew"}) {
    const Calendar& calendar = calendarIn("America/New_York", locale);
    const Date end = calendar.adding(Date::max(), {.days = most});
    const Date start = calendar.adding(Date::min(), {.days = least});
    EXPECT_EQ(textOf(end), "32766-12-31 0:0:0") << locale;
    EXPECT_EQ(textOf(start), "-32766-1-1 0:0:0") << locale;
    for (const Date date : {Date::min(), distantPast, distantFuture, Date::max()}) {
      EXPECT_LE(calendar.startOfDay(date), std::max(date, start)) << locale;
      EXPECT_LT(abs(calendar.adding(date, {most, most, most}) - end), 24h) << locale;
      EXPECT_LT(abs(calendar.addingGregorian(date, {.weeks = least}) - start), 24h) << locale;
      EXPECT_GE(calendar.fields(date).weekday, 1) << locale;
    }
    EXPECT_GT(calendar.date(Ends::max(), Ends::max(), Ends::max()),
              calendar.date(Ends::min(), Ends::min(), Ends::min()));
    EXPECT_GT(calendar.wallTime(CivilDay::max(), Ends::max(), Ends::max()),
              calendar.wallTime(CivilDay::min(), Ends::min(), Ends::min()));
  }
  EXPECT_GT(addDays(CivilDay::min(), most), addDays(CivilDay::max(), least));
}

TEST(Calendar, IsOneForEachLocaleAndZone) {
  const Calendar* first = &calendarIn("Asia/Tokyo");
  EXPECT_NE(&calendarIn("Asia/Seoul"), first);
  EXPECT_NE(&calendarIn("Asia/Tokyo", "th_TH"), first);
  EXPECT_EQ(&calendarIn("Asia/Tokyo"), first);
  EXPECT_EQ(first->weekday(utc(2027, 3, 1, 15h)), 3);
  EXPECT_EQ(calendarIn("Mars/Olympus").startOfDay(civil(2026, 7, 4)), utc(2026, 7, 4)) << "no such zone: UTC";
}

}  // namespace
}  // namespace tallyvane::testing
