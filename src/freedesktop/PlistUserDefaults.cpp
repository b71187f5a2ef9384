#include "freedesktop/PlistUserDefaults.h"

namespace tallyvane {

std::optional<Value> PlistUserDefaults::object(std::string_view key) {
  if (const Value* value = list_.content().find(key)) return *value;
  if (const Value* value = registered_.find(key)) return *value;
  return std::nullopt;
}

Result<> PlistUserDefaults::synchronize() {
  list_.forget();
  return {};
}

void PlistUserDefaults::registerDefaults(const Dictionary& values) {
  for (const auto& [key, value] : values) registered_.set(key, value);
}

}  // namespace tallyvane
