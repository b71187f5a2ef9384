// What holds for every use of the bill index.
#pragma once

#include <optional>
#include <string_view>

#include "foundation/Value.h"
#include "storage/Keys.h"

namespace tallyvane {

/// The first of the index's lists that is there but is no list. What such an index holds would be lost in a write, so
/// it is written only on the user's word to empty it.
[[nodiscard]] inline std::optional<std::string_view> oddListOf(const Dictionary& index) {
  for (const std::string_view list : {key::ActiveBills, key::ArchivedBills, key::DeletedBills}) {
    if (index.contains(list) && index.get<Array>(list) == nullptr) return list;
  }
  return std::nullopt;
}

}  // namespace tallyvane
