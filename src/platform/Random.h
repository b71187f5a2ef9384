#pragma once

#include <array>
#include <cstdint>

namespace tallyvane {

class Random {
 public:
  virtual ~Random() = default;
  /// Sixteen bytes that nobody can foresee and that never come twice.
  [[nodiscard]] virtual std::array<std::uint8_t, 16> bytes16() = 0;
};

}  // namespace tallyvane
