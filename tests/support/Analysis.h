// Payments, graphs and sources of income for tests. Keys are literals here on purpose.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analysis/QMIncomeManager.h"
#include "analysis/QMMonthlyGraphManager.h"
#include "analysis/QMStatisticsCalculator.h"
#include "support/Bills.h"

namespace tallyvane::testing {

inline Dictionary billPaid(const std::vector<Value>& payments) {
  return with(bill("B", "Rent", noon(2027, 3, 20)), "PaymentList", Array(payments.begin(), payments.end()));
}

/// The amounts of a list of payments, or of the two under "Lowest" and "Highest".
inline std::vector<Value> amountsOf(const Array& payments) {
  std::vector<Value> amounts;
  for (const Value& element : payments) {
    const auto* paid = element.get<Dictionary>();
    amounts.push_back(paid == nullptr ? element : *paid->find("Amount"));
  }
  return amounts;
}

/// A list of the one graph that an operation returns.
inline Array graphList(const Array& graphs, std::string_view key) {
  return *graphs.at(0).get<Dictionary>()->get<Array>(key);
}

/// A list padded to the 24 positions of a graph.
inline Array padded(Array list, const Value& filler) {
  list.resize(24, filler);
  return list;
}

/// A source of income with a key that Tallyvane does not know.
inline Dictionary incomeByDay(Value repeat, int payDate, Date created = noon(2027, 3, 1), double amount = 100) {
  return {{"Repeat", std::move(repeat)},
          {"Amount", amount},
          {"PayDate", payDate},
          {"CreationDate", created},
          {"Colour", "green"}};
}

inline Dictionary incomeByDates(Value repeat, const std::vector<Date>& dates, double amount = 10) {
  return {{"Repeat", std::move(repeat)}, {"Amount", amount}, {"IncomeDates", Array(dates.begin(), dates.end())}};
}

inline void putIncome(FakeDesktop& desktop, const std::vector<Value>& sources) {
  desktop.files.putPlist(inDataFolder("incomeindex.plist"),
                         Dictionary{{"IncomeSources", Array(sources.begin(), sources.end())}});
}

struct MonthlyGraph : ::testing::Test {
  FakeDesktop desktop;
  QMMonthlyGraphManager manager{desktop.platform};
};

struct Statistics : ::testing::Test {
  /// Due soon, excluding overdue, overdue, later.
  std::vector<Array> countsOf(const std::vector<Dictionary>& bills) {
    return {calculator.countAndAmountofBillsDueSoonForData(bills),
            calculator.countAndAmountofBillsDueExcludingOverdueSoonForData(bills),
            calculator.countAndAmountofBillsOverdueSoonForData(bills),
            calculator.countAndAmountofBillsDueLaterForData(bills)};
  }
  FakeDesktop desktop;
  QMStatisticsCalculator calculator{desktop.platform};
};

class Income : public ::testing::Test {
 protected:
  /// Wednesday 10 March 2027 unless a test moves the clock.
  FakeDesktop desktop;
  QMIncomeManager manager{desktop.platform};
  Value file() { return desktop.files.plist(inDataFolder("incomeindex.plist")); }
  static Value fileOfSources(const std::vector<Value>& sources) {
    return Dictionary{{"IncomeSources", Array(sources.begin(), sources.end())}};
  }
  static Date midnight(int month, unsigned day) {
    return noon(2027, static_cast<unsigned>(month), day) - std::chrono::hours{12};
  }
};

}  // namespace tallyvane::testing
