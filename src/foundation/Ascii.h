// Letters, digits and blanks of ASCII, whatever the locale.
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

/// The text without blanks, tabs and line breaks at its ends.
[[nodiscard]] constexpr std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The byte as in a URL: "%2F".
[[nodiscard]] inline std::string percentEncoded(char c) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  return {'%', digits[byte >> 4U], digits[byte & 0x0FU]};
}

}  // namespace tallyvane
