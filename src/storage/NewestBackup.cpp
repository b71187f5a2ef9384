#include "storage/NewestBackup.h"

#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"
#include "storage/QMUIDMaker.h"
#include "storage/Settings.h"

namespace tallyvane {

std::optional<std::string> newestBackup(const Platform& platform) {
  const auto name = settingOf<std::string>(platform.defaults, key::LastBackupUID);
  if (!name || !isUID(*name)) return std::nullopt;
  return QMBillsLoader{platform}.tallyvaneBackupPath() + "/" + *name;
}

}  // namespace tallyvane
