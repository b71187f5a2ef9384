#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "storage/Keys.h"

namespace tallyvane::cli {

/// A list of the bill index, and the word for the state of the bills in it.
struct Group {
  std::string_view key;
  std::string_view word;
};

inline constexpr Group activeBills{key::ActiveBills, "active"};
inline constexpr Group archivedBills{key::ArchivedBills, "archived"};
inline constexpr Group deletedBills{key::DeletedBills, "deleted"};

/// In the order in which bills are looked up.
inline constexpr Group allGroups[] = {activeBills, archivedBills, deletedBills};

}  // namespace tallyvane::cli
