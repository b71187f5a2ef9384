#include <algorithm>

#include "foundation/NumberReading.h"
#include "foundation/Texts.h"
#include "platform/PropertyListFile.h"
#include "reminders/QMReminderManager.h"
#include "storage/BillIndex.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/OlderIcons.h"
#include "storage/QMBill.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane {

namespace {

/// Collects pairs up to the first missing value and ignores all that follow; the file is made that way deliberately.
class PairsUpToFirstMissing {
 public:
  template <typename T>
  void add(std::string_view key, const std::optional<T>& value) {
    ended_ = ended_ || !value;
    if (!ended_) pairs_.append(std::string(key), Value(*value));
  }
  [[nodiscard]] Dictionary take() { return std::move(pairs_); }

 private:
  Dictionary pairs_;
  bool ended_ = false;
};

Dictionary billDictionary(const QMBill& bill) {
  PairsUpToFirstMissing pairs;
  pairs.add(key::Name, bill.name);
  pairs.add(key::Bid, bill.bid);
  pairs.add(key::Icon, bill.icon);
  pairs.add(key::DueDate, bill.dueDate);
  pairs.add(key::Repeat, bill.repeat);
  pairs.add(key::Average, bill.average);
  pairs.add(key::LastPayment, bill.lastPayment);
  pairs.add(key::TotalPaid, bill.totalPaid);
  pairs.add(key::RemindMe, bill.remindMe);
  pairs.add(key::PaySite, bill.paySite);
  pairs.add(key::PaymentList, bill.paymentList);
  pairs.add(key::ReminderDays, bill.reminderDays);
  pairs.add(key::Balance, bill.balance);
  pairs.add(key::Interest, bill.interest);
  pairs.add(key::Notes, bill.notes);
  pairs.add(key::Tags, bill.tags);
  pairs.add(key::Amount, bill.amount);
  pairs.add(key::PayType, bill.payType);
  pairs.add(key::Rev, bill.rev);
  return pairs.take();
}

Dictionary withoutDisplayKeys(Dictionary bill) {
  // Exactly these five: "DateWasModified" is not one of them.
  for (const auto displayKey :
       {key::HumanRepeat, key::HumanDueDate, key::SortableDueDate, key::DueIcon, key::DueString}) {
    bill.erase(displayKey);
  }
  return bill;
}

/// A list of the index, to be changed in place: it may be long. One that is missing is made, empty.
Array& listIn(Dictionary& index, std::string_view key) {
  if (index.get<Array>(key) == nullptr) index.set(key, Array());
  return *index.get<Array>(key);
}

/// Puts the bill among the active ones and takes it out of the archived. "DeletedBills" stays as it is, so a bill may
/// stand in both; deliberate.
void enterActive(Dictionary& index, const std::string& bid, Log& log) {
  const Value identifier(bid);
  std::erase(listIn(index, key::ArchivedBills), identifier);
  log.line("Speed2");
  Array& active = listIn(index, key::ActiveBills);
  if (std::find(active.begin(), active.end(), identifier) == active.end()) active.push_back(identifier);
  log.line("Speed3");
}

/// Enters the bill in the index file and gives back the active list; nothing when a list there is none and all stays
/// as it is. An index that is missing or cannot be read is replaced by one with this bill alone: the others lose their
/// place in it, not their files; deliberate.
std::optional<Array> writeIndexWith(const Platform& platform, const std::string& bid) {
  Log& log = platform.log;
  const std::string path = pathInDataFolder(platform, billIndexName);
  auto index = readPropertyListFile<Dictionary>(platform.files, log, path);
  log.line("Speed1");
  if (const auto odd = index ? oddListOf(*index) : std::nullopt) {
    log.diagnostic("Not a list of bills, left as it is: " + std::string(*odd) + " in " + path);
    return std::nullopt;
  }
  if (index) {
    enterActive(*index, bid, log);
  } else {
    log.line("Creating Blank Index");
    index = Dictionary();
    index->set(key::ActiveBills, Array{bid});
    index->set(key::DeletedBills, Array());
    index->set(key::ArchivedBills, Array());
  }
  Value content(std::move(*index));
  (void)savePropertyListFile(platform.files, path, content);
  log.line("Speed4");
  return std::move(listIn(*content.get<Dictionary>(), key::ActiveBills));
}

/// Whether the identifier names a file of the data folder; the log says so if not.
bool isIdentified(const Platform& platform, const std::string& bid) {
  if (!billPathIn("/", bid).empty()) return true;
  platform.log.diagnostic("A bill without a usable identifier was not written: '" + bid + "'");
  return false;
}

/// Replaces the bill's file and reminders by what the dictionary says.
void replaceBill(const Platform& platform, const std::string& bid, const Dictionary& bill) {
  (void)savePropertyListFile(platform.files, billPath(platform, bid), bill);
  QMReminderManager reminders{platform};
  if (const auto* name = bill.get<std::string>(key::Name)) reminders.removeTallyvaneRemindersForBillName(*name);
  reminders.removeNotificationCenterRemindersForBid(bid);
  if (boolValue(bill, key::RemindMe)) reminders.createTallyvaneReminderForBill(bill);
}

}  // namespace

