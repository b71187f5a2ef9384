// Letters and digits of ASCII, whatever the locale.
#pragma once

#include <string>
#include <string_view>

namespace tallyvane {

[[nodiscard]] constexpr bool isAsciiDigit(char c) { return c >= '0' && c <= '9'; }

[[nodiscard]] constexpr bool isAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

[[nodiscard]] constexpr bool isAsciiAlphanumeric(char c) { return isAsciiDigit(c) || isAsciiLetter(c); }

[[nodiscard]] constexpr char lowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

[[nodiscard]] inline std::string lowerAscii(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = lowerAscii(c);
  return lower;
}

}  // namespace tallyvane
