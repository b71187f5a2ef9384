#pragma once

#include <vector>

#include "foundation/Value.h"

namespace tallyvane {

/// The rows ascending by "SortableDueDate"; equal rows keep their order, rows without a sort number come last.
[[nodiscard]] std::vector<Dictionary> sortedByDueDate(std::vector<Dictionary> rows);

}  // namespace tallyvane
