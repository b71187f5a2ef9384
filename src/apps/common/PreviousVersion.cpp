#include "common/PreviousVersion.h"

#include "common/DataFolderState.h"
#include "foundation/Paths.h"
#include "import/QMImportManager.h"
#include "storage/DataFolder.h"

namespace tallyvane::programs {

std::string usualFolderOfPreviousVersion(const Platform& platform) {
  const std::string around = parentOf(dataFolder(platform));
  if (around.ends_with("/Tallyvane") && platform.files.isFolder(around + "/Data")) return around;
  return platform.files.applicationSupportFolder() + "/Tallyvane";
}

std::optional<std::string> folderToOfferForImport(const Platform& platform) {
  if (!QMImportManager{platform}.shouldImportData()) return std::nullopt;
  const std::string folder = usualFolderOfPreviousVersion(platform);
  const std::string bills = folder + "/Data";
  if (!platform.files.isFolder(bills) || isEmptyFolder(platform.files, bills)) return std::nullopt;
  return folder;
}

}  // namespace tallyvane::programs
