#pragma once

#include "freedesktop/SharedPropertyList.h"
#include "platform/UserDefaults.h"

namespace tallyvane {

/// One suite of settings in a property-list file of its own. A change that another program made shows at the next read.
class PlistUserDefaults : public UserDefaults {
 public:
  PlistUserDefaults(std::string path, FileStore& files, Log& log, Durability durability)
      : list_(std::move(path), files, log, durability) {}

  [[nodiscard]] std::optional<Value> object(std::string_view key) override;
  Result<> set(std::string_view key, const Value& value) override { return list_.set(key, value); }
  Result<> remove(std::string_view key) override { return list_.remove(key); }
  Result<> synchronize() override;
  void registerDefaults(const Dictionary& values) override;
  [[nodiscard]] Dictionary stored() override { return list_.content(); }

 private:
  SharedPropertyList list_;
  Dictionary registered_;
};

}  // namespace tallyvane
