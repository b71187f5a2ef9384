#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Result.h"
#include "foundation/Value.h"

namespace tallyvane {

/// The store that mirrors bills and tags between a user's devices. Writing is fire and forget for the model: the files
/// of the data folder are the truth. A store may be far away, so `set` may only note what is to be sent.
class KeyValueStore {
 public:
  virtual ~KeyValueStore() = default;
  virtual Result<> set(std::string_view key, const Value& value) = 0;
  [[nodiscard]] virtual std::optional<Value> object(std::string_view key) = 0;
  virtual Result<> remove(std::string_view key) = 0;
  /// All keys, sorted bytewise.
  [[nodiscard]] virtual std::vector<std::string> keys() = 0;
};

}  // namespace tallyvane
