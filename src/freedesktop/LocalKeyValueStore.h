#pragma once

#include "freedesktop/SharedPropertyList.h"
#include "platform/KeyValueStore.h"

namespace tallyvane {

/// The mirror of a user with one device: a property list on this machine.
class LocalKeyValueStore : public KeyValueStore {
 public:
  LocalKeyValueStore(std::string path, FileStore& files, Log& log)
      : list_(std::move(path), files, log, Durability::synced) {}

  Result<> set(std::string_view key, const Value& value) override { return list_.set(key, value); }
  [[nodiscard]] std::optional<Value> object(std::string_view key) override;
  Result<> remove(std::string_view key) override { return list_.remove(key); }
  [[nodiscard]] std::vector<std::string> keys() override;

 private:
  SharedPropertyList list_;
};

}  // namespace tallyvane
