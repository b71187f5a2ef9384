// What a person typed, in a form that is easy to compare.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallyvane::cli {

/// Case folded, compatible forms and invisible marks gone, every script's digits as ASCII, blanks single and none at
/// the ends.
[[nodiscard]] std::string plainText(std::string_view text);

/// 1 to 6 ASCII digits and nothing else.
[[nodiscard]] std::optional<int> wholeNumber(std::string_view text);

enum class Unit { day, week, month, year };
struct UnitCount {
  int count;
  Unit unit;
};

/// "10 days", "10d", "a week", "two months", in plain text.
[[nodiscard]] std::optional<UnitCount> unitCount(std::string_view plain);

}  // namespace tallyvane::cli