// The lines "Speed1" to "Speed8" stand in the log exactly so and in this order; deliberate.
void QMBill::writeBill(bool skipActiveMirror) {
  Log& log = platform_.log;
  if (!isIdentified(platform_, bid.value_or(std::string()))) return;
  const Dictionary bill = billDictionary(*this);
  const bool wrote = static_cast<bool>(savePropertyListFile(platform_.files, billPath(platform_, *bid), bill));
  log.line(wrote ? "Wrote File = 1" : "Wrote File = 0");
  const std::optional<Array> active = writeIndexWith(platform_, *bid);

  log.line("Speed4a");
  QMReminderManager reminders{platform_};
  if (name) reminders.removeTallyvaneRemindersForBillName(*name);
  log.line("Speed4b");
  reminders.removeNotificationCenterRemindersForBid(*bid);
  log.line("Speed4c");
  const bool wantsReminders = boolValue(remindMe);
  log.line("Speed5");
  if (wantsReminders) reminders.createTallyvaneReminderForBill(bill);
  log.line("Speed6");

  QMBillsLoader{platform_}.saveListOfTagsWithTags(stringsOf(tags ? tags->get<Array>() : nullptr));
  uploadBillToiCloudWithBidAndDictionary(*bid, bill);
  log.line("Speed7");
  if (!skipActiveMirror && active) uploadActiveBillsToiCloud(*active);
  log.line("Speed8");
}

void QMBill::rewriteSpecificBill(const Dictionary& bill) {
  const std::string identifier = bill.valueOr(key::Bid, std::string());
  if (!isIdentified(platform_, identifier)) return;
  const Dictionary record = withoutDisplayKeys(bill);
  replaceBill(platform_, identifier, record);
  uploadBillToiCloudWithBidAndDictionary(identifier, record);
}

void QMBill::rewriteSpecificBillWithoutUpdatingiCloud(const Dictionary& bill) {
  const std::string identifier = bill.valueOr(key::Bid, std::string());
  if (isIdentified(platform_, identifier)) replaceBill(platform_, identifier, withoutDisplayKeys(bill));
}

void QMBill::saveSpecificKeyWithValueForBill(const std::string& key, const Value& value,
                                             const std::string& billIdentifier) {
  saveSpecificKeysWithValuesForBill({key}, {value}, billIdentifier);
}

void QMBill::saveSpecificKeysWithValuesForBill(const std::vector<std::string>& keys, const std::vector<Value>& values,
                                               const std::string& billIdentifier) {
  // The loaded bill carries the display keys, and they are written back with it; deliberate.
  Dictionary bill = QMBillsLoader{platform_}.loadBillWithID(billIdentifier).value_or(Dictionary());
  for (const std::string& key : keys) {
    // A key given twice takes its first value both times.
    const auto first = std::find(keys.begin(), keys.end(), key) - keys.begin();
    bill.set(key, values.at(static_cast<std::size_t>(first)));
    // This object's own wish decides, not the stored bill's, and old reminders stay; deliberate.
    if (key == tallyvane::key::DueDate && boolValue(remindMe))
      QMReminderManager{platform_}.createTallyvaneReminderForBill(bill);
  }
  (void)savePropertyListFile(platform_.files, billPath(platform_, billIdentifier), bill);
  uploadBillToiCloudWithBidAndDictionary(billIdentifier, bill);
}

std::optional<std::string> QMBill::getIconFromInteger(const Value& number) const {
  const auto index = static_cast<std::uint64_t>(integerValue(&number));
  return index < olderIconNames.size() ? std::optional<std::string>(olderIconNames[index]) : std::nullopt;
}

std::optional<std::string> QMBill::getCorrectedPaymentURL(const std::optional<std::string>& text) const {
  if (!text || text->empty() || containsIgnoringCase(*text, "http")) return text;
  return "http://" + *text;
}

}  // namespace tallyvane
