#include "common/ReminderPass.h"

#include "foundation/NumberReading.h"
#include "platform/PropertyListFile.h"
#include "reminders/QMReminderManager.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::programs {

void forEachBillToRemindOf(const Platform& platform, const std::function<void(const Dictionary& bill)>& visit) {
  const std::string folder = dataFolder(platform);
  for (const std::string& bid :
       QMBillsLoader{platform}.getListOfBills(key::ActiveBills).value_or(std::vector<std::string>())) {
    auto bill = readPropertyListFile<Dictionary>(platform.files, platform.log, billPathIn(folder, bid));
    if (!bill || !boolValue(*bill, key::RemindMe)) continue;
    if (!bill->contains(key::Bid)) bill->set(key::Bid, bid);
    visit(*bill);
  }
}

Result<> runReminderPass(const Platform& platform) {
  QMReminderManager reminders{platform};
  const auto rebuildAll = [&] {
    forEachBillToRemindOf(platform, [&](const Dictionary& bill) {
      reminders.removeNotificationCenterRemindersForBid(bill.valueOr(key::Bid, std::string()));
      reminders.checkForNotificationsToAddWithBillList({bill});
    });
  };
  if (platform.notifications != nullptr) return platform.notifications->changeTogether(rebuildAll);
  rebuildAll();
  return {};
}

}  // namespace tallyvane::programs
