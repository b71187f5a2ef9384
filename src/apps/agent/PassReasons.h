#pragma once

#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::agent {

/// Why the reminder pass is to be made: it has not been yet, it is another day, the user's zone or language has
/// changed, or a setting that reminders depend on.
class PassReasons {
 public:
  /// Whether anything has changed since the last `note`.
  [[nodiscard]] bool areNew(const Platform& platform) const { return !(reasonsOf(platform) == noted_); }
  /// The pass is made for what holds now.
  void note(const Platform& platform) { noted_ = reasonsOf(platform); }

 private:
  [[nodiscard]] static Dictionary reasonsOf(const Platform& platform);

  Dictionary noted_;
};

}  // namespace tallyvane::agent
