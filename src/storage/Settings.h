// Settings read at the moment of use; an absent key is 0 or false.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/NumberReading.h"
#include "platform/UserDefaults.h"

namespace tallyvane {

[[nodiscard]] inline bool boolSetting(UserDefaults& defaults, std::string_view key) {
  return boolValue(defaults.object(key));
}

[[nodiscard]] inline std::int64_t integerSetting(UserDefaults& defaults, std::string_view key) {
  return integerValue(defaults.object(key));
}

[[nodiscard]] inline std::int32_t int32Setting(UserDefaults& defaults, std::string_view key) {
  return int32Value(defaults.object(key));
}

}  // namespace tallyvane
