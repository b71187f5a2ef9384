// What a repeat array, [count, unit kind], holds.
#pragma once

#include <cstdint>

#include "foundation/NumberReading.h"
#include "foundation/Value.h"

namespace tallyvane {

/// The numbering is the product's: days are 3, and twice per month sits between weeks and months. Deliberate.
enum UnitKind : std::int64_t { weeks = 0, twicePerMonth = 1, months = 2, days = 3, never = 4 };

/// Whether both a count and a unit kind can be read from it.
[[nodiscard]] inline bool isCompleteRule(const Array& repeat) {
  return repeat.size() >= 2 && canReadNumber(repeat[0]) && canReadNumber(repeat[1]);
}

}  // namespace tallyvane
