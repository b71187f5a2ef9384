#include <algorithm>

#include "foundation/Texts.h"
#include "platform/PropertyListFile.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

/// A failure shows when the list is read next; the programs' file store tells them at once.
void writeTags(const Platform& platform, const Array& tags) {
  (void)savePropertyListFile(platform.files, pathInDataFolder(platform, tagIndexName), tags);
}

void mirrorTags(const Platform& platform, const Array& tags) {
  if (boolSetting(platform.defaults, key::iCloudSyncEnabled)) (void)platform.cloud.set(key::cloudTags, tags);
}

}  // namespace

std::optional<std::vector<std::string>> QMBillsLoader::getListOfTags() {
  const auto stored =
      readPropertyListFile<Array>(platform_.files, platform_.log, pathInDataFolder(platform_, tagIndexName));
  if (!stored) return std::nullopt;
  std::vector<std::string> tags = stringsOf(&*stored);
  std::stable_sort(tags.begin(), tags.end(), [&](const std::string& left, const std::string& right) {
    return localizedCaseInsensitiveCompare(platform_.region, left, right) < 0;
  });
  return tags;
}

void QMBillsLoader::saveListOfTagsWithTags(const std::vector<std::string>& tags) {
  const std::vector<std::string> current = getListOfTags().value_or(std::vector<std::string>());
  Array merged = arrayOf(current);
  // Only the old list is consulted, so a tag given twice is appended twice; deliberate.
  for (const std::string& tag : tags) {
    if (std::find(current.begin(), current.end(), tag) == current.end()) merged.emplace_back(tag);
  }
  writeTags(platform_, merged);
  mirrorTags(platform_, merged);
}

void QMBillsLoader::overwriteListOfTagsWithTags(const std::vector<std::string>& tags) {
  const Array list = arrayOf(tags);
  writeTags(platform_, list);
  mirrorTags(platform_, list);
}

void QMBillsLoader::updateListOfTagsFromiCloudWithTags(const std::vector<std::string>& tags) {
  writeTags(platform_, arrayOf(tags));
}

}  // namespace tallyvane
