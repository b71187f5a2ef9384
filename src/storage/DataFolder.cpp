#include "storage/DataFolder.h"

#include "storage/QMBillsLoader.h"

namespace tallyvane {

namespace {

std::string pathIn(const std::string& folder, std::string_view name) {
  const bool leadsOut = name.empty() || name.front() == '.' || name.find('/') != std::string_view::npos;
  return leadsOut || folder.empty() ? std::string() : folder + "/" + std::string(name);
}

}  // namespace

std::string dataFolder(const Platform& platform) {
  return QMBillsLoader{platform}.tallyvaneDirectory().value_or(std::string());
}

std::string pathInDataFolder(const Platform& platform, std::string_view name) {
  return pathIn(dataFolder(platform), name);
}

std::string billPath(const Platform& platform, std::string_view bid) { return billPathIn(dataFolder(platform), bid); }

std::string billPathIn(const std::string& folder, std::string_view bid) {
  const std::string name = std::string(bid) + ".plist";
  const bool isOtherFile =
      name == billIndexName || name == tagIndexName || name == incomeIndexName || name == mailIndexName;
  return bid.empty() || isOtherFile ? std::string() : pathIn(folder, name);
}

}  // namespace tallyvane
