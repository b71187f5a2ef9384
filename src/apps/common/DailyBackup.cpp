#include "common/DailyBackup.h"

#include <fmt/format.h>

#include <array>

#include "common/DataFolderState.h"
#include "common/Sentences.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/NewestBackup.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane::programs {

namespace {

/// Why a copy cannot be made, or would not have room.
std::optional<std::string> copyHindrance(const Platform& platform, const std::string& folder) {
  const std::string place = QMBillsLoader{platform}.tallyvaneBackupPath();
  const Result<std::uint64_t> size = platform.files.copySize(folder);
  if (!size) return sentence("The data folder cannot be copied: {}.", size.error());
  const Result<std::uint64_t> space = platform.files.freeSpace(place);
  if (!space) return sentence("There is no place for backups: {}.", space.error());
  if (*size <= *space) return std::nullopt;
  return sentence("A backup takes {}, and {} has only {} left.", sizeText(*size), place, sizeText(*space));
}

std::optional<std::string> backupHindrance(const Platform& platform) {
  if (auto unfinished = unfinishedChange(platform)) return unfinished;
  const std::optional<std::string> folder = QMBillsLoader{platform}.tallyvaneDirectory();
  if (!folder) return translated("It cannot be told where the data folder lies.");
  if (!platform.files.isFolder(*folder)) return sentence("The data folder is not there: {}.", *folder);
  const std::string index = *folder + "/" + std::string(billIndexName);
  if (!platform.files.exists(index)) return translated("There are no bills yet.");
  if (!billsListedIn(platform, *folder)) return sentence("The list of bills cannot be read: {}.", index);
  return copyHindrance(platform, *folder);
}

}  // namespace

Result<BackupOutcome> backUpToday(const Platform& platform) {
  if (isBackedUpToday(platform)) return BackupOutcome::madeEarlierToday;
  if (const auto hindrance = backupHindrance(platform)) return Error{*hindrance};
  QMBillsLoader{platform}.backupDatabase();
  const std::optional<std::string> backup = newestBackup(platform);
  if (backup && isBackedUpToday(platform) && billsListedIn(platform, *backup)) return BackupOutcome::made;
  if (!isBackedUpToday(platform)) return Error{translated("The settings cannot be changed to name a new backup.")};
  return Error{translated("The copy could not be made. The next backup is made tomorrow.")};
}

bool isBackedUpToday(const Platform& platform) {
  const QMBillsLoader loader{platform};
  const std::optional<Date> date = settingOf<Date>(platform.defaults, key::LastBackup);
  return date && loader.normalizedDate(*date) == loader.normalizedDate(platform.clock.now());
}

std::string sizeText(std::uint64_t bytes) {
  constexpr std::array<std::string_view, 4> units{"kB", "MB", "GB", "TB"};
  constexpr double step = 1000;
  double size = static_cast<double>(bytes) / step;
  std::size_t unit = 0;
  for (; size >= step && unit + 1 < units.size(); ++unit) size /= step;
  return fmt::format("{:.1f} {}", size, units[unit]);
}

}  // namespace tallyvane::programs
