#pragma once

#include "platform/Random.h"

namespace tallyvane {

/// The kernel's random numbers.
class SystemRandom : public Random {
 public:
  [[nodiscard]] std::array<std::uint8_t, 16> bytes16() override;
};

}  // namespace tallyvane
