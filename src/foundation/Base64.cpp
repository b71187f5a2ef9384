#include "foundation/Base64.h"

#include <cstdint>

namespace tallyvane {

void appendBase64(std::string& to, std::string_view bytes) {
  const auto byteAt = [&](std::size_t i) -> std::uint32_t {
    return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
  };
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::uint32_t group = byteAt(i) << 16 | byteAt(i + 1) << 8 | byteAt(i + 2);
    for (std::size_t digit = 0; digit < 4; ++digit)
      to += i + digit > bytes.size() ? '=' : base64Digits[group >> (18 - 6 * digit) & 63];
  }
}

}  // namespace tallyvane
