#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "foundation/Ascii.h"
#include "foundation/Texts.h"

namespace tallyvane {

namespace {

// Bytes of ASCII at the front, told eight at a time.
std::size_t asciiPrefix(std::string_view bytes) {
  constexpr std::uint64_t highBits = 0x8080808080808080U;
  std::size_t at = 0;
  for (std::uint64_t eight = 0; at + sizeof eight <= bytes.size(); at += sizeof eight) {
    std::memcpy(&eight, bytes.data() + at, sizeof eight);
    if ((eight & highBits) != 0) break;
  }
  while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80) ++at;
  return at;
}

// The next character, or a negative number for bytes that are none; moves `at` behind it.
UChar32 nextCharacter(std::string_view bytes, std::size_t& at) {
  UChar32 character = 0;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"  // inside ICU's macro
  U8_NEXT(bytes.data(), at, bytes.size(), character);
#pragma GCC diagnostic pop
  return character;
}

}  // namespace

std::size_t utf16Length(std::string_view text) {
  std::size_t at = asciiPrefix(text);
  std::size_t units = at;
  while (at < text.size()) units += nextCharacter(text, at) > 0xFFFF ? 2 : 1;
  return units;
}

bool isValidUtf8(std::string_view bytes) {
  std::size_t at = asciiPrefix(bytes);
  while (at < bytes.size()) {
    if (nextCharacter(bytes, at) < 0) return false;
    at += asciiPrefix(bytes.substr(at));
  }
  return true;
}

bool containsIgnoringCase(std::string_view text, std::string_view ascii) {
  const auto sameLetter = [](char left, char right) { return lowerAscii(left) == lowerAscii(right); };
  return ascii.empty() || std::search(text.begin(), text.end(), ascii.begin(), ascii.end(), sameLetter) != text.end();
}

}  // namespace tallyvane
