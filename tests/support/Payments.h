// A bill to be paid.
#pragma once

#include "payments/QMPaymentLogger.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <set>

#include "support/Bills.h"
#include "support/Matchers.h"

namespace tallyvane::testing {

struct Payments : ::testing::Test {
  Date next(Date due, Array repeat, std::int32_t modifier = 1) {
    return logger.calculateNextDueDateForBillWithModifier({{"DueDate", due}, {"Repeat", std::move(repeat)}}, modifier)
        .value_or(Date());
  }
  static QMPayment payment(const Value& amount, Date date, std::string attachment = "Attach") {
    return {amount, date, "by post", std::move(attachment)};
  }
  Dictionary stored() { return fileOf(desktop, "B1.plist"); }
  Dictionary recorded(const QMPayment& paid, const Dictionary& before) {
    logger.recordPaymentForBill(paid, before);
    return stored();
  }
  static std::vector<float> numbers(const Array& values) {
    std::vector<float> floats;
    for (const Value& value : values)
      floats.push_back(static_cast<float>(value.get<double>() ? *value.get<double>() : -1));
    return floats;
  }

  FakeDesktop desktop;
  QMPaymentLogger logger{desktop.platform};
  const Dictionary rent = bill("B1", "Rent", noon(2027, 3, 1));
};

}  // namespace tallyvane::testing
