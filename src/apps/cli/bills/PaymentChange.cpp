#include "cli/bills/PaymentChange.h"

#include <cmath>

#include "cli/Failure.h"
#include "cli/bills/BillChange.h"
#include "cli/bills/BillText.h"
#include "cli/input/TextInput.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "payments/QMPaymentLogger.h"
#include "storage/QMBill.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

Cell changed(const Cell& before, const Cell& after) {
  if (before.plain == after.plain) return after;
  return {before.shown + " → " + after.shown, before.plain + " → " + after.plain};
}

Cell dueCell(const Platform& platform, const Dictionary& bill) {
  const Date* due = bill.get<Date>(key::DueDate);
  if (due == nullptr) return wordCell(marked("none"));
  const QMBillsLoader loader{platform};
  return {loader.createDueDateStringWithDate(*due), isoDay(platform, *due)};
}

}  // namespace

const Array& paymentsOf(const ListedBill& bill) {
  static const Array none;
  const Value* stored = bill.content.find(key::PaymentList);
  if (stored == nullptr) return none;
  if (const Array* payments = stored->get<Array>()) return *payments;
  couldNot(sentence("The payments of \"{}\" cannot be read: \"PaymentList\" in {}.plist is not a list.", bill.name(),
                    bill.bid) +
           " " + translated("Nothing was changed."));
}

bool hasReadablePayments(const Dictionary& bill) {
  const Value* stored = bill.find(key::PaymentList);
  return stored == nullptr || stored->is<Array>();
}

void nameUncountedBills(Session& session, const std::vector<Dictionary>& bills) {
  for (const Dictionary& bill : bills) {
    if (hasReadablePayments(bill)) continue;
    session.console.error(
        sentence("The payments of \"{}\" cannot be read and are not counted.", bill.valueOr(key::Name, std::string())));
  }
}

bool isPayable(const Value& amount) {
  const float number = floatValue(&amount);
  return std::isfinite(number) && number > 0;
}

std::string receiptInput(const Platform& platform, const std::string& text) {
  const std::string path = absolutePath(text);
  if (path.empty() || !platform.files.exists(path)) couldNot(sentence("There is no file \"{}\".", text));
  if (platform.files.isFolder(path)) couldNot(sentence("{} is a folder; a receipt is a file.", path));
  return path;
}

void requireCopied(const Platform& platform, const std::string& receipt, const std::string& copy) {
  if (!platform.files.exists(copy))
    couldNot(sentence("The receipt {} could not be copied.", receipt) + " " + translated("Nothing was changed."));
}

void setPayments(const Platform& platform, Array payments, Dictionary& bill) {
  const Array totals = QMPaymentLogger{platform}.recalculateAveragePaidForData(payments);
  bill.set(key::PaymentList, std::move(payments));
  bill.set(key::TotalPaid, totals.at(0));
  bill.set(key::Average, totals.at(1));
}

void rewriteBill(const Platform& platform, const ListedBill& bill, const Dictionary& content) {
  QMBill{platform}.rewriteSpecificBill(content);
  if (bill.group.key != key::ActiveBills) removeReminders(platform, bill.bid, bill.name());
}

Dictionary storedBill(const Platform& platform, const ListedBill& bill) {
  return QMBillsLoader{platform}.loadBillWithID(bill.bid).value_or(bill.content);
}

std::vector<Field> changedFields(const Platform& platform, const Dictionary& before, const Dictionary& after) {
  std::vector<Field> fields{{marked("Due"), changed(dueCell(platform, before), dueCell(platform, after))}};
  const bool hasBalance = doubleValue(before, key::Balance) != 0 || doubleValue(after, key::Balance) != 0;
  const auto change = [&](std::string_view key) {
    return changed(amountCell(platform, before.find(key)), amountCell(platform, after.find(key)));
  };
  if (hasBalance) fields.push_back({marked("Balance"), change(key::Balance)});
  fields.push_back({marked("Average"), change(key::Average)});
  return fields;
}

Json changeJson(const Platform& platform, const ListedBill& before, const Dictionary& after) {
  Json json = billJson(platform, after, before.group.word);
  const Date* due = before.content.get<Date>(key::DueDate);
  json["previousDueDate"] = due == nullptr ? Json(nullptr) : Json(isoDay(platform, *due));
  json["previousBalance"] = doubleValue(before.content, key::Balance);
  return json;
}

}  // namespace tallyvane::cli
