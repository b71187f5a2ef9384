#include "analysis/QMMonthlyGraphManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/QMIndexManager.h"
#include "support/Analysis.h"

namespace tallyvane::testing {
namespace {

TEST_F(MonthlyGraph, ShowsThe23NewestPaymentsNewestFirst) {
  std::vector<Value> payments;
  for (unsigned day = 1; day <= 30; ++day) payments.emplace_back(entry(day, noon(2027, 1, (day * 7) % 30 + 1)));
  payments.emplace_back(without(entry(500, 0), "Date"));
  const Dictionary paid = billPaid(payments);
  const Array graphs = manager.listOfPaymentsByPaymentForBill(paid);
  Array labels;
  for (int day = 30; day >= 8; --day) labels.emplace_back("J " + std::to_string(day));
  EXPECT_EQ(graphList(graphs, "Labels"), padded(labels, ""));
  const Array amounts = graphList(graphs, "Amounts");
  EXPECT_EQ(amounts[0], Value("$17.00"));  // 17 * 7 = 119, the 30th
  EXPECT_EQ(amounts[23], Value("$0.00"));
  EXPECT_EQ(graphList(graphs, "Heights")[0], Value(17.0F / 29.0F));  // the 30 stands at day 1, not shown
  EXPECT_EQ(paid, billPaid(payments)) << "the bill's own list was reordered";
}

TEST_F(MonthlyGraph, KeepsAmountsAsTheyAreAndPutsUndatedPaymentsLast) {
  const Date day = noon(2027, 1, 5);
  const Array list{"scribble", entry(3, "2027-01-01"), entry("2.5", day), entry(-4, day),
                   without(entry(0, noon(2026, 12, 5)), "Amount")};
  EXPECT_EQ(arrayOf(manager.datesForPayments(list)), padded({"J 5", "J 5", "D 5"}, ""));
  const Array amounts = manager.amountsForPayments(list);
  EXPECT_EQ(amounts, padded({2.5F, -4, 0.0F, 3}, 0.0F));
  EXPECT_EQ(manager.paymentHeightByMonthForPayments(amounts), padded({2.5F / 3, 0.0F, 0.0F, 1.0F}, 0.0F));
  EXPECT_EQ(manager.amountStringsByMonthForAmounts(amounts)[1], "-$4.00");
}

TEST_F(MonthlyGraph, OfNoPaymentsIsEmptyInAllPositions) {
  for (const Value& list : {Value(Array()), Value("no list")}) {
    const Array graphs = manager.listOfPaymentsByPaymentForBill(with(billPaid({}), "PaymentList", list));
    EXPECT_EQ(keysOf(*graphs[0].get<Dictionary>()),
              (std::vector<std::string>{"Labels", "Amounts", "Heights", "Images"}));
    EXPECT_EQ(graphList(graphs, "Labels"), padded({}, ""));
    EXPECT_EQ(graphList(graphs, "Amounts"), padded({}, "$0.00"));
    EXPECT_EQ(graphList(graphs, "Heights"), padded({}, 0.0F));
  }
}

TEST_F(MonthlyGraph, SumsTheMonthsThatItShows) {
  const Dictionary paid =
      billPaid({entry(1.1, noon(2027, 3, 1)), entry(2.2, noon(2027, 3, 31)), entry(4, noon(2027, 4, 1)),
                entry(8, noon(2025, 4, 1)), entry(16, noon(2025, 3, 31)), entry(32, "2027-03-01"),
                entry(64, noon(2027, 3, 1) - std::chrono::hours{17})});
  const Array graphs = manager.listOfPaymentsByMonthForBill(paid);
  Array heights = padded({(1.1F + 2.2F) / 64.0F, 1.0F}, 0.0F);
  heights[23] = 8.0F / 64.0F;
  EXPECT_EQ(graphList(graphs, "Heights"), heights);
  EXPECT_EQ(graphList(graphs, "Amounts")[0], Value("$3.30"));
  EXPECT_EQ(graphList(graphs, "Labels")[0], Value("Mar"));
  EXPECT_EQ(graphList(graphs, "Labels")[23], Value("Apr"));
}

TEST_F(MonthlyGraph, CountsMonthsBackFromTheLastDayOfALongOne) {
  desktop.clock.moment = noon(2027, 3, 31);
  const auto months = manager.months();
  EXPECT_EQ(std::vector<std::string>(months.begin(), months.begin() + 4),
            (std::vector<std::string>{"Mar", "Feb", "Jan", "Dec"}));
}

TEST_F(MonthlyGraph, ChoosesPicturesByTheYearOfThePosition) {
  desktop.clock.moment = noon(2027, 1, 15);
  std::vector<std::string> expected(24, "oldbar.png");
  expected[0] = "orchidbar.png";
  std::fill(expected.begin() + 1, expected.begin() + 13, "blackbar.png");
  EXPECT_EQ(manager.graphImagesForMonths(), expected);
}

TEST_F(MonthlyGraph, FollowsTheUsersCalendar) {
  desktop.region.locale = "fa_IR";
  desktop.clock.moment = noon(2027, 3, 21);  // the first day of 1406
  EXPECT_EQ(manager.paymentAmountsByMonthForList({entry(1, noon(2027, 3, 20)), entry(2, noon(2027, 3, 22))}),
            padded({2.0F, 1.0F}, 0.0F));
  EXPECT_EQ(manager.graphImagesForMonths()[1], "blackbar.png");
}

TEST(PaidTotals, CountThePaymentsOfAMonthInBillsLastPaidInIt) {
  FakeDesktop desktop;
  const auto lastPaid = [](Value last, const std::vector<Value>& payments) {
    return with(billPaid(payments), "LastPayment", std::move(last));
  };
  const Date march = noon(2027, 3, 5);
  const Date february = noon(2027, 2, 5);
  const std::vector<Value> payments{entry(1.1, march),
                                    entry(2.2, noon(2027, 3, 31)),
                                    entry(4, noon(2026, 3, 5)),
                                    entry(8, february),
                                    entry("16", march),
                                    entry(32, "2027-03-01"),
                                    7};
  const struct {
    std::vector<Dictionary> bills;
    Date date;
    Array result;
  } rows[] = {
      {{}, march, {0, 0.0F}},
      {{lastPaid(march, payments)}, march, {3, 1.1F + 2.2F + 16.0F}},
      {{lastPaid(march, payments)}, february, {0, 0.0F}},  // paid again later
      {{lastPaid(noon(2026, 3, 5), payments)}, march, {0, 0.0F}},
      {{lastPaid(march, {}), lastPaid("March", payments), without(billPaid(payments), "LastPayment")},
       march,
       {0, 0.0F}},
      {{lastPaid(march, payments), lastPaid(march, payments)}, march, {6, (1.1F + 2.2F + 16.0F) * 2}},
  };
  QMIndexManager manager{desktop.platform};
  for (const auto& row : rows) {
    EXPECT_EQ(manager.calculateTotalPaidinArrayForDate(row.bills, row.date), row.result);
    EXPECT_EQ(Value(manager.totalPaymentsThisMonth), row.result[0]);
  }
}

}  // namespace
}  // namespace tallyvane::testing
