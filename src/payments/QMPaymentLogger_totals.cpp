#include <chrono>

#include "foundation/NumberReading.h"
#include "payments/PaymentList.h"
#include "payments/QMPaymentLogger.h"
#include "storage/Keys.h"

namespace tallyvane {

namespace {

float totalOf(const Array& payments) {
  float total = 0;
  for (const Value& payment : payments) total += amountOfPayment(payment);
  return total;
}

}  // namespace

Array QMPaymentLogger::calculateAveragePaidForBillWithNewPayment(const Dictionary& bill, const Value& amount) const {
  const Array& payments = paymentListOf(bill);
  const float total = totalOf(payments) + floatValue(&amount);
  return {total, total / static_cast<float>(payments.size())};
}

Array QMPaymentLogger::recalculateAveragePaidForData(const Array& payments) const {
  const float total = totalOf(payments);
  return {total, payments.empty() ? 0.0F : total / static_cast<float>(payments.size())};
}

bool QMPaymentLogger::shouldUpdateLastPaidDateWithNewDate(std::optional<Date> stored, Date newDate) const {
  if (!stored) return false;
  return truncatedToInt32(std::chrono::duration<double>(*stored - newDate).count()) < 0;
}

Value QMPaymentLogger::amountPrefilValueForBill(const Dictionary& bill) const {
  const float amount = floatValue(bill, key::Amount);
  if (amount > 0) return amount;
  const Array& payments = paymentListOf(bill);
  const Dictionary* last = payments.empty() ? nullptr : payments.back().get<Dictionary>();
  const Value* lastAmount = last == nullptr ? nullptr : last->find(key::Amount);
  return lastAmount == nullptr ? Value(0.0F) : *lastAmount;
}

bool QMPaymentLogger::checkIfBillShouldSilentlyLog(const Dictionary& row) const {
  return integerValue(row, key::PayType) == key::paidAutomatically && floatValue(row, key::Amount) > 0 &&
         floatValue(row, key::SortableDueDate) <= 0;
}

}  // namespace tallyvane
