#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/NewestBackup.h"
#include "storage/QMBillsLoader.h"
#include "storage/QMUIDMaker.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

std::string errorText(const Result<>& outcome) { return outcome ? "(null)" : outcome.error(); }

}  // namespace

void QMBillsLoader::backupDatabase() {
  platform_.log.line("Starting Backup");
  const Date now = platform_.clock.now();
  const std::optional<Date> last = settingOf<Date>(platform_.defaults, key::LastBackup);
  if (last && normalizedDate(*last) == normalizedDate(now))
    return platform_.log.line("Database already backed Up today");

  const std::string id = QMUIDMaker{platform_.random}.makeUID();
  const std::string backupFolder = tallyvaneBackupPath();
  const Result<> copied = platform_.files.copy(dataFolder(platform_), backupFolder + "/" + id);
  if (!copied) platform_.log.diagnostic("No backup was made: " + copied.error());
  platform_.log.line("Database backed up.");

  const std::optional<std::string> previous = newestBackup(platform_);
  (void)platform_.defaults.set(key::LastBackup, now);
  // Of the two the one goes that the settings do not name; what is no folder stays.
  const Result<> recorded = platform_.defaults.set(key::LastBackupUID, id);
  const std::optional<std::string> unnamed = recorded ? previous : backupFolder + "/" + id;
  if (unnamed && platform_.files.isFolder(*unnamed)) (void)platform_.files.remove(*unnamed);
}

bool QMBillsLoader::restoreDatabase() {
  platform_.log.line("Starting Restore...");
  const std::optional<std::string> source = newestBackup(platform_);
  if (!source || !platform_.files.exists(*source + "/" + std::string(billIndexName))) return false;

  platform_.log.line("Trying to Restore");
  const std::string target = dataFolder(platform_);
  if (platform_.files.exists(target)) {
    const Result<> removed = platform_.files.remove(target);
    platform_.log.line(removed ? "Removed 1" : "Removed 0");
    platform_.log.line("Error: " + errorText(removed));
  }
  const Result<> copied = platform_.files.copy(*source, target);
  platform_.log.line("Error: " + errorText(copied));
  return static_cast<bool>(copied);
}

std::string QMBillsLoader::lastBackedUpNaturalDate() {
  const Date last = settingOf<Date>(platform_.defaults, key::LastBackup).value_or(distantPast);
  return createDueDateStringWithDate(normalizedDate(last));
}

}  // namespace tallyvane
