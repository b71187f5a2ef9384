#pragma once

#include "foundation/Date.h"

namespace tallyvane {

/// The current moment, asked afresh at every use.
class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual Date now() = 0;
};

}  // namespace tallyvane
