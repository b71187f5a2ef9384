// Taking apart small text files and variables of the environment.
#pragma once

#include <algorithm>
#include <string_view>

namespace tallyvane {

/// Up to the delimiter or, without one, to the end; the text keeps what follows the delimiter.
[[nodiscard]] inline std::string_view takeUpTo(std::string_view& text, char delimiter) {
  const std::string_view taken = text.substr(0, text.find(delimiter));
  text.remove_prefix(std::min(taken.size() + 1, text.size()));
  return taken;
}

}  // namespace tallyvane
