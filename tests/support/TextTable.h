#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tallyvane::testing {

/// Variables of an environment, or files, by their names.
using TextTable = std::map<std::string, std::string, std::less<>>;

/// Answers as an environment of these variables alone.
inline auto lookupIn(TextTable table) {
  return [table = std::move(table)](std::string_view name) {
    const auto found = table.find(name);
    return found == table.end() ? std::nullopt : std::optional(found->second);
  };
}

}  // namespace tallyvane::testing
