#pragma once

#include <optional>
#include <string_view>

#include "foundation/Result.h"
#include "foundation/Value.h"

namespace tallyvane {

/// One suite of settings: keys to property-list values, shared by all programs of the user. A read sees what another
/// program wrote, at the latest after `synchronize`. A write merges its one key into what is stored, so two programs
/// never undo each other; writing an equal value writes nothing. First values (`registerDefaults`) live in memory
/// only and show where the stored settings lack a key.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  /// The stored value, else the registered one, else nothing.
  [[nodiscard]] virtual std::optional<Value> object(std::string_view key) = 0;
  virtual Result<> set(std::string_view key, const Value& value) = 0;
  /// An absent key is no error.
  virtual Result<> remove(std::string_view key) = 0;
  /// Reads anew at the next use, and gives the outcome of writes that were put off (none are, so far).
  virtual Result<> synchronize() = 0;
  /// Adds to the first values; a key named before takes the new one.
  virtual void registerDefaults(const Dictionary& values) = 0;
  /// What is stored, without the first values.
  [[nodiscard]] virtual Dictionary stored() = 0;
};

}  // namespace tallyvane
