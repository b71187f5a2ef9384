#pragma once

#include <string>

namespace tallyvane::cli {

/// The number in digits with a point and without an exponent, as few as tell it from its neighbours: 84.5, 900, -0.01.
/// One that a 32-bit float holds is written as that float's: 39.9, not 39.900001525878906. Infinite ones, and what is
/// no number, give "".
[[nodiscard]] std::string plainDecimal(double number);

}  // namespace tallyvane::cli
