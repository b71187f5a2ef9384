#include "common/MailRound.h"

#include <algorithm>
#include <map>
#include <vector>

#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "reminders/QMEmailManager.h"
#include "reminders/QMReminderManager.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::programs {

namespace {

/// The active bills from their own files by name; of several with one name the first of the list.
std::map<std::string, Dictionary> activeBillsByName(const Platform& platform) {
  std::map<std::string, Dictionary> bills;
  QMBillsLoader loader{platform};
  for (const std::string& bid : loader.getListOfBills(key::ActiveBills).value_or(std::vector<std::string>())) {
    std::optional<Dictionary> bill = loader.loadBillWithID(bid);
    if (!bill) continue;
    std::string name = bill->valueOr(key::Name, std::string());
    bills.try_emplace(std::move(name), std::move(*bill));
  }
  return bills;
}

bool isWithinReach(Date alarm, Date now) {
  constexpr std::chrono::minutes reach{QMEmailManager::mostMinutesAhead};
  return alarm <= now + reach && alarm >= now - reach;
}

/// Whether the last message that was queued for the bill is about its present due date.
bool isAbout(const std::optional<Dictionary>& message, Date due) {
  const Date* told = message ? message->get<Date>(key::mailDueDate) : nullptr;
  return told != nullptr && *told == due;
}

}  // namespace

void queueDueMessages(const Platform& platform) {
  QMEmailManager manager{platform};
  for (const auto& [name, bill] : activeBillsByName(platform)) {
    const Date* due = bill.get<Date>(key::DueDate);
    const auto alarm = QMReminderManager{platform}.calculateAlarmDateWithBill(bill);
    if (!boolValue(bill, key::RemindMe) || due == nullptr || !alarm) continue;
    if (!isWithinReach(*alarm, platform.clock.now()) || isAbout(manager.dictionaryForBill(name), *due)) continue;
    manager.createMessageWithTitleAndAlarmDateAndDueDate(name, *alarm, *due);
  }
}

void dropSettledMessages(const Platform& platform) {
  QMEmailManager manager{platform};
  const auto bills = activeBillsByName(platform);
  const std::vector<std::string> pending = manager.getPendingMessages();
  std::vector<std::string> kept = pending;
  std::erase_if(kept, [&](const std::string& title) {
    const auto bill = bills.find(title);
    if (bill == bills.end()) return title != QMEmailManager::testMessageTitle;
    const Date* due = bill->second.get<Date>(key::DueDate);
    return due == nullptr || !isAbout(manager.dictionaryForBill(title), *due);
  });
  if (kept != pending) manager.updateIndexWithNewPendingMessagesItem(kept);
}

void prepareMailQueue(const Platform& platform) {
  queueDueMessages(platform);
  dropSettledMessages(platform);
  QMEmailManager manager{platform};
  const std::vector<std::string> pending = manager.getPendingMessages();
  if (!pending.empty()) manager.updateIndexWithNewPendingMessagesItem(pending);
}

bool wantsMail(const Platform& platform) { return QMReminderManager{platform}.shouldAddEmails(); }

std::optional<std::string> mailHindrance(const Platform& platform) {
  // translators: stands in "No mail is sent: {}."
  if (!wantsMail(platform)) return marked("reminders by e-mail are switched off");
  return QMEmailManager{platform}.hindrance();
}

}  // namespace tallyvane::programs
