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

/// Calls visit(fields) for each payment in list order. What is no dictionary is no payment. Payments lie all over the
/// memory: the walk asks for the entries of those that come next, instead of waiting for each.
template <typename Visit>
void forEachPayment(const Array& list, Visit visit) {
  constexpr std::size_t ahead = 8;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const auto* later = i + ahead < list.size() ? list[i + ahead].get<Dictionary>() : nullptr;
    if (later != nullptr && later->size() > 1) {
      __builtin_prefetch(later->begin());
      __builtin_prefetch(later->begin() + 1);
    }
    if (const auto* payment = list[i].get<Dictionary>()) visit(fieldsOf(*payment));
  }
}

/// The largest number of a list that is not empty.
[[nodiscard]] inline float largestOf(const Array& numbers) {
  const auto isBelow = [](const Value& left, const Value& right) { return isNumberBelow(&left, &right); };
  return floatValue(&*std::max_element(numbers.begin(), numbers.end(), isBelow));
}

}  // namespace tallyvane
