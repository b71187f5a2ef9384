#include <stdexcept>

#include "foundation/NumberReading.h"
#include "payments/PaymentList.h"
#include "payments/QMPaymentLogger.h"
#include "reminders/QMReminderManager.h"
#include "storage/Keys.h"
#include "storage/QMBill.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane {

namespace {

void requireComplete(const QMPayment& payment) {
  if (!payment.amount || !payment.date || !payment.note || !payment.attachment)
    throw std::invalid_argument("a payment needs an amount, a date, a note and an attachment");
}

/// The due date stays where the rule leads to none.
void moveDueDate(const Platform& platform, Dictionary& bill, std::optional<Date> next) {
  if (next) {
    bill.set(key::DueDate, *next);
  } else {
    platform.log.diagnostic("No next due date, left as it is: bill " + bill.valueOr(key::Bid, std::string()));
  }
}

void setTotals(Dictionary& bill, const Array& totalAndAverage) {
  bill.set(key::TotalPaid, totalAndAverage.at(0));
  bill.set(key::Average, totalAndAverage.at(1));
}

/// May become negative: it is never clamped; deliberate.
void reduceBalance(Dictionary& bill, float amount) {
  const float balance = floatValue(bill, key::Balance);
  if (!(balance > 0)) return;
  const float base = amount - floatValue(bill, key::Rev);
  const float paidOff = base - floatValue(bill, key::Interest) * base;
  bill.set(key::Balance, balance - paidOff);
}

void removeReminders(const Platform& platform, const Dictionary& bill) {
  QMReminderManager reminders{platform};
  if (const auto* name = bill.get<std::string>(key::Name)) reminders.removeTallyvaneRemindersForBillName(*name);
  reminders.removeNotificationCenterRemindersForBid(bill.valueOr(key::Bid, std::string()));
}

std::optional<Date> lastPaymentOf(const Dictionary& bill) {
  const Date* last = bill.get<Date>(key::LastPayment);
  return last == nullptr ? std::nullopt : std::optional(*last);
}

}  // namespace

void QMPaymentLogger::recordPaymentForBill(const QMPayment& payment, const Dictionary& bill) {
  recordPaymentForBillAndUpdateDate(payment, bill, true);
}

void QMPaymentLogger::recordPaymentForBillAndUpdateDate(const QMPayment& payment, const Dictionary& bill,
                                                        bool updateDate) {
  const Dictionary paid = billWithPayment(payment, bill, updateDate);
  removeReminders(platform_, paid);
  QMBill{platform_}.rewriteSpecificBill(paid);
}

Dictionary QMPaymentLogger::billWithPayment(const QMPayment& payment, Dictionary bill, bool updateDate) const {
  requireComplete(payment);
  (void)paymentListOf(bill);
  if (updateDate) moveDueDate(platform_, bill, calculateNextDueDateForBill(bill));
  const std::string receipt = copyAttachment(*payment.attachment);
  if (!bill.contains(key::PaymentList)) bill.set(key::PaymentList, Array());
  Array& payments = *bill.get<Array>(key::PaymentList);
  payments.push_back(entryOf({*payment.amount, *payment.date, *payment.note, receipt}));
  setTotals(bill, recalculateAveragePaidForData(payments));
  reduceBalance(bill, floatValue(&*payment.amount));
  if (shouldUpdateLastPaidDateWithNewDate(lastPaymentOf(bill), *payment.date))
    bill.set(key::LastPayment, *payment.date);
  return bill;
}

Array QMPaymentLogger::addNewRecordToPaymentListInBill(const Array& record, Dictionary& bill) const {
  Value entry = entryOf(record);
  if (paymentListOf(bill).empty()) return {std::move(entry)};
  Array& payments = *bill.get<Array>(key::PaymentList);
  payments.push_back(std::move(entry));
  return payments;
}

Value QMPaymentLogger::entryOf(const Array& record) const {
  if (record.size() != 4) throw std::invalid_argument("a payment is recorded as exactly four values");
  const auto* receipt = record[3].get<std::string>();
  return Dictionary{{std::string(key::Amount), record[0]},
                    {std::string(key::Date), record[1]},
                    {std::string(key::Note), record[2]},
                    {std::string(key::Receipt), receipt == nullptr ? record[3] : Value(cleanReceiptTitle(*receipt))}};
}

bool QMPaymentLogger::reverseLastPaymentForBillAndPayments(const std::string& billIdentifier, Array& payments) {
  const std::optional<Dictionary> bill = billWithoutLastPayment(billIdentifier, payments);
  if (bill) QMBill{platform_}.rewriteSpecificBill(*bill);
  return bill.has_value();
}

std::optional<Dictionary> QMPaymentLogger::billWithoutLastPayment(const std::string& billIdentifier,
                                                                  Array& payments) const {
  QMBillsLoader loader{platform_};
  std::optional<Dictionary> bill = loader.loadBillWithID(billIdentifier);
  const Date* last = bill ? bill->get<Date>(key::LastPayment) : nullptr;
  const Date* paid = payments.empty() ? nullptr : dateOfPayment(payments.front());
  if (last == nullptr || paid == nullptr || loader.normalizedDate(*last) != loader.normalizedDate(*paid))
    return std::nullopt;

  const Date* before = payments.size() < 2 ? nullptr : dateOfPayment(payments[1]);
  bill->set(key::LastPayment, before == nullptr ? distantPast : *before);
  moveDueDate(platform_, *bill, calculateNextDueDateForBillWithModifier(*bill, -1));
  payments.erase(payments.begin());
  bill->set(key::PaymentList, payments);
  setTotals(*bill, recalculateAveragePaidForData(payments));
  return bill;
}

}  // namespace tallyvane
