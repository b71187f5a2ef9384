#include "storage/NewestBackup.h"

#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"
#include "storage/QMUIDMaker.h"

namespace tallyvane {

std::optional<std::string> newestBackup(const Platform& platform) {
  const std::optional<Value> stored = platform.defaults.object(key::LastBackupUID);
  const auto* name = stored ? stored->get<std::string>() : nullptr;
  if (name == nullptr || !isUID(*name)) return std::nullopt;
  return QMBillsLoader{platform}.tallyvaneBackupPath() + "/" + *name;
}

}  // namespace tallyvane
