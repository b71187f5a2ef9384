// How alike two names are.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyvane::cli {

/// The text in a form in which case and the several spellings of one character are equal.
[[nodiscard]] std::string folded(std::string_view text);

/// The choice that takes the fewest changed letters to come from the text, if that is at most half of its letters.
[[nodiscard]] std::optional<std::string> nearest(std::string_view text, const std::vector<std::string>& choices);

}  // namespace tallyvane::cli
