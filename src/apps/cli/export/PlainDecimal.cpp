#include "cli/export/PlainDecimal.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace tallyvane::cli {

namespace {

template <typename Number>
std::string shortest(Number number) {
  std::array<char, 512> digits{};  // the longest has 309 before the point, or 1074 behind one that is not reached
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
  return error == std::errc() ? std::string(digits.data(), end) : std::string("0");
}

bool isFloat(double number) {
  return std::abs(number) <= static_cast<double>(std::numeric_limits<float>::max()) &&
         static_cast<double>(static_cast<float>(number)) == number;
}

}  // namespace

std::string plainDecimal(double number) {
  if (!std::isfinite(number)) return "";
  const bool isWhole = std::trunc(number) == number;
  return isFloat(number) && !isWhole ? shortest(static_cast<float>(number)) : shortest(number);
}

}  // namespace tallyvane::cli
