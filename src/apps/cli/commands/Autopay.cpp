#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillChange.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/bills/PaymentChange.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/Table.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "payments/QMPaymentLogger.h"
#include "storage/QMBill.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

struct Options {
  bool dryRun = false;
  bool catchUp = false;
};

/// A payment that went out by itself on the day it was due.
struct AutomaticPayment {
  std::string bid;
  std::string name;
  Value amount;
  Date due;
  Date next;
};

/// What is due of one bill: one payment, or every one up to today to catch up. A bill whose due date would not move
/// on is left alone, or it would be logged at every run.
std::vector<AutomaticPayment> duePayments(const Platform& platform, ListedBill bill, bool catchUp) {
  const QMPaymentLogger logger{platform};
  const QMBillsLoader loader{platform};
  std::vector<AutomaticPayment> payments;
  const std::string name = bill.name();
  Dictionary& row = bill.content;
  do {
    const Date* stored = row.get<Date>(key::DueDate);
    if (stored == nullptr) break;
    const Date due = *stored;
    row.set(key::SortableDueDate, loader.createSortableDueDateWithDueDateAndCurrentDate(due, platform.clock.now()));
    if (!logger.checkIfBillShouldSilentlyLog(row)) break;
    const auto next = logger.calculateNextDueDateForBill(row);
    if (!next || *next <= due) break;
    payments.push_back({bill.bid, name, logger.amountPrefilValueForBill(row), due, *next});
    row.set(key::DueDate, *next);
  } while (catchUp);
  return payments;
}

/// Active bills in their order; those whose payments cannot be read are named and passed over.
std::vector<AutomaticPayment> allDuePayments(Session& session, bool catchUp) {
  std::vector<AutomaticPayment> all;
  for (ListedBill& bill : allBills(session.platform)) {
    if (bill.group.key != key::ActiveBills) continue;
    const bool isReadable = hasReadablePayments(bill.content);
    std::vector<AutomaticPayment> due = duePayments(session.platform, std::move(bill), catchUp);
    if (!due.empty() && !isReadable) {
      session.console.error(sentence("\"{}\" was passed over: its payments cannot be read.", due.front().name));
      continue;
    }
    all.insert(all.end(), std::make_move_iterator(due.begin()), std::make_move_iterator(due.end()));
  }
  return all;
}

/// The payments of a bill stand together; its file is written once for all of them.
void record(const Platform& platform, const std::vector<AutomaticPayment>& payments) {
  const QMPaymentLogger logger{platform};
  for (auto payment = payments.begin(); payment != payments.end();) {
    const std::string& bid = payment->bid;
    std::optional<Dictionary> bill = QMBillsLoader{platform}.loadBillWithID(bid);
    if (!bill)
      couldNot(sentence("The file of \"{}\" is gone.", payment->name) + " " + translated("Nothing was changed."));
    bill->set(key::Bid, bid);
    for (; payment != payments.end() && payment->bid == bid; ++payment)
      bill = logger.billWithPayment({payment->amount, payment->due, "", ""}, std::move(*bill), true);
    QMBill{platform}.rewriteSpecificBill(*bill);
  }
}

void printPayments(Session& session, const std::vector<AutomaticPayment>& payments) {
  const QMBillsLoader loader{session.platform};
  const auto day = [&](Date date) {
    return Cell(loader.createDueDateStringWithDate(date), isoDay(session.platform, date));
  };
  Table table(
      {{marked("Bill"), false, 8}, {marked("Paid on")}, {marked("Amount"), true}, {marked("Due next"), false, 0, 1}});
  for (const AutomaticPayment& payment : payments)
    table.add({payment.name, day(payment.due), amountCell(session.platform, &payment.amount), day(payment.next)});
  table.print(session.console);
}

void printPaymentsJson(Session& session, const std::vector<AutomaticPayment>& payments, bool dryRun) {
  Json list = Json::array();
  for (const AutomaticPayment& payment : payments) {
    list.push_back({{"id", payment.bid},
                    {"name", payment.name},
                    {"amount", doubleValue(&payment.amount)},
                    {"date", isoDay(session.platform, payment.due)},
                    {"dueDate", isoDay(session.platform, payment.next)}});
  }
  printJson(session.console, {{"dryRun", dryRun}, {"payments", std::move(list)}});
}

void say(Session& session, const std::vector<AutomaticPayment>& payments, bool dryRun) {
  if (session.json) return printPaymentsJson(session, payments, dryRun);
  if (!payments.empty()) printPayments(session, payments);
  if (!session.console.interactive()) return;
  if (payments.empty()) return session.console.line(translated("No bill that is paid automatically is due."));
  session.console.line();
  const std::size_t count = payments.size();
  session.console.line(
      dryRun ? countedSentence(count, "{} payment. Nothing was logged.", "{} payments. Nothing was logged.", count)
             : countedSentence(count, "{} payment. Logged.", "{} payments. Logged.", count));
}

void autopay(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  std::vector<AutomaticPayment> payments;
  if (options.dryRun) {
    payments = allDuePayments(session, options.catchUp);
  } else {
    session.write(
        [&] {
          payments = allDuePayments(session, options.catchUp);
          record(platform, payments);
        },
        [&] {
          const AutomaticPayment* done = nullptr;
          for (const AutomaticPayment& payment : payments) {
            if (done == nullptr || done->bid != payment.bid) agreeWithFiles(platform, payment.bid, {payment.name});
            done = &payment;
          }
        });
  }
  say(session, payments, options.dryRun);
}

}  // namespace

void addAutopay(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(
      app, invocation,
      {"autopay", marked("Log the bills that are paid automatically and are due"), "tallyvane autopay --dry-run"},
      [options](Session& session) { autopay(session, *options); });
  command->add_flag("--dry-run", options->dryRun, "Only list what would be logged");
  command->add_flag("--catch-up", options->catchUp, "All payments up to today, not only the first of each bill");
}

}  // namespace tallyvane::cli
