#pragma once

#include <string>

#include "platform/Random.h"

namespace tallyvane {

class QMUIDMaker {
 public:
  explicit QMUIDMaker(Random& random) : random_(random) {}

  /// A new random UUID without its dashes: 32 upper-case hexadecimal characters.
  [[nodiscard]] std::string makeUID();

 private:
  Random& random_;
};

}  // namespace tallyvane
