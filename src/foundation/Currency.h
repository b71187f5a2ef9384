#pragma once

#include <string>

#include "foundation/Region.h"

namespace tallyvane {

/// The ISO code of the currency of the locale's country, or of the country where its language is mostly spoken; ""
/// when neither is known.
[[nodiscard]] std::u16string currencyCode(const Region& region);

}  // namespace tallyvane
