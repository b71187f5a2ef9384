#pragma once

#include "platform/Clock.h"

namespace tallyvane {

/// The machine's wall clock.
class SystemClock : public Clock {
 public:
  [[nodiscard]] Date now() override;
};

}  // namespace tallyvane
