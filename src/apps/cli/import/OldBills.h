// The bills of the previous version, and what an import makes of them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/Json.h"
#include "cli/terminal/Table.h"
#include "foundation/Date.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// An old file and what it becomes.
struct OldBill {
  std::string file;
  std::string name;
  std::string icon;
  std::optional<Date> due;
  std::string repeats;
  std::size_t payments = 0;
  bool active = false;
  bool readable = false;
  bool stopsImport = false;
};

/// One for each entry of the old folder's "Data" but hidden ones, readable or not, in the order in which they are
/// imported. Fails when the entries cannot be listed.
[[nodiscard]] std::vector<OldBill> oldBills(const Platform& platform, const std::string& folder);

[[nodiscard]] Table tableOf(const Platform& platform, const std::vector<OldBill>& bills);
[[nodiscard]] Json jsonOf(const Platform& platform, const std::vector<OldBill>& bills);

}  // namespace tallyvane::cli
