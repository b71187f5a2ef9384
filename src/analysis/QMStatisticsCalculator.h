#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane {

/// What a person's bills and payments come to. Writes no file. Money is summed in 32-bit floats in the order of the
/// list. Amounts that are absent count as 0, those that are text by their leading number.
class QMStatisticsCalculator {
 public:
  explicit QMStatisticsCalculator(const Platform& platform) : platform_(platform) {}

  // How many bills are due, and the sum of their estimated amounts: [32-bit integer, float]. One moment holds for all
  // bills of a call. A bill without a due date counts in none. Bills that are paid automatically count in the first
  // only, and there unless "QMDontCountAuto" is set; so due soon is not always the sum of the two after it; deliberate.

  /// Due within "QMDueSoonDays", or overdue.
  [[nodiscard]] Array countAndAmountofBillsDueSoonForData(const std::vector<Dictionary>& bills) const;
  [[nodiscard]] Array countAndAmountofBillsDueExcludingOverdueSoonForData(const std::vector<Dictionary>& bills) const;
  [[nodiscard]] Array countAndAmountofBillsOverdueSoonForData(const std::vector<Dictionary>& bills) const;
  [[nodiscard]] Array countAndAmountofBillsDueLaterForData(const std::vector<Dictionary>& bills) const;

  /// The payments under "Highest" and "Lowest". Sorts the bill's own list by amount, ascending, and leaves it so,
  /// deliberately: hand in a copy where the order counts. Elements that are no payment go to its front. Without
  /// payments both keys hold an entry of amount 0 whose "Date" is the words "No Payments Yet".
  Dictionary highestAndLowestPaymentForBill(Dictionary& bill) const;

  /// Sums of all payments, of this and last year and of the seasons, the two years as texts, and their heights of 0 to
  /// 100. A payment without a date counts in "Total" alone.
  [[nodiscard]] Dictionary totalsForBill(const Dictionary& bill) const;

  /// Weekday, month, day and year in the locale's order, however far away.
  [[nodiscard]] std::string createStringWithDate(Date date) const;
  /// Each number as a percentage of the largest, cut to a 32-bit integer, none below 0; all 0 when the largest is.
  [[nodiscard]] Array calculateRelativeHeightsForGraphs(const Array& numbers) const;
  /// The part of the width that what was paid has in all that was owed; not a number when that is 0.
  [[nodiscard]] float balanceGraphSizeWithMaxWidthAndTotalPaidAndBalance(std::int32_t width, float paid,
                                                                         float balance) const;

  // The seasons are quarters of the calendar year, not the sun's; deliberate. Southern countries name them the other
  // way round. A thirteenth month lies in none.
  [[nodiscard]] bool isEqualToWinter(int month) const { return month >= 1 && month <= 3; }
  [[nodiscard]] bool isEqualToSpring(int month) const { return month >= 4 && month <= 6; }
  [[nodiscard]] bool isEqualToSummer(int month) const { return month >= 7 && month <= 9; }
  [[nodiscard]] bool isEqualToFall(int month) const { return month >= 10 && month <= 12; }

 private:
  const Platform& platform_;
};

}  // namespace tallyvane
