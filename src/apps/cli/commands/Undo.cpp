#include <algorithm>
#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillChange.h"
#include "cli/bills/BillText.h"
#include "cli/bills/PaymentChange.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "payments/PaymentList.h"
#include "payments/QMPaymentLogger.h"
#include "schedule/RepeatRule.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

std::string dayText(const Platform& platform, const Date* date) {
  if (date == nullptr || *date == distantPast) return translated("no known day");
  return QMBillsLoader{platform}.createDueDateStringWithDate(*date);
}

[[noreturn]] void refuse(const Platform& platform, const ListedBill& bill, const Array& payments) {
  const std::string name = bill.name();
  if (payments.empty()) couldNot(sentence("\"{}\" has no payment to undo.", name));
  couldNot(
      // translators: a bill, two days and the number of a payment
      sentence("Not undone: the payment of \"{}\" that was logged last is of {}, but the latest one is of {}. "
               "\"tallyvane payments\" lists them and removes any, with --remove {}.",
               name, dayText(platform, dateOfPayment(payments.back())),
               dayText(platform, bill.content.get<Date>(key::LastPayment)), payments.size()));
}

/// The model takes the last payment first and would store the list so. The next payment is put at the end, so the list
/// goes into the file in the order in which the payments were logged, and is summed up in it; in one write, because a
/// list the wrong way round, left by a program that was ended between two, could not be told from a right one.
void undoLast(const Platform& platform, const ListedBill& bill) {
  const QMPaymentLogger logger{platform};
  const Array& payments = paymentsOf(bill);
  Array rest(payments.rbegin(), payments.rend());
  std::optional<Dictionary> content = logger.billWithoutLastPayment(bill.bid, rest);
  if (!content) refuse(platform, bill, payments);
  std::reverse(rest.begin(), rest.end());
  setPayments(platform, std::move(rest), *content);
  content->set(key::Bid, bill.bid);
  rewriteBill(platform, bill, *content);
}

bool isTwiceAMonth(const Dictionary& bill) {
  const Array* repeat = bill.get<Array>(key::Repeat);
  return repeat != nullptr && isCompleteRule(*repeat) && int32Value(&(*repeat)[1]) == UnitKind::twicePerMonth;
}

void say(Session& session, const ListedBill& bill, const Value& undone) {
  const Platform& platform = session.platform;
  const Dictionary after = storedBill(platform, bill);
  if (session.json) return printJson(session.console, changeJson(platform, bill, after));
  const Dictionary* entry = undone.get<Dictionary>();
  session.console.line(printable(
      // translators: a bill, a day and an amount
      sentence("Undone: the payment of \"{}\" of {}, {}.", bill.name(), dayText(platform, dateOfPayment(undone)),
               amountCell(platform, entry == nullptr ? nullptr : entry->find(key::Amount)).shown)));
  printFields(session.console, changedFields(platform, bill.content, after));
  if (isTwiceAMonth(after))
    session.console.error(
        translated("A bill due twice a month moves ahead here, too; \"tallyvane edit BILL --due DATE\" sets it."));
  if (doubleValue(after, key::Balance) != 0)
    session.console.error(translated("The balance stays as it is; \"tallyvane edit BILL --balance N\" sets it."));
}

void undo(Session& session, const std::string& named) {
  const Platform& platform = session.platform;
  ListedBill bill;
  session.write(
      [&] {
        bill = findBill(platform, named, {activeBills, archivedBills});
        undoLast(platform, bill);
      },
      [&] { agreeWithFiles(platform, bill.bid, {bill.name()}); });
  say(session, bill, paymentsOf(bill).back());
}

}  // namespace

void addUndo(CLI::App& app, Invocation& invocation) {
  auto bill = std::make_shared<std::string>();
  CLI::App* command =
      addCommand(app, invocation,
                 {"undo", marked("Take back the last payment and its step of the due date"), "tallyvane undo Rent"},
                 [bill](Session& session) { undo(session, *bill); });
  command->add_option("BILL", *bill, billHelp)->required();
}

}  // namespace tallyvane::cli
