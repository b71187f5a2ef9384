#include "analysis/QMStatisticsCalculator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "support/Analysis.h"
#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

TEST_F(Statistics, CountABillByItsDaysAndHowItIsPaid) {
  struct Case {
    int days;
    bool automatic;
    std::optional<int> horizon;
    Value dontCountAuto;
    std::vector<int> counts;  ///< due soon, excluding overdue, overdue, later
  };
  const Case cases[] = {
      {-1, false, 7, 0, {1, 0, 1, 0}}, {0, false, 7, 0, {1, 1, 0, 0}},  {7, false, 7, 0, {1, 1, 0, 0}},
      {8, false, 7, 0, {0, 0, 0, 1}},  {0, false, {}, 0, {1, 1, 0, 0}}, {1, false, {}, 0, {0, 0, 0, 1}},
      {-3, true, 7, 0, {1, 0, 0, 0}},  {-3, true, 7, 2, {0, 0, 0, 0}},  {3, true, 7, 0, {1, 0, 0, 0}},
      {30, true, 7, 0, {0, 0, 0, 0}},
  };
  desktop.region.timeZone = "UTC";  // every day has 24 hours
  for (const Case& c : cases) {
    desktop.defaults.content = Dictionary{{"QMDontCountAuto", c.dontCountAuto}};
    if (c.horizon) desktop.defaults.content.set("QMDueSoonDays", *c.horizon);
    const auto due = with(bill("A", "A", daysFromToday(c.days)), "PayType", c.automatic ? 1 : 0);
    std::vector<Array> expected;
    for (const int count : c.counts) expected.push_back({count, count == 1 ? 100.0F : 0.0F});
    EXPECT_EQ(countsOf({due}), expected) << c.days << c.automatic;
  }
}

TEST_F(Statistics, SumEstimatedAmountsAsFloatsInListOrder) {
  const Dictionary overdue = bill("A", "A", noon(2027, 3, 1));
  const auto bills = [&](const std::vector<Value>& amounts) {
    std::vector<Dictionary> list;
    for (const Value& amount : amounts) list.push_back(with(overdue, "Amount", amount));
    return list;
  };
  const auto sum = [&](const std::vector<Dictionary>& list) { return countsOf(list)[2][1]; };
  EXPECT_EQ(sum(bills({0.75, 0.5})), Value(3.0));                  // both averages: below 1 reads as none
  EXPECT_EQ(sum(bills({16777216, 1, 1})), Value(16777216.0));      // each 1 is lost
  EXPECT_EQ(sum(bills({1, 1, 16777216})), Value(16777218.0));      // in this order none
  EXPECT_EQ(sum(bills({"12.50 EUR", 1.1})), Value(12.5F + 1.1F));  // text by its number
  EXPECT_EQ(countsOf({without(overdue, "DueDate"), with(overdue, "DueDate", "soon")}),
            std::vector<Array>(4, {0, 0.0F}));
  EXPECT_EQ(countsOf({}), std::vector<Array>(4, {0, 0.0F}));
}

TEST_F(Statistics, SortTheBillsOwnPaymentsByAmount) {
  const Date day = noon(2027, 3, 1);
  Dictionary paid = billPaid({entry(9, day), entry(10, noon(2027, 3, 2)), entry(1.5, day), "scribble", entry(10.0, day),
                              without(entry(0, day), "Amount")});
  paid.get<Array>("PaymentList")->back().get<Dictionary>()->set("Amount", "2.5");
  const Dictionary found = calculator.highestAndLowestPaymentForBill(paid);
  EXPECT_THAT(amountsOf(*paid.get<Array>("PaymentList")), ElementsAre("scribble", 1.5, "2.5", 9, 10, 10.0));
  EXPECT_EQ(found, (Dictionary{{"Highest", entry(10.0, day)}, {"Lowest", entry(1.5, day)}}));
}

TEST_F(Statistics, WithoutPaymentsHighestAndLowestSayThatThereAreNone) {
  desktop.region.words = bracketed;
  const Dictionary none{{"Amount", 0}, {"Date", "[No Payments Yet]"}};
  for (const Value& list : {Value(Array()), Value("no list"), Value(Array{7})}) {
    Dictionary paid = with(billPaid({}), "PaymentList", list);
    const Dictionary found = calculator.highestAndLowestPaymentForBill(paid);
    EXPECT_EQ(found, (Dictionary{{"Highest", none}, {"Lowest", none}}));
    EXPECT_EQ(*paid.find("PaymentList"), list);
  }
}

