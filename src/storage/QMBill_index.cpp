#include <algorithm>

#include "platform/PropertyListFile.h"
#include "reminders/QMReminderManager.h"
#include "storage/BillIndex.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBill.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane {

namespace {

/// The index as it is on disk; empty when it cannot be read.
Dictionary readIndex(const Platform& platform) {
  return readPropertyListFile<Dictionary>(platform.files, platform.log, pathInDataFolder(platform, billIndexName))
      .value_or(Dictionary());
}

void writeIndex(const Platform& platform, const Dictionary& index) {
  (void)savePropertyListFile(platform.files, pathInDataFolder(platform, billIndexName), index);
}

/// A list that is missing reads, and is mirrored, as an empty one.
Array listOf(const Dictionary& index, std::string_view key) { return index.valueOr(key, Array()); }

bool holds(const Dictionary& index, std::string_view key, const std::string& bid) {
  const Array list = listOf(index, key);
  return std::find(list.begin(), list.end(), Value(bid)) != list.end();
}

void removeReminders(const Platform& platform, const std::string& bid) {
  const Dictionary bill = QMBillsLoader{platform}.loadBillWithID(bid).value_or(Dictionary());
  QMReminderManager reminders{platform};
  if (const auto* name = bill.get<std::string>(key::Name)) reminders.removeTallyvaneRemindersForBillName(*name);
  reminders.removeNotificationCenterRemindersForBid(bid);
}

}  // namespace

// The lines of an upload stand in the log whether or not the user syncs; deliberate.
void QMBill::overWriteIndexFileWithDictionaryUpdatingKey(const Dictionary& index, std::string_view cloudKey) {
  writeIndex(platform_, index);
  if (cloudKey == key::cloudActiveBills) {
    uploadActiveBillsToiCloud(listOf(index, key::ActiveBills));
    platform_.log.line("iCloud: Uploading active bills back to icloud");
  } else if (cloudKey == key::cloudDeletedBills) {
    uploadDeletedBillsToiCloud(listOf(index, key::DeletedBills));
    platform_.log.line("iCloud: Uploading deleted bills back to icloud");
  } else if (cloudKey == key::cloudArchivedBills) {
    uploadArchivedBillsToiCloud(listOf(index, key::ArchivedBills));
    platform_.log.line("iCloud: Uploading archived bills back to icloud");
  }
}

void QMBill::moveBillFromIndexToIndexNotUsingIndexAndDisableBill(const std::string& billIdentifier,
                                                                 std::string_view from, std::string_view to,
                                                                 std::string_view other, bool disable) {
  const Dictionary index = readIndex(platform_);
  if (disable) removeReminders(platform_, billIdentifier);
  if (const auto odd = oddListOf(index)) {
    platform_.log.diagnostic("Not a list of bills, left as it is: " + std::string(*odd) + " in " +
                             pathInDataFolder(platform_, billIndexName));
    return;
  }

  Dictionary moved;
  // Pairs end at the first missing value, so an index without the from-list becomes an empty one, and they stand in the
  // order from, to, other; deliberate.
  if (const Array* source = index.get<Array>(from)) {
    Array remaining = *source;
    std::erase(remaining, Value(billIdentifier));
    // Appended even where it stands already; deliberate.
    Array target = listOf(index, to);
    target.emplace_back(billIdentifier);
    moved.set(from, std::move(remaining));
    moved.set(to, std::move(target));
    moved.set(other, listOf(index, other));
  }
  writeIndex(platform_, moved);
}

void QMBill::deleteBillWithBid(const std::string& billIdentifier) {
  const Dictionary index = readIndex(platform_);
  if (holds(index, key::ActiveBills, billIdentifier)) {
    moveBillFromIndexToIndexNotUsingIndexAndDisableBill(billIdentifier, key::ActiveBills, key::DeletedBills,
                                                        key::ArchivedBills, true);
  } else if (holds(index, key::ArchivedBills, billIdentifier)) {
    moveBillFromIndexToIndexNotUsingIndexAndDisableBill(billIdentifier, key::ArchivedBills, key::DeletedBills,
                                                        key::ActiveBills, true);
  }
  // Mirrored also when nothing moved; deliberate.
  uploadDeletedBillsToiCloud(listOf(readIndex(platform_), key::DeletedBills));
}

void QMBill::archiveBillWithBid(const std::string& billIdentifier) {
  // Whether the bill is active is not looked at; deliberate.
  moveBillFromIndexToIndexNotUsingIndexAndDisableBill(billIdentifier, key::ActiveBills, key::ArchivedBills,
                                                      key::DeletedBills, true);
  uploadArchivedBillsToiCloud(listOf(readIndex(platform_), key::ArchivedBills));
}

void QMBill::restoreBillWithBid(const std::string& billIdentifier) {
  // A deleted bill becomes active and stays among the deleted; deliberate.
  moveBillFromIndexToIndexNotUsingIndexAndDisableBill(billIdentifier, key::ArchivedBills, key::ActiveBills,
                                                      key::DeletedBills, false);
}

void QMBill::deleteAllBills() {
  Dictionary empty;
  for (const auto list : {key::ActiveBills, key::ArchivedBills, key::DeletedBills}) empty.set(list, Array());
  // Files of bills, their reminders and the cloud store stay as they are; deliberate.
  writeIndex(platform_, empty);
}

}  // namespace tallyvane
