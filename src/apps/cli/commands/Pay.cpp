#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillChange.h"
#include "cli/bills/BillText.h"
#include "cli/bills/PaymentChange.h"
#include "cli/commands/Commands.h"
#include "cli/input/AmountInput.h"
#include "cli/input/DueDateInput.h"
#include "cli/input/TextInput.h"
#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "payments/QMPaymentLogger.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

struct Options {
  std::string bill;
  std::optional<std::string> amount;
  std::optional<std::string> date;
  std::string note;
  std::optional<std::string> receipt;
  bool keepDueDate = false;
  bool sound = false;
};

QMPayment paymentFrom(const Platform& platform, const Options& options) {
  const Date now = platform.clock.now();
  QMPayment payment;
  if (options.amount) payment.amount = understood(readAmount(platform.region, *options.amount));
  payment.date = options.date ? understood(readPaymentDate(platform.region, now, *options.date)) : now;
  payment.note = notesInput(options.note);
  payment.attachment = options.receipt ? receiptInput(platform, *options.receipt) : std::string();
  return payment;
}

/// What the model proposes for the bill; fails where that is nothing that can have been paid.
Value proposedAmount(const Platform& platform, const ListedBill& bill) {
  Value amount = QMPaymentLogger{platform}.amountPrefilValueForBill(bill.content);
  if (isPayable(amount)) return amount;
  wrongUsage(sentence("Say how much was paid: \"{}\" has no amount to go by. Add --amount N.", bill.name()));
}

void record(const Platform& platform, const ListedBill& bill, const QMPayment& payment, bool updateDate) {
  QMPaymentLogger{platform}.recordPaymentForBillAndUpdateDate(payment, bill.content, updateDate);
  if (bill.group.key != key::ActiveBills) removeReminders(platform, bill.bid, bill.name());
  const Dictionary paid = storedBill(platform, bill);
  const Array* payments = paid.get<Array>(key::PaymentList);
  const Dictionary* entry = payments == nullptr || payments->empty() ? nullptr : payments->back().get<Dictionary>();
  if (entry != nullptr && !payment.attachment->empty())
    requireCopied(platform, *payment.attachment, entry->valueOr(key::Receipt, std::string()));
}

void say(Session& session, const ListedBill& bill, const QMPayment& payment) {
  const Platform& platform = session.platform;
  const Dictionary after = storedBill(platform, bill);
  if (session.json) return printJson(session.console, changeJson(platform, bill, after));
  session.console.line(
      // translators: a bill, an amount and a day
      printable(sentence("Paid \"{}\": {} on {}.", bill.name(), amountCell(platform, &*payment.amount).shown,
                         QMBillsLoader{platform}.createDueDateStringWithDate(*payment.date))));
  printFields(session.console, changedFields(platform, bill.content, after));
}

void pay(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  QMPayment payment = paymentFrom(platform, options);
  ListedBill bill;
  session.write(
      [&] {
        bill = findBill(platform, options.bill, {activeBills, archivedBills});
        (void)paymentsOf(bill);
        bill.content.set(key::Bid, bill.bid);
        if (!payment.amount) payment.amount = proposedAmount(platform, bill);
        record(platform, bill, payment, !options.keepDueDate);
      },
      [&] { agreeWithFiles(platform, bill.bid, {bill.name()}); });
  say(session, bill, payment);
  const auto sound = options.sound ? QMPaymentLogger{platform}.getSpecifiedSound() : std::nullopt;
  if (sound) session.playSound(*sound);
}

}  // namespace

void addPay(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(app, invocation,
                                 {"pay", marked("Log a payment and move the bill to its next due date"),
                                  "tallyvane pay Rent --amount 900 --receipt ~/Downloads/rent.pdf"},
                                 [options](Session& session) { pay(session, *options); });
  command->add_option("BILL", options->bill, billHelp)->required();
  command
      ->add_option("--amount", options->amount, "What was paid; the bill's amount, or its last payment's, if not given")
      ->type_name("N");
  command->add_option("--date", options->date, "When: yesterday, \"last friday\", 2027-03-01; now if not given")
      ->type_name("DATE");
  command->add_option("--note", options->note, "A note on this payment")->type_name("NOTE");
  command->add_option("--receipt", options->receipt, "A file of which a copy is kept with the bill")->type_name("FILE");
  command->add_flag("--keep-due-date", options->keepDueDate, "Leave the due date, for a payment of a part");
  command->add_flag("--sound", options->sound, "Play the sound chosen in the settings");
}

}  // namespace tallyvane::cli
