// Walking over the payments of a bill and over their amounts.
#pragma once

#include <algorithm>

#include "foundation/NumberReading.h"
#include "foundation/Value.h"
#include "storage/Keys.h"

namespace tallyvane {

/// The bill's list of payments; an empty one when it has none, or something that is no list.
[[nodiscard]] inline const Array& paymentsOf(const Dictionary& bill) {
  static const Array none;
  const Array* payments = bill.get<Array>(key::PaymentList);
  return payments == nullptr ? none : *payments;
}

/// What is read of a payment; null where it is absent, or no date.
struct PaymentFields {
  const Value* amount = nullptr;
  const Date* date = nullptr;
};

/// In one walk over the first entries: statistics read hundreds of thousands of payments.
[[nodiscard]] inline PaymentFields fieldsOf(const Dictionary& payment) {
  PaymentFields fields;
  bool hasDate = false;
  for (const auto& [name, value] : payment) {
    if (fields.amount == nullptr && name == key::Amount) {
      fields.amount = &value;
    } else if (!hasDate && name == key::Date) {
      hasDate = true;
      fields.date = value.get<Date>();
    }
    if (hasDate && fields.amount != nullptr) break;
  }
  return fields;
}

/// Has a value brought from the memory while other work is done; nothing for null.
inline void askFor(const Value* value) {
  if (value == nullptr) return;
  __builtin_prefetch(value);
  __builtin_prefetch(reinterpret_cast<const char*>(value) + (sizeof(Value) - 1));
}

/// Calls visit(fields) for each payment in list order. What is no dictionary is no payment. Payments lie all over the
/// memory: the walk asks for the amount and the date of those that come next, instead of waiting for each.
template <typename Visit>
void forEachPayment(const Array& list, Visit visit) {
  constexpr std::size_t ahead = 12;
  const auto askForPayment = [&](std::size_t place) {
    const auto* payment = place < list.size() ? list[place].get<Dictionary>() : nullptr;
    if (payment == nullptr || payment->size() < 2) return;
    askFor(&payment->values()[0]);  // as a payment is written
    askFor(&payment->values()[1]);
  };
  for (std::size_t i = 0; i < ahead; ++i) askForPayment(i);
  for (std::size_t i = 0; i < list.size(); ++i) {
    askForPayment(i + ahead);
    if (const auto* payment = list[i].get<Dictionary>()) visit(fieldsOf(*payment));
  }
}

/// The largest number of a list that is not empty.
[[nodiscard]] inline float largestOf(const Array& numbers) {
  const auto isBelow = [](const Value& left, const Value& right) { return isNumberBelow(&left, &right); };
  return floatValue(&*std::max_element(numbers.begin(), numbers.end(), isBelow));
}

}  // namespace tallyvane
