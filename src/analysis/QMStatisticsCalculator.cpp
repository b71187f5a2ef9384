#include "analysis/QMStatisticsCalculator.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "analysis/Payments.h"
#include "foundation/Calendar.h"
#include "foundation/Country.h"
#include "foundation/NumberReading.h"
#include "foundation/Texts.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

/// Days until due, both ends included, and whether bills paid automatically are counted.
struct Meant {
  std::int64_t from = std::numeric_limits<std::int64_t>::min();
  std::int64_t to = std::numeric_limits<std::int64_t>::max();
  bool automatic = false;
};

/// Asks for what is read of a bill: bills lie all over the memory.
void askForBill(const Dictionary& bill) {
  askFor(bill.find(key::DueDate));
  askFor(bill.find(key::PayType));
}

Array countAndAmount(const Platform& platform, const std::vector<Dictionary>& bills, const Meant& meant) {
  const QMBillsLoader loader{platform};
  const Date now = platform.clock.now();
  std::int32_t count = 0;
  float amount = 0;
  constexpr std::size_t ahead = 6;
  for (std::size_t i = 0; i < bills.size(); ++i) {
    const Dictionary& bill = bills[i];
    if (i + ahead < bills.size()) askForBill(bills[i + ahead]);
    const Date* due = bill.get<Date>(key::DueDate);
    if (due == nullptr) continue;
    const std::int64_t days = loader.getDaysApartWithDateAndCurrentDate(*due, now);
    if (days < meant.from || days > meant.to) continue;
    if (!meant.automatic && int32Value(bill, key::PayType) == key::paidAutomatically) continue;
    const Value estimate = loader.getEstimatedAmountDueForBill(bill);
    ++count;
    amount += floatValue(&estimate);
  }
  return {count, amount};
}

std::int64_t horizon(const Platform& platform) { return integerSetting(platform.defaults, key::DueSoonDays); }

/// What was summed up while walking over the payments.
struct Totals {
  float total = 0;
  float thisYear = 0;
  float lastYear = 0;
  std::array<float, 4> quarters{};
};

/// The quarter of the year from 0; nothing for a month beyond the twelfth.
std::optional<std::size_t> quarterOf(const QMStatisticsCalculator& calculator, int month) {
  if (calculator.isEqualToWinter(month)) return 0;
  if (calculator.isEqualToSpring(month)) return 1;
  if (calculator.isEqualToSummer(month)) return 2;
  if (calculator.isEqualToFall(month)) return 3;
  return std::nullopt;
}

/// Whose names the seasons get: of these two countries alone.
bool isSouthern(const Region& region) {
  const std::string country = countryCode(region);
  return country == "AU" || country == "NZ";
}

bool isBelowByAmount(const Value& left, const Value& right) {
  return isNumberBelow(left.get<Dictionary>()->find(key::Amount), right.get<Dictionary>()->find(key::Amount));
}

}  // namespace

Array QMStatisticsCalculator::countAndAmountofBillsDueSoonForData(const std::vector<Dictionary>& bills) const {
  const bool countsAutomatic = integerSetting(platform_.defaults, key::DontCountAuto) == 0;
  return countAndAmount(platform_, bills, {.to = horizon(platform_), .automatic = countsAutomatic});
}

Array QMStatisticsCalculator::countAndAmountofBillsDueExcludingOverdueSoonForData(
    const std::vector<Dictionary>& bills) const {
  return countAndAmount(platform_, bills, {.from = 0, .to = horizon(platform_)});
}

Array QMStatisticsCalculator::countAndAmountofBillsOverdueSoonForData(const std::vector<Dictionary>& bills) const {
  return countAndAmount(platform_, bills, {.to = -1});
}

Array QMStatisticsCalculator::countAndAmountofBillsDueLaterForData(const std::vector<Dictionary>& bills) const {
  const std::int64_t last = horizon(platform_);
  if (last == std::numeric_limits<std::int64_t>::max()) return {0, 0.0F};
  return countAndAmount(platform_, bills, {.from = last + 1});
}

Dictionary QMStatisticsCalculator::highestAndLowestPaymentForBill(Dictionary& bill) const {
  if (Array* list = bill.get<Array>(key::PaymentList); list != nullptr) {
    const auto first = std::stable_partition(list->begin(), list->end(),
                                             [](const Value& element) { return !element.is<Dictionary>(); });
    std::stable_sort(first, list->end(), isBelowByAmount);
    if (first != list->end()) return {{std::string(key::Highest), list->back()}, {std::string(key::Lowest), *first}};
  }
  const Dictionary none{{std::string(key::Amount), 0},
                        {std::string(key::Date), platform_.region.localized("No Payments Yet")}};
  return {{std::string(key::Highest), none}, {std::string(key::Lowest), none}};
}

Dictionary QMStatisticsCalculator::totalsForBill(const Dictionary& bill) const {
  const Calendar& calendar = Calendar::of(platform_.region);
  const CalendarMonth now = calendar.month(platform_.clock.now());
  Totals sums;
  forEachPayment(paymentsOf(bill), [&](const PaymentFields& payment) {
    const float amount = floatValue(payment.amount);
    sums.total += amount;
    if (payment.date == nullptr) return;
    const CalendarMonth paid = calendar.month(*payment.date);
    if (paid.era == now.era && paid.year == now.year) sums.thisYear += amount;
    if (paid.era == now.era && paid.year == now.year - 1) sums.lastYear += amount;
    if (const auto quarter = quarterOf(*this, paid.month)) sums.quarters[*quarter] += amount;
  });

  const bool southern = isSouthern(platform_.region);
  const auto& [first, second, third, fourth] = sums.quarters;
  const Array heights = calculateRelativeHeightsForGraphs({sums.thisYear, sums.lastYear});
  Dictionary totals;
  totals.reserve(11);
  const auto add = [&](std::string_view key, Value value) { totals.append(std::string(key), std::move(value)); };
  add(key::Total, sums.total);
  add(key::TotalThisYear, sums.thisYear);
  add(key::TotalLastYear, sums.lastYear);
  add(key::TotalFall, southern ? second : fourth);
  add(key::TotalSpring, southern ? fourth : second);
  add(key::TotalSummer, southern ? first : third);
  add(key::TotalWinter, southern ? third : first);
  add(key::ThisYearString, std::to_string(now.year));
  add(key::LastYearString, std::to_string(now.year - 1));
  add(key::ThisYearHeight, heights[0]);
  add(key::LastYearHeight, heights[1]);
  return totals;
}

std::string QMStatisticsCalculator::createStringWithDate(Date date) const {
  return formattedDate(platform_.region, date, "EEEMMMdyyyy");
}

Array QMStatisticsCalculator::calculateRelativeHeightsForGraphs(const Array& numbers) const {
  Array heights;
  if (numbers.empty()) return heights;
  const float largest = largestOf(numbers);
  heights.reserve(numbers.size());
  for (const Value& number : numbers) {
    // What the division makes of 0 and of infinity cuts to the most negative integer, and so to 0.
    const float percentage = floatValue(&number) * 100.0F / largest;
    heights.emplace_back(std::max(0, truncatedToInt32(percentage)));
  }
  return heights;
}

float QMStatisticsCalculator::balanceGraphSizeWithMaxWidthAndTotalPaidAndBalance(std::int32_t width, float paid,
                                                                                 float balance) const {
  return static_cast<float>(width) * (paid / (balance + paid));
}

}  // namespace tallyvane
