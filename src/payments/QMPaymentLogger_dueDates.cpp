#include "foundation/Calendar.h"
#include "foundation/NumberReading.h"
#include "payments/QMPaymentLogger.h"
#include "schedule/RepeatRule.h"
#include "storage/Keys.h"

namespace tallyvane {

namespace {

/// The low 32 bits of the product, signed.
std::int32_t product(std::int32_t left, std::int32_t right) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(left) * static_cast<std::uint32_t>(right));
}

/// An absent rule reads as zeros; nothing for one that is incomplete or no rule at all.
std::optional<Array> ruleOf(const Dictionary& bill) {
  const Value* stored = bill.find(key::Repeat);
  if (stored == nullptr) return Array{0, 0};
  const Array* rule = stored->get<Array>();
  return rule != nullptr && isCompleteRule(*rule) ? std::optional(*rule) : std::nullopt;
}

}  // namespace

std::optional<Date> QMPaymentLogger::calculateNextDueDateForBill(const Dictionary& bill) const {
  return calculateNextDueDateForBillWithModifier(bill, 1);
}

std::optional<Date> QMPaymentLogger::calculateNextDueDateForBillWithModifier(const Dictionary& bill,
                                                                             std::int32_t modifier) const {
  const Date* due = bill.get<Date>(key::DueDate);
  const std::optional<Array> rule = ruleOf(bill);
  if (due == nullptr || !rule) return std::nullopt;
  const std::int32_t step = product(int32Value(&(*rule)[0]), modifier);
  const Calendar& calendar = Calendar::of(platform_.region);
  switch (int32Value(&(*rule)[1])) {
    case UnitKind::weeks:
      return calendar.addingGregorian(*due, {.weeks = step});
    case UnitKind::twicePerMonth:
      return calculateSpecialNextDueDateTwicePerMonthForDateWithDays(*due, {1, 15});
    case UnitKind::months:
      return calendar.addingGregorian(*due, {.months = step});
    case UnitKind::days:
      return calendar.addingGregorian(*due, {.days = step});
    case UnitKind::never:
      return distantFuture;
    default:
      return std::nullopt;
  }
}

// The time of day is dropped here, unlike for the other kinds; deliberate.
Date QMPaymentLogger::calculateSpecialNextDueDateTwicePerMonthForDateWithDays(
    Date date, const std::array<int, 2>& dayNumbers) const {
  constexpr int lastMonth = 12;
  const auto [first, second] = dayNumbers;
  const Calendar& calendar = Calendar::of(platform_.region);
  const DateFields fields = calendar.fields(date);
  if (fields.day < second) return calendar.date(fields.year, fields.month, second);
  if (fields.month == lastMonth) return calendar.date(fields.year + 1, 1, first);
  return calendar.date(fields.year, fields.month + 1, first);
}

}  // namespace tallyvane
