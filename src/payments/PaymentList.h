// A bill's list of payments, read with care for what other programs may have put there.
#pragma once

#include <stdexcept>

#include "foundation/NumberReading.h"
#include "foundation/Value.h"
#include "storage/Keys.h"

namespace tallyvane {

/// The bill's payments in the order in which they were recorded; a bill without a list has none. Throws
/// std::invalid_argument when "PaymentList" is something else, which must not be taken for no payments and replaced.
[[nodiscard]] inline const Array& paymentListOf(const Dictionary& bill) {
  static const Array none;
  const Value* stored = bill.find(key::PaymentList);
  if (stored == nullptr) return none;
  const Array* payments = stored->get<Array>();
  if (payments == nullptr) throw std::invalid_argument("the bill's \"PaymentList\" is not a list");
  return *payments;
}

/// 0 for an entry that is no dictionary or has no amount.
[[nodiscard]] inline float amountOfPayment(const Value& payment) {
  const Dictionary* entry = payment.get<Dictionary>();
  return entry == nullptr ? 0.0F : floatValue(*entry, key::Amount);
}

/// Nothing for an entry that is no dictionary or has no date.
[[nodiscard]] inline const Date* dateOfPayment(const Value& payment) {
  const Dictionary* entry = payment.get<Dictionary>();
  return entry == nullptr ? nullptr : entry->get<Date>(key::Date);
}

}  // namespace tallyvane
