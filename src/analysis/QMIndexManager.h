#pragma once

#include <cstdint>
#include <span>

#include "foundation/Calendar.h"
#include "foundation/Date.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane {

/// What was paid in a month of the user's calendar. Keeps a count: one calculation at a time. Changes no bill.
class QMIndexManager {
 public:
  explicit QMIndexManager(const Platform& platform) : platform_(platform) {}

  /// Payments found by the last calculation.
  std::int32_t totalPaymentsThisMonth = 0;

  /// [count, 32-bit float sum] of the payments in the month of the date. Looks only at bills whose "LastPayment" lies
  /// in that month, deliberately: for a past month, bills that were paid again later are left out.
  [[nodiscard]] Array calculateTotalPaidinArrayForDate(std::span<const Dictionary> bills, Date date);
  /// The sum of one list's payments in the month; adds their number to the count. Payments without a date lie in none.
  float parseTotalPaidThisInPaymentListWithCurrentComponents(const Array& payments, const CalendarMonth& month);

 private:
  const Platform& platform_;
};

}  // namespace tallyvane
