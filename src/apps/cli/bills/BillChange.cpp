#include "cli/bills/BillChange.h"

#include <algorithm>
#include <set>

#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "platform/PropertyListFile.h"
#include "reminders/QMReminderManager.h"
#include "storage/DataFolder.h"
#include "storage/QMBill.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane::cli {

namespace {

const ListedBill* withBid(const std::vector<ListedBill>& bills, const std::string& bid) {
  const auto found = std::find_if(bills.begin(), bills.end(), [&](const ListedBill& bill) { return bill.bid == bid; });
  return found == bills.end() ? nullptr : &*found;
}

}  // namespace

// What cannot be read is no news for other devices.
void mirrorLists(const Platform& platform) {
  const std::string path = pathInDataFolder(platform, billIndexName);
  const auto index = readPropertyListFile<Dictionary>(platform.files, platform.log, path);
  if (!index && platform.files.exists(path)) return;
  QMBill mirror{platform};
  const auto list = [&](std::string_view key) { return arrayOf(stringsOf(index ? index->get<Array>(key) : nullptr)); };
  mirror.uploadActiveBillsToiCloud(list(key::ActiveBills));
  mirror.uploadArchivedBillsToiCloud(list(key::ArchivedBills));
  mirror.uploadDeletedBillsToiCloud(list(key::DeletedBills));
}

void agreeTagsWithFiles(const Platform& platform) {
  if (!boolSetting(platform.defaults, key::iCloudSyncEnabled)) return;
  // Read here in its stored order, which the loader would sort.
  const std::string path = pathInDataFolder(platform, tagIndexName);
  const auto tags = readPropertyListFile<Array>(platform.files, platform.log, path);
  if (!tags && platform.files.exists(path)) return;
  (void)platform.cloud.set(key::cloudTags, tags.value_or(Array()));
}

void withdrawFromMirror(const Platform& platform, const std::vector<std::string>& earlierKeys) {
  if (!boolSetting(platform.defaults, key::iCloudSyncEnabled)) return;
  const std::set<std::string> earlier(earlierKeys.begin(), earlierKeys.end());
  const std::vector<ListedBill> bills = allBills(platform);
  for (const std::string& key : platform.cloud.keys()) {
    if (!earlier.contains(key) && withBid(bills, key) == nullptr) (void)platform.cloud.remove(key);
  }
  mirrorLists(platform);
  agreeTagsWithFiles(platform);
}

void removeReminders(const Platform& platform, const std::string& bid, const std::string& name) {
  QMReminderManager reminders{platform};
  reminders.removeTallyvaneRemindersForBillName(name);
  reminders.removeNotificationCenterRemindersForBid(bid);
}

void agreeWithFiles(const Platform& platform, const std::string& bid, const std::vector<std::string>& names) {
  const std::vector<ListedBill> bills = allBills(platform);
  const ListedBill* bill = withBid(bills, bid);
  for (const std::string& name : names) removeReminders(platform, bid, name);
  const bool reminds =
      bill != nullptr && bill->group.key == key::ActiveBills && boolValue(bill->content, key::RemindMe);
  if (reminds) QMReminderManager{platform}.createTallyvaneReminderForBill(bill->content);

  if (!boolSetting(platform.defaults, key::iCloudSyncEnabled)) return;
  if (bill == nullptr) {
    (void)platform.cloud.remove(bid);
  } else {
    QMBill{platform}.uploadBillToiCloudWithBidAndDictionary(bid, bill->content);
  }
  mirrorLists(platform);
  agreeTagsWithFiles(platform);
}

void sayDone(Session& session, fmt::format_string<const std::string&> done, const std::string& bid) {
  const std::vector<ListedBill> bills = allBills(session.platform);
  const ListedBill* bill = withBid(bills, bid);
  const auto row = QMBillsLoader{session.platform}.loadBillWithID(bid);
  if (bill == nullptr || !row) return;
  if (session.json) return printJson(session.console, billJson(session.platform, *row, bill->group.word));
  const std::string due = row->valueOr(key::HumanDueDate, std::string());
  const bool isAwaited = bill->group.key == key::ActiveBills && !due.empty();
  const std::string name = bill->name();
  // translators: what was done with a bill, and when it is due, as in: Added "Rent": Due in 3 days.
  const std::string said = isAwaited ? sentence("{}: {}.", sentence(done, name), due) : sentence(done, name) + ".";
  session.console.line(printable(said));
}

}  // namespace tallyvane::cli
