#include "common/MailRound.h"

#include <algorithm>
#include <map>
#include <vector>

#include "common/DataFolderState.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "platform/PropertyListFile.h"
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

/// They are pending again, as far as they have messages.
void putBack(const Platform& platform, const std::vector<std::string>& titles) {
  QMEmailManager manager{platform};
  const std::vector<std::string> pending = manager.getPendingMessages();
  std::vector<std::string> together = pending;
  for (const std::string& title : titles) {
    const bool isThere = std::find(together.begin(), together.end(), title) != together.end();
    if (!isThere && manager.dictionaryForBill(title)) together.push_back(title);
  }
  if (together != pending) manager.updateIndexWithNewPendingMessagesItem(together);
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

void MailRoundNotes::prepareMailQueue() {
  putBack(platform_, noted());
  queueDueMessages(platform_);
  dropSettledMessages(platform_);
  QMEmailManager manager{platform_};
  const std::vector<std::string> pending = manager.getPendingMessages();
  if (!pending.empty()) manager.updateIndexWithNewPendingMessagesItem(pending);
  (void)note(pending);
}

Result<> MailRoundNotes::note(const std::vector<std::string>& titlesOnTheirWay) {
  if (titlesOnTheirWay == noted()) return {};
  return savePropertyListFile(platform_.files, path_, arrayOf(titlesOnTheirWay));
}

std::vector<std::string> MailRoundNotes::noted() const {
  const auto titles = readPropertyListFile<Array>(platform_.files, platform_.log, path_);
  return stringsOf(titles ? &*titles : nullptr);
}

bool wantsMail(const Platform& platform) { return QMReminderManager{platform}.shouldAddEmails(); }

std::optional<std::string> mailHindrance(const Platform& platform) {
  // translators: stands in "No mail is sent: {}."
  if (!wantsMail(platform)) return marked("reminders by e-mail are switched off");
  if (auto unfinished = unfinishedChange(platform)) return unfinished;  // bills may be missing from the folder
  return QMEmailManager{platform}.hindrance();
}

}  // namespace tallyvane::programs
