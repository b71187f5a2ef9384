#include "import/QMImportManager.h"

#include "foundation/FileUrl.h"
#include "foundation/Paths.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane {

void QMImportManager::importDataFromPreviousVersion() {
  platform_.log.line("Starting Import");
  const std::optional<std::string> data = QMBillsLoader{platform_}.tallyvaneDirectory();
  std::string folder = withoutTrailingSlashes(data.value_or(std::string()));
  if (nameOf(folder) == dataFolderName) folder = parentOf(folder);
  platform_.log.line("Default Location Path: " + (data ? folder : "(null)"));
  (void)platform_.defaults.set(key::CustomLocationEnabled, false);
  (void)platform_.defaults.set(key::CustomLocationTempPath, std::string());
  (void)importDataFromPreviousVersionAtPath(folder);
}

// The cached path is left as it is here, unlike above; deliberate.
void QMImportManager::importDataInDefaultLocation() {
  (void)platform_.defaults.set(key::CustomLocationEnabled, false);
  (void)importDataFromPreviousVersionAtPath(platform_.files.applicationSupportFolder() + "/Tallyvane");
}

bool QMImportManager::importDataFromPreviousVersionAtPath(const std::string& path) {
  const std::string folder = withoutTrailingSlashes(path);
  if (nameOf(folder) != "Tallyvane") return false;
  const std::string dataPath = folder + "/Data";
  const bool exists = platform_.files.isFolder(dataPath);
  platform_.log.line(std::string("Data Folder Exists at Selected Location: ") + (exists ? "1" : "0"));
  if (!exists) return false;

  platform_.log.line("URL of Folder to Import From: " + fileUrlOf(dataPath + "/"));
  std::vector<std::string> entries;
  const Result<std::vector<std::string>> names = platform_.files.list(dataPath);
  for (const std::string& name : names ? *names : std::vector<std::string>()) {
    if (!name.starts_with('.')) entries.push_back(dataPath + "/" + name);
  }
  performImportWithBillsAtPath(entries, dataPath);
  return true;
}

void QMImportManager::performImportWithBillsAtPath(const std::vector<std::string>& entries,
                                                   const std::string& dataPath) {
  for (const std::string& path : entries) importBill(path, dataPath);
}

bool QMImportManager::shouldImportData() {
  const bool hasData = platform_.files.exists(pathInDataFolder(platform_, billIndexName));
  platform_.log.line(hasData ? "Tallyvane 5 Data Status: 1" : "Tallyvane 5 Data Status: 0");
  return !hasData;
}

}  // namespace tallyvane
