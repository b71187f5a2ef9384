#include "storage/QMUIDMaker.h"

#include <cstdint>

namespace tallyvane {

namespace {

constexpr std::string_view digits = "0123456789ABCDEF";

}  // namespace

std::string QMUIDMaker::makeUID() {
  constexpr int versionByte = 6;
  constexpr int variantByte = 8;
  auto bytes = random_.bytes16();
  bytes[versionByte] = static_cast<std::uint8_t>((bytes[versionByte] & 0x0F) | 0x40);  // a random UUID …
  bytes[variantByte] = static_cast<std::uint8_t>((bytes[variantByte] & 0x3F) | 0x80);  // … of the common variant

  std::string uid;
  uid.reserve(2 * bytes.size());
  for (const std::uint8_t byte : bytes) {
    uid += digits[byte >> 4];
    uid += digits[byte & 0x0F];
  }
  return uid;
}

bool isUID(std::string_view text) {
  constexpr std::size_t length = 32;
  return text.size() == length && text.find_first_not_of(digits) == std::string_view::npos;
}

}  // namespace tallyvane
