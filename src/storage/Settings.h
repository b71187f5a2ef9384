// Settings read at the moment of use.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "foundation/NumberReading.h"
#include "platform/UserDefaults.h"

namespace tallyvane {

/// Nothing when the key is absent or has a value of another type.
template <typename T>
[[nodiscard]] std::optional<T> settingOf(UserDefaults& defaults, std::string_view key) {
  std::optional<Value> stored = defaults.object(key);
  T* value = stored ? stored->get<T>() : nullptr;
  return value == nullptr ? std::nullopt : std::optional<T>(std::move(*value));
}

/// An absent key is 0 or false.
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
