#include "analysis/QMIncomeManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "support/Analysis.h"
#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

TEST_F(Income, ReadingDropsWhatIsPastAndWritesTheFileEveryTime) {
  const Dictionary current = incomeByDay(0, 3);
  const Dictionary monthly = incomeByDay(1, 3, noon(2020, 1, 1));
  const Dictionary lastMonth = incomeByDay(0, 3, noon(2027, 2, 28));
  const Dictionary sameMonthLastYear = incomeByDay(0, 3, noon(2026, 3, 10));
  const Dictionary negative = incomeByDay(-1, 3, noon(2027, 2, 1));
  putIncome(desktop, {current, lastMonth, monthly, sameMonthLastYear, negative,
                      incomeByDates(2, {noon(2027, 2, 26), noon(2027, 3, 12), noon(2027, 3, 26)}),
                      incomeByDates(3, {noon(2027, 2, 1)}), incomeByDates(3, {noon(2027, 4, 2), noon(2027, 4, 9)}),
                      without(incomeByDates(2, {}), "IncomeDates")});
  const std::vector<Value> expected{current,
                                    monthly,
                                    incomeByDates(2, {noon(2027, 3, 12), noon(2027, 3, 26)}),
                                    incomeByDates(3, {}),
                                    incomeByDates(3, {}),  // those to come go as well
                                    incomeByDates(2, {})};
  EXPECT_EQ(Value(manager.getIncomeSources()), Value(Array(expected.begin(), expected.end())));
  EXPECT_EQ(file(), fileOfSources(expected));
  (void)manager.getIncomeSources();
  EXPECT_EQ(desktop.files.saved.size(), 2U);
}

TEST_F(Income, ReadingMakesTheFileAndWritingChangesNothingInIt) {
  EXPECT_THAT(manager.getIncomeSources(), IsEmpty());
  EXPECT_EQ(file(), fileOfSources({}));
  const Dictionary past = incomeByDay(0, 3, noon(2020, 1, 1));
  manager.writeUpdatedIncomeArray({past});
  EXPECT_EQ(file(), fileOfSources({past}));
}

TEST_F(Income, TrimmingLogsTheDatesUpToTheFirstOfThisMonth) {
  (void)manager.removeInactiveIncomeSources(
      {incomeByDates(2, {noon(2027, 2, 26), noon(2027, 3, 12), noon(2027, 3, 26)})});
  EXPECT_THAT(desktop.log.lines,
              ElementsAre("Current Date: 2027-03-10 17:00:00 +0000", "Income Date: 2027-02-26 17:00:00 +0000",
                          "Income Date: 2027-03-12 17:00:00 +0000"));
}

TEST_F(Income, WhatCannotBeReadStaysAndBringsNothing) {
  const std::vector<Value> damaged{7,
                                   "salary",
                                   Array{1},
                                   incomeByDay("often", 3, noon(2020, 1, 1)),
                                   incomeByDay("--5", 3, noon(2020, 1, 1)),
                                   incomeByDay("- 5", 3, noon(2020, 1, 1)),
                                   incomeByDay("", 3, noon(2020, 1, 1)),
                                   incomeByDay(Array{1}, 3, noon(2020, 1, 1)),
                                   with(incomeByDates(3, {}), "IncomeDates", "fridays"),
                                   with(incomeByDates(3, {}), "IncomeDates", Array{noon(2020, 1, 3), "2027-03-12"})};
  putIncome(desktop, damaged);
  EXPECT_EQ(manager.incomeThisMonthAll(), 0.0F);
  EXPECT_THAT(manager.incomeDatesThisMonth(), IsEmpty());
  EXPECT_EQ(file(), fileOfSources(damaged));
  EXPECT_EQ(manager.displayDateWithIncome(*damaged[3].get<Dictionary>()), "");
  // Text that is a number reads as one.
  putIncome(desktop, {with(incomeByDay(" +1", 3, noon(2020, 1, 1)), "Amount", "12.5")});
  EXPECT_EQ(manager.incomeThisMonthAll(), 12.5F);
  EXPECT_THAT(manager.removeInactiveIncomeSources({incomeByDay("\v\f-5", 3, noon(2020, 1, 1))}), IsEmpty());
}

