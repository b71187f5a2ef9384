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
  const std::string path = pathInDataFolder(platform_, billIndexName);
  const auto index = readPropertyListFile<Dictionary>(platform_.files, platform_.log, path);
  const Array* list = index ? index->get<Array>(key) : nullptr;
  if (list == nullptr && index && index->contains(key))
    platform_.log.diagnostic("Not a list of bills: " + std::string(key) + " in " + path);
  return list == nullptr ? std::nullopt : std::optional(stringsOf(list));
}

}  // namespace tallyvane
