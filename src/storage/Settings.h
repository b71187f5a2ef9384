// Settings read at the moment of use; an absent key is 0 or false.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "foundation/NumberReading.h"
#include "platform/UserDefaults.h"

namespace tallyvane {

[[nodiscard]] inline bool boolSetting(UserDefaults& defaults, std::string_view key) {
  const std::optional<Value> value = defaults.object(key);
  return boolValue(value ? &*value : nullptr);
}

[[nodiscard]] inline std::int64_t integerSetting(UserDefaults& defaults, std::string_view key) {
  const std::optional<Value> value = defaults.object(key);
  return integerValue(value ? &*value : nullptr);
}

[[nodiscard]] inline std::int32_t int32Setting(UserDefaults& defaults, std::string_view key) {
  const std::optional<Value> value = defaults.object(key);
  return int32Value(value ? &*value : nullptr);
}

}  // namespace tallyvane
