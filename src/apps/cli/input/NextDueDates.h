#pragma once

#include <cstddef>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// The next dates, at most `count`, on which a bill due then falls due again; each is computed from the one before, as
/// payments do it (31 January, 28 February, 28 March). Fewer, or none, when the rule never repeats, does not lead
/// ahead, or leads beyond the distant future.
[[nodiscard]] std::vector<Date> nextDueDates(const Platform& platform, Date due, const Array& repeat,
                                             std::size_t count);

}  // namespace tallyvane::cli
