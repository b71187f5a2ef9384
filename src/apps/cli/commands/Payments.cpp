#include <algorithm>
#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillChange.h"
#include "cli/bills/BillText.h"
#include "cli/bills/PaymentChange.h"
#include "cli/bills/Receipt.h"
#include "cli/commands/Commands.h"
#include "cli/input/AmountInput.h"
#include "cli/input/DueDateInput.h"
#include "cli/input/TextInput.h"
#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "payments/PaymentList.h"
#include "payments/QMPaymentLogger.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

struct Options {
  std::string bill;
  std::optional<std::string> edit;    ///< number of a payment
  std::optional<std::string> remove;  ///< likewise
  std::optional<std::string> amount;
  std::optional<std::string> date;
  std::optional<std::string> note;
  std::optional<std::string> receipt;

  [[nodiscard]] bool namesAChange() const { return amount || date || note || receipt; }
};

/// What is to be set in an entry; what is not set stays.
struct Correction {
  std::optional<double> amount;
  std::optional<Date> date;
  std::optional<std::string> note;
  std::optional<std::string> receipt;  ///< an absolute path; "" takes the receipt away
};

Correction correctionFrom(const Platform& platform, const Options& options) {
  Correction correction;
  if (options.amount) correction.amount = understood(readAmount(platform.region, *options.amount));
  if (options.date) correction.date = understood(readPaymentDate(platform.region, platform.clock.now(), *options.date));
  if (options.note) correction.note = notesInput(*options.note);
  if (options.receipt) correction.receipt = options.receipt->empty() ? "" : receiptInput(platform, *options.receipt);
  return correction;
}

std::size_t indexInput(const ListedBill& bill, const Array& payments, std::string_view what,
                       const std::string& number) {
  if (payments.empty()) couldNot(sentence("\"{}\" has no payments.", bill.name()));
  return static_cast<std::size_t>(countInput(what, number, 1, static_cast<std::int64_t>(payments.size()))) - 1;
}

void apply(const Platform& platform, const Correction& correction, Value& payment) {
  Dictionary* entry = payment.get<Dictionary>();
  if (entry == nullptr) couldNot(translated("That entry is no payment; it can only be removed."));
  if (correction.amount) entry->set(key::Amount, *correction.amount);
  if (correction.date) entry->set(key::Date, *correction.date);
  if (correction.note) entry->set(key::Note, *correction.note);
  if (!correction.receipt) return;
  const std::string copy = QMPaymentLogger{platform}.copyAttachment(*correction.receipt);
  if (!copy.empty()) requireCopied(platform, *correction.receipt, copy);
  entry->set(key::Receipt, copy);
}

std::optional<Date> latestOf(const Array& payments) {
  std::optional<Date> latest;
  for (const Value& payment : payments) {
    const Date* date = dateOfPayment(payment);
    if (date != nullptr && (!latest || *date > *latest)) latest = *date;
  }
  return latest;
}

/// The last payment follows the list when it was that list's latest. Due date and balance stay as they are.
void storePayments(const Platform& platform, const ListedBill& bill, Array payments) {
  const QMBillsLoader loader{platform};
  Dictionary content = bill.content;
  content.set(key::Bid, bill.bid);
  const Date* last = content.get<Date>(key::LastPayment);
  const std::optional<Date> latest = latestOf(paymentsOf(bill));
  const bool follows = last != nullptr && latest && loader.normalizedDate(*last) == loader.normalizedDate(*latest);
  if (follows) content.set(key::LastPayment, latestOf(payments).value_or(distantPast));
  setPayments(platform, std::move(payments), content);
  rewriteBill(platform, bill, content);
}

void correct(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  const Correction correction = correctionFrom(platform, options);
  ListedBill bill;
  session.write(
      [&] {
        bill = findBill(platform, options.bill, {activeBills, archivedBills});
        Array payments = paymentsOf(bill);
        if (options.edit) {
          apply(platform, correction, payments[indexInput(bill, payments, "--edit", *options.edit)]);
        } else {
          const std::size_t index = indexInput(bill, payments, "--remove", *options.remove);
          payments.erase(payments.begin() + static_cast<std::ptrdiff_t>(index));
        }
        storePayments(platform, bill, std::move(payments));
      },
      [&] { agreeWithFiles(platform, bill.bid, {bill.name()}); });
}

Cell receiptCell(const Receipt& receipt) {
  if (!receipt.isMissing) return receipt.path;
  // translators: a payment's receipt
  Cell cell = sentenceCell("missing: {}", receipt.path);
  cell.colour = Colour::red;
  return cell;
}

