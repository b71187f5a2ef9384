#include "freedesktop/SystemRandom.h"

#include <sys/random.h>

#include <system_error>

#include "freedesktop/FileDescriptor.h"

namespace tallyvane {

std::array<std::uint8_t, 16> SystemRandom::bytes16() {
  std::array<std::uint8_t, 16> bytes{};
  // Up to 256 bytes come whole or not at all.
  if (uninterrupted([&] { return ::getrandom(bytes.data(), bytes.size(), 0); }) < 0) {
    throw std::system_error(errno, std::generic_category(), "random numbers");
  }
  return bytes;
}

}  // namespace tallyvane
