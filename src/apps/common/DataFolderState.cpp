#include "common/DataFolderState.h"

#include <set>

#include "common/PlaceChange.h"
#include "common/Sentences.h"
#include "platform/PropertyListFile.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::programs {

namespace {

std::optional<std::string> unfinishedRestore(const Platform& platform) {
  const std::string kept = replacedFolder(platform);
  if (!platform.files.exists(kept)) return std::nullopt;
  return sentence(
      "Restoring the backup was interrupted, or is not done yet. Your bills as they were before it are whole in {}. "
      "\"tallyvane restore-backup --undo\" brings them back, \"tallyvane restore-backup\" restores the backup.",
      kept);
}

std::optional<std::string> unfinishedMove(const Platform& platform) {
  const auto change = begunPlaceChange(platform);
  if (!change) return std::nullopt;
  const std::string whole = wholeFolderOf(platform, *change);
  if (!whole.empty()) {
    return sentence(
        "Changing the place of the data folder was interrupted, or is not done yet. Your bills are whole in {}. "
        "\"tallyvane location --finish\" ends it.",
        whole);
  }
  return sentence(
      "Changing the place of the data folder was interrupted, or is not done yet. Neither {} nor {} is there now; "
      "connect the disk. \"tallyvane location --finish\" ends it.",
      change->from, change->to);
}

}  // namespace

std::optional<std::size_t> billsListedIn(const Platform& platform, const std::string& folder) {
  const std::string path = folder + "/" + std::string(billIndexName);
  const auto index = readPropertyListFile<Dictionary>(platform.files, platform.log, path);
  if (!index) return std::nullopt;
  std::set<std::string> bids;
  for (const auto list : {key::ActiveBills, key::ArchivedBills, key::DeletedBills}) {
    for (std::string& bid : stringsOf(index->get<Array>(list))) bids.insert(std::move(bid));
  }
  return bids.size();
}

bool isEmptyFolder(FileStore& files, const std::string& path) {
  const Result<std::vector<std::string>> names = files.list(path);
  return names && names->empty();
}

std::string replacedFolder(const Platform& platform) {
  const auto folder = QMBillsLoader{platform}.tallyvaneDirectory();
  return folder ? *folder + ".replaced" : std::string();
}

std::optional<std::string> unfinishedChange(const Platform& platform) {
  auto move = unfinishedMove(platform);
  return move ? move : unfinishedRestore(platform);
}

}  // namespace tallyvane::programs
