// Section 3 of QMEmailManager: the queue.
#include <algorithm>

#include "platform/PropertyListFile.h"
#include "reminders/QMEmailManager.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"

namespace tallyvane {

namespace {

/// The list with the title at its end, unless it is there already.
Array withTitle(const Array* pending, const std::string& title) {
  Array titles = pending == nullptr ? Array() : *pending;
  if (std::find(titles.begin(), titles.end(), Value(title)) == titles.end()) titles.emplace_back(title);
  return titles;
}

}  // namespace

void QMEmailManager::saveMessage() {
  if (billTitle == key::PendingMessages) {  // its message would stand in the place of the list
    platform_->log.diagnostic("A bill named " + billTitle + " cannot be reminded of by mail; give it another name");
    return;
  }
  Dictionary index = getMailIndex().value_or(Dictionary());
  Array pending = withTitle(index.get<Array>(key::PendingMessages), billTitle);
  index.set(billTitle, createDictionaryWithEmail());
  index.set(key::PendingMessages, std::move(pending));
  (void)savePropertyListFile(platform_->files, getMailPath(), index);
}

Dictionary QMEmailManager::createDictionaryWithEmail() const {
  Dictionary message;
  message.set(key::mailSubject, subject);
  message.set(key::mailBody, emailBody);
  if (dueDate) message.set(key::mailDueDate, *dueDate);
  if (alarmDate) message.set(key::mailAlarmDate, *alarmDate);
  message.set(key::mailBillTitle, billTitle);
  return message;
}

std::string QMEmailManager::getMailPath() const { return pathInDataFolder(*platform_, mailIndexName); }

std::optional<Dictionary> QMEmailManager::getMailIndex() const {
  return readPropertyListFile<Dictionary>(platform_->files, platform_->log, getMailPath());
}

std::vector<std::string> QMEmailManager::getPendingMessages() const {
  const std::optional<Dictionary> index = getMailIndex();
  return stringsOf(index ? index->get<Array>(key::PendingMessages) : nullptr);
}

std::optional<Dictionary> QMEmailManager::dictionaryForBill(const std::string& title) const {
  const std::optional<Dictionary> index = getMailIndex();
  const Dictionary* message = index ? index->get<Dictionary>(title) : nullptr;
  return message == nullptr ? std::nullopt : std::optional(*message);
}

void QMEmailManager::updateIndexWithNewPendingMessagesItem(const std::vector<std::string>& titles) {
  std::optional<Dictionary> index = getMailIndex();
  if (!index) return;
  index->set(key::PendingMessages, arrayOf(titles));
  (void)savePropertyListFile(platform_->files, getMailPath(), *index);
}

void QMEmailManager::removeMessageFromQueue(const std::string& /*title*/) {}

}  // namespace tallyvane
