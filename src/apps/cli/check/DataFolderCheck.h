// A check of the whole data folder. It changes nothing.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "cli/check/Finding.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// A bill that is in no list and could be put into one: its file is named as it should be.
struct UnlistedBill {
  std::string bid;
  Dictionary content;
};

struct CheckReport {
  std::size_t files = 0;  ///< that were looked at
  std::vector<Finding> findings;
  std::vector<UnlistedBill> unlisted;
};

/// Told after each file how many have been looked at, of how many.
using CheckProgress = std::function<void(std::size_t done, std::size_t all)>;

/// Reads every file that lies directly in this folder, but for hidden ones, to its end. Other programs may write
/// meanwhile: the index is read after the bills, so that a bill which is just being added is not taken for one in no
/// list. Without a readable index nothing is said of lists.
[[nodiscard]] CheckReport checkDataFolder(const Platform& platform, const std::string& folder,
                                          const CheckProgress& progress);

}  // namespace tallyvane::cli
