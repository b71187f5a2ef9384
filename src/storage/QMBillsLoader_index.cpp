#include "platform/PropertyListFile.h"
#include "storage/DataFolder.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane {

std::optional<Dictionary> QMBillsLoader::loadBillWithID(const std::string& bid) {
  auto bill = readPropertyListFile<Dictionary>(platform_.files, platform_.log, billPath(platform_, bid));
  if (bill) addDisplayKeys(*bill);
  return bill;
}

std::optional<std::vector<std::string>> QMBillsLoader::getListOfBills(std::string_view key) {
  const auto index =
      readPropertyListFile<Dictionary>(platform_.files, platform_.log, pathInDataFolder(platform_, billIndexName));
  const Array* list = index ? index->get<Array>(key) : nullptr;
  return list == nullptr ? std::nullopt : std::optional(stringsOf(list));
}

}  // namespace tallyvane
