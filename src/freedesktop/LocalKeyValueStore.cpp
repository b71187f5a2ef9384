#include "freedesktop/LocalKeyValueStore.h"

#include <algorithm>

namespace tallyvane {

std::optional<Value> LocalKeyValueStore::object(std::string_view key) {
  const Value* value = list_.content().find(key);
  return value == nullptr ? std::nullopt : std::optional<Value>(*value);
}

std::vector<std::string> LocalKeyValueStore::keys() {
  std::vector<std::string> names;
  for (const auto& [key, value] : list_.content()) names.push_back(key);
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace tallyvane
