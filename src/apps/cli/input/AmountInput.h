#pragma once

#include <string_view>

#include "foundation/Region.h"
#include "foundation/Result.h"

namespace tallyvane::cli {

/// An amount in the locale's form, from 0 to below a trillion; or a sentence on what is wrong with it.
[[nodiscard]] Result<double> readAmount(const Region& region, std::string_view text);

/// An interest rate typed in per cent ("4.9", "4.9%"), from 0 to below 1000, as the fraction that a bill keeps (0.049).
[[nodiscard]] Result<double> readInterest(const Region& region, std::string_view text);

}  // namespace tallyvane::cli
