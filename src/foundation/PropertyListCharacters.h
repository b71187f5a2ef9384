// Which characters the text of a property list may hold. Private to PropertyList*.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tallyvane {

/// What is wrong with a property list; thrown and caught within PropertyList*.cpp only.
struct PropertyListFault {
  std::string reason;
};

/// Written in place of what a property list cannot hold.
inline constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

[[nodiscard]] constexpr std::uint8_t byteOf(char character) { return static_cast<std::uint8_t>(character); }

/// One flag per byte, for loops that look at every byte of a file.
class ByteSet {
 public:
  constexpr explicit ByteSet(std::string_view members) {
    for (const char member : members) flags_[static_cast<std::uint8_t>(member)] = true;
  }
  /// ASCII that stands in a text for itself: no markup and no control character. Not the carriage return, which a
  /// reader takes for a line feed, and not ">", which ends "]]>".
  [[nodiscard]] static constexpr ByteSet plainText() {
    ByteSet set("\t\n");
    for (std::size_t code = 0x20; code < 0x80; ++code) set.flags_[code] = code != '<' && code != '>' && code != '&';
    return set;
  }
  [[nodiscard]] constexpr bool has(char character) const { return flags_[byteOf(character)]; }

 private:
  std::array<bool, 256> flags_{};
};

/// Where the characters of the set end that stand from `at` on.
[[nodiscard]] inline const char* endOfRun(const ByteSet& set, const char* at, const char* end) {
  while (at != end && set.has(*at)) ++at;
  return at;
}

inline constexpr ByteSet xmlSpaces(" \t\n\r");
inline constexpr ByteSet xmlNameCharacters("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.:");
inline constexpr ByteSet plainTextCharacters = ByteSet::plainText();

[[nodiscard]] constexpr bool isXmlCharacter(std::uint32_t code) {
  if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
  return code < 0xD800 || (code >= 0xE000 && code < 0xFFFE) || (code >= 0x10000 && code <= 0x10FFFF);
}

/// The length of the character that begins with the byte at `at`, which is not ASCII; 0 when that is not the shortest
/// UTF-8 form of a character that XML can carry.
[[nodiscard]] inline std::size_t multiByteLength(const char* at, const char* end) {
  const std::uint8_t lead = byteOf(*at);
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || static_cast<std::size_t>(end - at) < length) return 0;
  std::uint32_t code = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const std::uint8_t next = byteOf(at[i]);
    if ((next & 0xC0U) != 0x80U) return 0;
    code = code << 6 | (next & 0x3FU);
  }
  constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
  return code >= smallest[length] && isXmlCharacter(code) ? length : 0;
}

/// Appends a character that isXmlCharacter accepts.
inline void appendUtf8(std::string& text, std::uint32_t code) {
  const auto put = [&](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (code < 0x80) return put(code);
  if (code < 0x800) {
    put(0xC0U | code >> 6);
  } else if (code < 0x10000) {
    put(0xE0U | code >> 12);
    put(0x80U | (code >> 6 & 0x3FU));
  } else {
    put(0xF0U | code >> 18);
    put(0x80U | (code >> 12 & 0x3FU));
    put(0x80U | (code >> 6 & 0x3FU));
  }
  put(0x80U | (code & 0x3FU));
}

}  // namespace tallyvane