TEST_F(Income, OfAMonthCountsDaysThatHaveCome) {
  const Date today = noon(2027, 3, 10);
  const struct {
    Dictionary source;
    float soFar, whole;
  } rows[] = {
      {incomeByDay(0, 9), 100, 100},  // the 10th is today
      {incomeByDay(1, 10), 0, 100},   // the 11th
      {incomeByDay(1, 28), 0, 100},   // the 31st
      {incomeByDay(7, 1), 0, 0},      // never
      {incomeByDates(2, {noon(2027, 2, 27), noon(2027, 3, 1), today, noon(2027, 3, 29), noon(2027, 4, 1)}), 20, 30},
      {incomeByDates(3, {today, noon(2027, 4, 1), noon(2027, 3, 1)}), 10, 10},  // the walk ends in April
  };
  for (const auto& row : rows) {
    putIncome(desktop, {row.source});
    EXPECT_EQ(manager.incomeThisMonth(), row.soFar) << writePropertyList(row.source);
    EXPECT_EQ(manager.incomeThisMonthAll(), row.whole) << writePropertyList(row.source);
  }
  putIncome(desktop, {incomeByDay(1, 0, today, 16777216), incomeByDay(1, 0, today, 1), incomeByDay(1, 0, today, 1)});
  EXPECT_EQ(manager.incomeThisMonth(), 16777216.0F);  // floats, in list order
}

TEST_F(Income, PaidOnTheLastDayComesOnIt) {
  const struct {
    int year;
    unsigned month, lastDay;
  } rows[] = {{2027, 4, 30}, {2027, 5, 31}, {2027, 2, 28}, {2028, 2, 29}};
  putIncome(desktop, {incomeByDay(1, 28)});
  for (const auto& row : rows) {
    desktop.clock.moment = noon(row.year, row.month, row.lastDay - 1);
    EXPECT_EQ(manager.incomeThisMonth(), 0.0F) << row.month;
    desktop.clock.moment = noon(row.year, row.month, row.lastDay);
    EXPECT_EQ(manager.incomeThisMonth(), 100.0F) << row.month;
    EXPECT_EQ(manager.lastDayOfMonth(), row.lastDay);
  }
}

TEST_F(Income, DatesAreOfThisMonthAndTheNextSourceBySource) {
  desktop.region.timeZone = "UTC";
  desktop.clock.moment = noon(2027, 1, 10);
  putIncome(desktop, {incomeByDay(1, 28), incomeByDates(2, {noon(2027, 1, 8), noon(2027, 1, 22), noon(2027, 2, 5),
                                                            noon(2027, 3, 5), noon(2027, 2, 6)})});
  const auto start = [](unsigned month, unsigned day) { return noon(2027, month, day) - std::chrono::hours{17}; };
  EXPECT_THAT(manager.incomeDatesThisMonth(),
              ElementsAre(start(1, 31), start(2, 28), noon(2027, 1, 8), noon(2027, 1, 22), noon(2027, 2, 5)));
  for (const unsigned month : {11U, 12U}) {
    desktop.clock.moment = noon(2027, month, 10);
    const Date first = noon(2027, month, 20);
    const Date second = month == 12 ? noon(2028, 1, 3) : noon(2027, 12, 3);
    putIncome(desktop, {incomeByDates(2, {first, second})});
    EXPECT_EQ(manager.incomeDatesThisMonth().size(), month == 12 ? 1U : 2U);  // none of January
  }
}

TEST_F(Income, IsShownByDayInEnglishAndByDateInTheUsersWords) {
  desktop.region.locale = "de_DE";
  const Date date = noon(2027, 5, 7);
  const std::pair<Dictionary, const char*> rows[] = {
      {incomeByDay(1, 0), "Mar 1"},        {incomeByDay(0, 28), "Mar 31"},    {incomeByDay(0, 11), "Mar 12"},
      {incomeByDates(2, {date}), "Mai 7"}, {incomeByDates(3, {}), "März 10"}, {incomeByDay(4, 1), ""}};
  for (const auto& [source, text] : rows) EXPECT_EQ(manager.displayDateWithIncome(source), text);
  EXPECT_EQ(manager.displayDateFromIndex(std::numeric_limits<std::int64_t>::max()), "Mar -9223372036854775808");
}

TEST_F(Income, PayDatesRunThreeYearsFromADayOfThisMonth) {
  const std::pair<std::int64_t, std::size_t> rows[] = {{3, 157}, {2, 79}, {1, 1}, {0, 1}, {-1, 1}};
  for (const auto& [interval, count] : rows) {
    const Array dates = manager.createArrayOfIncomeDatesForIntervalFromDate(interval, 11);
    EXPECT_EQ(dates.size(), count) << interval;
    EXPECT_EQ(dates[0], Value(midnight(3, 12)));
    if (count == 1) continue;
    EXPECT_EQ(dates[1], Value(midnight(3, interval == 3 ? 19 : 26) - std::chrono::hours{1}));  // summer time
    EXPECT_EQ(*dates.back().get<Date>() - *dates[0].get<Date>(), std::chrono::days{1092});     // winter again
  }
  desktop.clock.moment = noon(2027, 2, 10);
  EXPECT_EQ(manager.dateFromDateIndex(28), midnight(3, 1));  // no 29th
}

}  // namespace
}  // namespace tallyvane::testing
