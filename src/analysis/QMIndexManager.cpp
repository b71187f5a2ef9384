#include "analysis/QMIndexManager.h"

#include "analysis/Payments.h"
#include "foundation/NumberReading.h"

namespace tallyvane {

Array QMIndexManager::calculateTotalPaidinArrayForDate(std::span<const Dictionary> bills, Date date) {
  const Calendar& calendar = Calendar::of(platform_.region);
  const CalendarMonth month = calendar.month(date);
  totalPaymentsThisMonth = 0;
  float sum = 0;
  for (const Dictionary& bill : bills) {
    const Date* last = bill.get<Date>(key::LastPayment);
    if (last == nullptr || calendar.month(*last) != month || paymentsOf(bill).empty()) continue;
    sum += parseTotalPaidThisInPaymentListWithCurrentComponents(paymentsOf(bill), month);
  }
  return {totalPaymentsThisMonth, sum};
}

float QMIndexManager::parseTotalPaidThisInPaymentListWithCurrentComponents(const Array& payments,
                                                                           const CalendarMonth& month) {
  const Calendar& calendar = Calendar::of(platform_.region);
  float sum = 0;
  forEachPayment(payments, [&](const PaymentFields& payment) {
    if (payment.date == nullptr || calendar.month(*payment.date) != month) return;
    ++totalPaymentsThisMonth;
    sum += floatValue(payment.amount);
  });
  return sum;
}

}  // namespace tallyvane
