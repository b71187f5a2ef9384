// Payments, graphs and sources of income for tests. Keys are literals here on purpose.
#pragma once

#include <string>
#include <vector>

#include "support/Bills.h"

namespace tallyvane::testing {

inline Dictionary payment(Value amount, Value date) {
  return {{"Amount", std::move(amount)}, {"Date", std::move(date)}, {"Note", ""}, {"Receipt", ""}};
}

inline Dictionary billPaid(const std::vector<Value>& payments) {
  return with(bill("B", "Rent", noon(2027, 3, 20)), "PaymentList", Array(payments.begin(), payments.end()));
}

/// The amounts of a list of payments, or of the two under "Lowest" and "Highest".
inline std::vector<Value> amountsOf(const Array& payments) {
  std::vector<Value> amounts;
  for (const Value& element : payments) {
    const auto* entry = element.get<Dictionary>();
    amounts.push_back(entry == nullptr ? element : *entry->find("Amount"));
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

}  // namespace tallyvane::testing
