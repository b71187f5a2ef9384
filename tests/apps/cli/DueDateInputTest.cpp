#include "cli/input/DueDateInput.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/Calendar.h"
#include "support/Dates.h"

namespace tallyvane::cli {
namespace {

using namespace std::chrono_literals;

Region regionOf(std::string locale, std::string zone = "America/New_York") {
  return testing::regionOf(std::move(locale), std::move(zone));
}

// Wednesday, 10 March 2027, late in the evening of New York: already Thursday in UTC.
constexpr Date now = std::chrono::sys_days{std::chrono::year{2027} / 3 / 11} + 4h;

// The civil day as a text, "" for none; the result is always the start of its day.
std::string dayOf(const Region& region, std::string_view text) {
  const Result<Date> date = readDueDate(region, now, text);
  if (!date) return "";
  const Calendar& calendar = Calendar::of(region);
  EXPECT_EQ(calendar.startOfDay(*date), *date) << text;
  const std::string day = testing::textOf(Date{calendar.civilDay(*date).time_since_epoch()});
  return day.substr(0, day.find(' '));
}

TEST(DueDateInput, UnderstandsWhatPeopleTypeInTheirLocale) {
  const struct {
    const char* locale;
    const char* text;
    const char* day;
  } rows[] = {
      {"en_US", "2027-03-01", "2027-3-1"},
      {"en_US", " 2028-2-29 ", "2028-2-29"},
      {"en_US", "0001-01-01", "1-1-1"},
      {"en_US", "9999-12-31", "9999-12-31"},
      {"th_TH", "2027-03-01", "2027-3-1"},
      {"en_US", "3/1/2027", "2027-3-1"},
      {"en_US", "3/1/27", "2027-3-1"},
      {"en_US", "3/1/99", "1999-3-1"},
      {"en_US", "3/9", "2028-3-9"},
      {"en_US", "3/10", "2027-3-10"},
      {"en_GB", "3/1/2028", "2028-1-3"},
      {"de_DE", "3.1.2028", "2028-1-3"},
      {"ja_JP", "2028/1/3", "2028-1-3"},
      {"hu_HU", "2028. 01. 03.", "2028-1-3"},
      {"th_TH", "3/1/2571", "2028-1-3"},
      {"fa_IR", "۱۴۰۶/۱/۲", "2027-3-22"},
      {"en_US", "1 Mar", "2028-3-1"},
      {"en_US", "Mar 11", "2027-3-11"},
      {"en_US", "march 1st, 2028", "2028-3-1"},
      {"en_US", "the 2nd of MAY", "2027-5-2"},
      {"en_US", "1-Sept-2028", "2028-9-1"},
      {"en_US", "2028 Mar 1", "2028-3-1"},
      {"en_US", "29 Feb", "2028-2-29"},
      {"en_US", "28feb", "2028-2-28"},
      {"de_DE", "1. März 2028", "2028-3-1"},
      {"de_DE", "1 march", "2028-3-1"},
      {"de_DE", "24. DEZ.", "2027-12-24"},
      {"es_ES", "1 de marzo de 2028", "2028-3-1"},
      {"vi_VN", "5 tháng 12", "2027-12-5"},
      {"vi_VN", "2 thg 1227", ""},
      {"zh_CN", "3月 1", "2028-3-1"},
      {"zh_CN", "13月", ""},
      {"fa_IR", "۱ فروردین", "2027-3-21"},
      {"en_US", "Today", "2027-3-10"},
      {"en_US", "tomorrow", "2027-3-11"},
      {"en_US", "yesterday", "2027-3-9"},
      {"en_US", "+10d", "2027-3-20"},
      {"en_US", "+2w", "2027-3-24"},
      {"en_US", "+3m", "2027-6-10"},
      {"en_US", "+1y", "2028-3-10"},
      {"en_US", "in 10 days", "2027-3-20"},
      {"en_US", "in a week", "2027-3-17"},
      {"en_US", "friday", "2027-3-12"},
      {"en_US", "Next Friday", "2027-3-12"},
      {"en_US", "wed", "2027-3-10"},
      {"en_US", "next wednesday", "2027-3-17"},
      {"en_US", "monday", "2027-3-15"},
      {"de_DE", "Montag", "2027-3-15"},
      {"de_DE", "Mo.", "2027-3-15"},
      {"de_DE", "monday", "2027-3-15"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(dayOf(regionOf(row.locale), row.text), row.day) << row.locale << " " << row.text;
  EXPECT_EQ(dayOf(regionOf("en_US", "America/Havana"), "14 Mar"), "2027-3-14");  // without a midnight
}

TEST(DueDateInput, SaysWhyADateCannotBe) {
  const struct {
    const char* text;
    const char* reason;
  } rows[] = {
      {"31 Feb", "\"31 Feb\" is not a date: that month has at most 29 days."},
      {"29 Feb 2027", "\"29 Feb 2027\" is not a date: that month has 28 days."},
      {"2027-02-30", "\"2027-02-30\" is not a date: that month has 28 days."},
      {"2/30/2027", "\"2/30/2027\" is not a date: that month has 28 days."},
      {"2027-13-01", "\"2027-13-01\" is not a date: there is no month 13."},
      {"2027-257-01", "\"2027-257-01\" is not a date: there is no month 257."},
      {"0 Mar", "\"0 Mar\" is not a date: days are counted from 1."},
      {"1/1/0000", "\"1/1/0000\" is not a date: the year must be 1 to 9999."},
      {"0000-01-01", "\"0000-01-01\" is not a date: the year must be 1 to 9999."},
      {"+999999y", "\"+999999y\" is not a date: the year must be 1 to 9999."},
      {"1 Mar 5", "\"1 Mar 5\" is not a date: the year must have four digits."},
      {"1 Mar 20277", "\"1 Mar 20277\" is not a date: the year must have four digits."},
  };
  for (const auto& row : rows) EXPECT_EQ(readDueDate(regionOf("en_US"), now, row.text).error(), row.reason);
  for (const char* text : {"", " ", "soon", "next", "in", "in days", "+", "+d", "10d", "+-1d", "1 Marching", "Mar",
                           "1 2 Mar 3", "1/2/3/4", "15", "monday 1 Mar", "1 xMar", "2027-03-01x", "\xFF"})
    EXPECT_NE(readDueDate(regionOf("en_US"), now, text).error().find("write it like 2027-03-01"), std::string::npos)
        << text;
}

TEST(DueDateInput, LooksBackFromTodayForThePaymentsDay) {
  const struct {
    const char* text;
    const char* day;
  } rows[] = {{"today", "2027-3-10"},       {"wednesday", "2027-3-10"},  {"last wednesday", "2027-3-3"},
              {"friday", "2027-3-5"},       {"10 Mar", "2027-3-10"},     {"11 Mar", "2026-3-11"},
              {"3/9", "2027-3-9"},          {"29 Feb", "2024-2-29"},     {"-1m", "2027-2-10"},
              {"2 weeks ago", "2027-2-24"}, {"2026-12-31", "2026-12-31"}};
  const Region region = regionOf("en_US");
  for (const auto& row : rows) {
    const Result<Date> date = readPaymentDate(region, now, row.text);
    ASSERT_TRUE(date) << date.error();
    EXPECT_EQ(*date, *readDueDate(region, now, row.day)) << row.text;
  }
  for (const char* text : {"tomorrow", "next friday", "2027-03-11", "+1d"})
    EXPECT_NE(readPaymentDate(region, now, text).error().find("lies ahead"), std::string::npos) << text;
}

}  // namespace
}  // namespace tallyvane::cli
