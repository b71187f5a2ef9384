#pragma once

#include <string_view>

#include "foundation/Result.h"
#include "foundation/Value.h"

namespace tallyvane::cli {

/// The repeat array [count, unit kind] (0 weeks, 1 twice per month, 2 months, 3 days, 4 never) of a rule as people say
/// it in English: "weekly", "every 2 weeks", "twice a month", "every other month", "quarterly", "10d", "never". Years
/// are kept as 12 months each. Counts run from 1 to 1000. Case, blanks and hyphens do not count. A sentence when it is
/// no such rule.
[[nodiscard]] Result<Array> readRepeat(std::string_view text);

}  // namespace tallyvane::cli
