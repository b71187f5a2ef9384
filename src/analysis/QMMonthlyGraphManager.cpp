#include "analysis/QMMonthlyGraphManager.h"

#include <algorithm>
#include <array>

#include "analysis/Payments.h"
#include "foundation/Calendar.h"
#include "foundation/NumberReading.h"
#include "foundation/Texts.h"

namespace tallyvane {

namespace {

constexpr std::size_t positions = 24;
constexpr std::size_t mostPayments = positions - 1;

/// Whether the left payment goes first: the newer one; all that have a date before those that have none.
bool isNewer(const PaymentFields& left, const PaymentFields& right) {
  return left.date != nullptr && (right.date == nullptr || *left.date > *right.date);
}

/// At most 23; those of one moment in list order.
std::vector<PaymentFields> newestPayments(const Array& list) {
  std::vector<PaymentFields> payments;
  payments.reserve(list.size());
  forEachPayment(list, [&](const PaymentFields& payment) { payments.push_back(payment); });
  std::stable_sort(payments.begin(), payments.end(), isNewer);
  if (payments.size() > mostPayments) payments.resize(mostPayments);
  return payments;
}

/// As the payment has it; what is no number is the float that it reads as.
Value amountOf(const Value* amount) {
  const bool isNumber = amount != nullptr && canReadNumber(*amount) && !amount->is<std::string>();
  return isNumber ? *amount : Value(floatValue(amount));
}

}  // namespace

Array QMMonthlyGraphManager::graph(const std::vector<std::string>& labels, const Array& amounts) const {
  Dictionary graph;
  graph.set(key::Labels, arrayOf(labels));
  graph.set(key::Amounts, arrayOf(amountStringsByMonthForAmounts(amounts)));
  graph.set(key::Heights, paymentHeightByMonthForPayments(amounts));
  graph.set(key::Images, arrayOf(graphImagesForMonths()));
  Array graphs;
  graphs.emplace_back(std::move(graph));
  return graphs;
}

Array QMMonthlyGraphManager::listOfPaymentsByPaymentForBill(const Dictionary& bill) const {
  return graph(datesForPayments(paymentsOf(bill)), amountsForPayments(paymentsOf(bill)));
}

Array QMMonthlyGraphManager::listOfPaymentsByMonthForBill(const Dictionary& bill) const {
  return graph(months(), paymentAmountsByMonthForList(paymentsOf(bill)));
}

std::vector<std::string> QMMonthlyGraphManager::datesForPayments(const Array& payments) const {
  std::vector<std::string> labels;
  for (const auto& [amount, date] : newestPayments(payments))
    labels.push_back(date == nullptr ? std::string() : dateInPattern(platform_.region, *date, "MMMMM d"));
  labels.resize(positions);
  return labels;
}

Array QMMonthlyGraphManager::amountsForPayments(const Array& payments) const {
  Array amounts;
  for (const PaymentFields& payment : newestPayments(payments)) amounts.push_back(amountOf(payment.amount));
  amounts.resize(positions, Value(0.0F));
  return amounts;
}

std::vector<Date> QMMonthlyGraphManager::monthDates() const {
  const Calendar& calendar = Calendar::of(platform_.region);
  const Date now = platform_.clock.now();
  std::vector<Date> dates;
  for (std::size_t back = 0; back < positions; ++back)
    dates.push_back(calendar.adding(now, {.months = -static_cast<std::int64_t>(back)}));
  return dates;
}

std::vector<std::string> QMMonthlyGraphManager::months() const {
  std::vector<std::string> names;
  for (const Date date : monthDates()) names.push_back(dateInPattern(platform_.region, date, "MMM"));
  return names;
}

std::vector<std::string> QMMonthlyGraphManager::graphImagesForMonths() const {
  const Calendar& calendar = Calendar::of(platform_.region);
  const CalendarMonth now = calendar.month(platform_.clock.now());
  std::vector<std::string> images;
  for (const Date date : monthDates()) {
    const CalendarMonth month = calendar.month(date);
    const int yearsAgo = month.era == now.era ? now.year - month.year : 2;
    images.emplace_back(yearsAgo == 0 ? "orchidbar.png" : yearsAgo == 1 ? "blackbar.png" : "oldbar.png");
  }
  return images;
}

Array QMMonthlyGraphManager::paymentAmountsByMonthForList(const Array& payments) const {
  const Calendar& calendar = Calendar::of(platform_.region);
  std::array<CalendarMonth, positions> graphMonths;
  std::ranges::transform(monthDates(), graphMonths.begin(), [&](Date date) { return calendar.month(date); });
  std::array<float, positions> sums{};
  forEachPayment(payments, [&](const PaymentFields& payment) {
    if (payment.date == nullptr) return;
    const auto found = std::find(graphMonths.begin(), graphMonths.end(), calendar.month(*payment.date));
    if (found == graphMonths.end()) return;
    sums[static_cast<std::size_t>(found - graphMonths.begin())] += floatValue(payment.amount);
  });
  return Array(sums.begin(), sums.end());
}

Array QMMonthlyGraphManager::paymentHeightByMonthForPayments(const Array& amounts) const {
  Array heights;
  if (amounts.empty()) return heights;
  const float largest = largestOf(amounts);
  heights.reserve(amounts.size());
  for (const Value& amount : amounts) {
    const float value = floatValue(&amount);
    heights.emplace_back(value > 0 ? value / largest : 0.0F);
  }
  return heights;
}

std::vector<std::string> QMMonthlyGraphManager::amountStringsByMonthForAmounts(const Array& amounts) const {
  std::vector<std::string> texts;
  for (const Value& amount : amounts) texts.push_back(currencyText(platform_.region, &amount));
  return texts;
}

}  // namespace tallyvane
