#pragma once

#include <string>

#include "foundation/Region.h"

namespace tallyvane {

/// The code of the country that the locale itself names, such as "AU"; "" when it names none.
[[nodiscard]] std::string countryCode(const Region& region);

}  // namespace tallyvane
