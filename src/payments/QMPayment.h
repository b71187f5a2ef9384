#pragma once

#include <optional>
#include <string>

#include "foundation/Date.h"
#include "foundation/Value.h"

namespace tallyvane {

/// A payment as the user entered it, handed to QMPaymentLogger. All four must be set when it is recorded.
struct QMPayment {
  std::optional<Value> amount;      ///< a number; kept as it is, read as a 32-bit float wherever it is counted
  std::optional<Date> date;         ///< when it was paid
  std::optional<std::string> note;  ///< free text
  /// The absolute path of a receipt that the user picked; without one, the receipt button's title.
  std::optional<std::string> attachment;
};

}  // namespace tallyvane
