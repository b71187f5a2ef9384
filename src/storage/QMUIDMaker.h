#pragma once

#include <string>
#include <string_view>

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

/// Whether the text has the form of what it makes.
[[nodiscard]] bool isUID(std::string_view text);

}  // namespace tallyvane
