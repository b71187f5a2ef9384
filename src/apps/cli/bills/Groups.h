#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/Sentences.h"
#include "storage/Keys.h"

namespace tallyvane::cli {

/// A list of the bill index, and the word for the state of the bills in it: English, as programs and options have it.
struct Group {
  std::string_view key;
  std::string_view word;
};

// translators: the state of one bill, in a table
inline constexpr Group activeBills{key::ActiveBills, marked("active")};
// translators: the state of one bill, in a table
inline constexpr Group archivedBills{key::ArchivedBills, marked("archived")};
// translators: the state of one bill, in a table
inline constexpr Group deletedBills{key::DeletedBills, marked("deleted")};

/// In the order in which bills are looked up.
inline constexpr Group allGroups[] = {activeBills, archivedBills, deletedBills};

}  // namespace tallyvane::cli