std::vector<Cell> cellsOf(const Platform& platform, std::size_t number, const Dictionary& payment) {
  const Date* date = payment.get<Date>(key::Date);
  const Receipt receipt = receiptOf(platform, payment);
  const Cell day = date == nullptr
                       ? Cell(translated("no date"), "")
                       : Cell(QMBillsLoader{platform}.createDueDateStringWithDate(*date), isoDay(platform, *date));
  return {std::to_string(number), day, amountCell(platform, payment.find(key::Amount)),
          payment.valueOr(key::Note, std::string()), receiptCell(receipt)};
}

void printTable(Session& session, const ListedBill& bill, const Array& payments) {
  Table table({{"#", true},
               {marked("Date")},
               {marked("Amount"), true},
               {marked("Note"), false, 8, 2},
               {marked("Receipt"), false, 12, 3}});
  for (std::size_t i = 0; i < payments.size(); ++i) {
    const Dictionary* payment = payments[i].get<Dictionary>();
    table.add(cellsOf(session.platform, i + 1, payment == nullptr ? Dictionary() : *payment));
  }
  table.print(session.console);
  if (!session.console.interactive()) return;
  const auto amount = [&](std::string_view key) { return amountCell(session.platform, bill.content.find(key)).shown; };
  session.console.line();
  // translators: behind how often it was paid come two amounts, as in: Paid 2 times; $20.00 in all, $10.00 on average
  session.console.line(printable(sentence("{}; {} in all, {} on average",
                                          QMBillsLoader{session.platform}.formattedTimesPaidWithPayments(&payments),
                                          amount(key::TotalPaid), amount(key::Average))));
}

void printPaymentsJson(Session& session, const ListedBill& bill, const Array& payments) {
  Json list = Json::array();
  for (std::size_t i = 0; i < payments.size(); ++i) {
    const Dictionary* payment = payments[i].get<Dictionary>();
    const Receipt receipt = receiptOf(session.platform, payment == nullptr ? Dictionary() : *payment);
    Json entry = paymentJson(session.platform, payment == nullptr ? Dictionary() : *payment);
    entry["number"] = i + 1;
    entry["receipt"] = receipt.path;
    entry["receiptMissing"] = receipt.isMissing;
    list.push_back(std::move(entry));
  }
  printJson(session.console, {{"id", bill.bid},
                              {"name", bill.name()},
                              {"totalPaid", doubleValue(bill.content, key::TotalPaid)},
                              {"average", doubleValue(bill.content, key::Average)},
                              {"payments", std::move(list)}});
}

void payments(Session& session, const Options& options) {
  const bool corrects = options.edit || options.remove;
  if (options.edit && !options.namesAChange())
    wrongUsage(translated("Say what to correct: --amount, --date, --note or --receipt.") + " " +
               sentence("See: {}", "tallyvane payments --help"));
  if (!options.edit && options.namesAChange())
    wrongUsage(translated("Say which payment to correct, with --edit N. \"tallyvane pay\" logs a new one."));
  if (corrects) correct(session, options);
  const ListedBill bill = findBill(session.platform, options.bill, {std::begin(allGroups), std::end(allGroups)});
  const Array& list = paymentsOf(bill);
  if (session.json) return printPaymentsJson(session, bill, list);
  if (!list.empty()) return printTable(session, bill, list);
  if (session.console.interactive()) session.console.line(printable(sentence("\"{}\" has no payments.", bill.name())));
}

}  // namespace

void addPayments(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(app, invocation,
                                 {"payments", marked("List a bill's payments, or correct one of the past"),
                                  "tallyvane payments Rent --edit 2 --amount 905.50"},
                                 [options](Session& session) { payments(session, *options); });
  command->add_option("BILL", options->bill, billHelp)->required();
  CLI::Option* edit =
      command->add_option("--edit", options->edit, "Correct the payment of that number")->type_name("N");
  command->add_option("--remove", options->remove, "Remove the payment of that number; due date and balance stay")
      ->type_name("N")
      ->excludes(edit);
  command->add_option("--amount", options->amount, "With --edit: what was paid")->type_name("N");
  command->add_option("--date", options->date, "With --edit: when it was paid")->type_name("DATE");
  command->add_option("--note", options->note, "With --edit: the note")->type_name("NOTE");
  command->add_option("--receipt", options->receipt, "With --edit: a file of which a copy is kept; \"\" for none")
      ->type_name("FILE");
}

}  // namespace tallyvane::cli