TEST_F(Statistics, TotalsFollowYearAndSeasonOfThePaymentsDay) {
  // In New York the last one is still of 2026.
  Dictionary paid = billPaid({entry(1, noon(2027, 1, 31)), entry(2, noon(2026, 4, 1)), entry(4, noon(2025, 9, 30)),
                              entry(8, noon(2028, 12, 1)), entry(16, "2027-03-01"), 7,
                              entry(32, noon(2027, 1, 1) - std::chrono::hours{17})});
  Dictionary expected{{"Total", 63.0},       {"TotalThisYear", 1.0},     {"TotalLastYear", 34.0},
                      {"TotalFall", 40.0},   {"TotalSpring", 2.0},       {"TotalSummer", 4.0},
                      {"TotalWinter", 1.0},  {"ThisYearString", "2027"}, {"LastYearString", "2026"},
                      {"ThisYearHeight", 2}, {"LastYearHeight", 100}};
  EXPECT_EQ(calculator.totalsForBill(paid), expected);
  EXPECT_EQ(keysOf(calculator.totalsForBill(paid)), keysOf(expected));

  for (const char* southern : {"en_AU", "mi_NZ@currency=USD"}) {
    desktop.region.locale = southern;
    const Dictionary totals = calculator.totalsForBill(paid);
    std::vector<Value> seasons;
    for (const char* key : {"TotalFall", "TotalSpring", "TotalSummer", "TotalWinter"})
      seasons.push_back(*totals.find(key));
    EXPECT_THAT(seasons, ElementsAre(2.0, 40.0, 1.0, 4.0)) << southern;
  }
  desktop.region.locale = "en";  // no country, however it is likely spoken
  EXPECT_EQ(*calculator.totalsForBill(paid).find("TotalWinter"), Value(1.0));
  EXPECT_EQ(*calculator.totalsForBill(billPaid({})).find("ThisYearHeight"), Value(0));
}

TEST_F(Statistics, YearsAreThoseOfTheUsersCalendar) {
  const struct {
    const char* locale;
    Date moment;
    double thisYear;
    const char* text;
  } rows[] = {{"th_TH", noon(2027, 3, 25), 3.0, "2570"},
              {"fa_IR", noon(2027, 3, 20), 1.0, "1405"},  // the year's last day
              {"ja_JP@calendar=japanese", noon(2027, 3, 25), 3.0, "9"}};
  // The last lies in year 9 of another Japanese era.
  const Dictionary paid =
      billPaid({entry(1, noon(2027, 3, 20)), entry(2, noon(2027, 3, 21)), entry(4, noon(1997, 5, 1))});
  for (const auto& row : rows) {
    desktop.region.locale = row.locale;
    desktop.clock.moment = row.moment;
    const Dictionary totals = calculator.totalsForBill(paid);
    EXPECT_EQ(*totals.find("TotalThisYear"), Value(row.thisYear)) << row.locale;
    EXPECT_EQ(*totals.find("ThisYearString"), Value(row.text)) << row.locale;
  }
}

TEST_F(Statistics, HeightsAreCutPercentagesOfTheLargest) {
  constexpr float infinity = std::numeric_limits<float>::infinity();
  constexpr float nan = std::numeric_limits<float>::quiet_NaN();
  const struct {
    Array numbers, heights;
  } rows[] = {{{}, {}},
              {{1.0F, 3.0F, 2, -1.0F}, {33, 100, 66, 0}},
              {{0.0F, 0.0F}, {0, 0}},
              {{-4, 0}, {0, 0}},
              {{-4, -2}, {200, 100}},
              {{1, infinity}, {0, 0}},
              {{nan, 2}, {0, 100}},
              {{nan}, {0}}};
  for (const auto& row : rows) EXPECT_EQ(calculator.calculateRelativeHeightsForGraphs(row.numbers), row.heights);
}

TEST_F(Statistics, TheBalanceBarIsUnguarded) {
  EXPECT_EQ(calculator.balanceGraphSizeWithMaxWidthAndTotalPaidAndBalance(300, 1, 2), 300.0F * (1.0F / 3.0F));
  EXPECT_TRUE(std::isnan(calculator.balanceGraphSizeWithMaxWidthAndTotalPaidAndBalance(300, 0, 0)));
  EXPECT_EQ(calculator.createStringWithDate(noon(2100, 3, 10)), "Wed, Mar 10, 2100");  // however far
}

}  // namespace
}  // namespace tallyvane::testing
