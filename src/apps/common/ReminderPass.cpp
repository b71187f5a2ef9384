#include "common/ReminderPass.h"

#include "foundation/NumberReading.h"
#include "platform/PropertyListFile.h"
#include "reminders/QMReminderManager.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::programs {

/// One bill at a time: payments and notes of all of them would take room that only this needs.
void runReminderPass(const Platform& platform) {
  QMBillsLoader loader{platform};
  QMReminderManager reminders{platform};
  const std::string folder = loader.tallyvaneDirectory().value_or(std::string());
  for (const std::string& bid : loader.getListOfBills(key::ActiveBills).value_or(std::vector<std::string>())) {
    const auto bill = readPropertyListFile<Dictionary>(platform.files, platform.log, billPathIn(folder, bid));
    if (!bill || !boolValue(*bill, key::RemindMe)) continue;
    reminders.removeNotificationCenterRemindersForBid(bill->valueOr(key::Bid, bid));
    reminders.checkForNotificationsToAddWithBillList({*bill});
  }
}

}  // namespace tallyvane::programs
