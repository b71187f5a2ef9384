#pragma once

#include <cstddef>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Region.h"
#include "foundation/Value.h"

namespace tallyvane::cli {

/// The next dates, at most `count`, on which a bill due then falls due again; each is computed from the one before, as
/// payments do it (31 January, 28 February, 28 March). Fewer, or none, when the rule never repeats, does not lead
/// ahead, or leads beyond the distant future.
[[nodiscard]] std::vector<Date> nextDueDates(const Region& region, Date due, const Array& repeat, std::size_t count);

}  // namespace tallyvane::cli
