#include "storage/Keys.h"
#include "storage/QMBill.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

/// Fire and forget: the data folder holds the truth.
void mirror(const Platform& platform, std::string_view cloudKey, const Value& value, std::string_view logLine) {
  if (!boolSetting(platform.defaults, key::iCloudSyncEnabled)) return;
  (void)platform.cloud.set(cloudKey, value);
  platform.log.line(logLine);
}

}  // namespace

void QMBill::uploadBillToiCloudWithBidAndDictionary(const std::string& billIdentifier, const Dictionary& bill) {
  mirror(platform_, billIdentifier, bill, "Added or Updated Bill to iCloud");
}

void QMBill::uploadActiveBillsToiCloud(const Array& bills) {
  mirror(platform_, key::cloudActiveBills, bills, "Updated Active Bills to iCloud");
}

void QMBill::uploadDeletedBillsToiCloud(const Array& bills) {
  mirror(platform_, key::cloudDeletedBills, bills, "Updated Deleted Bills to iCloud");
}

void QMBill::uploadArchivedBillsToiCloud(const Array& bills) {
  mirror(platform_, key::cloudArchivedBills, bills, "Updated Archived Bills to iCloud");
}

}  // namespace tallyvane
