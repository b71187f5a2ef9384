#include <memory>
#include <span>

#include "analysis/Payments.h"
#include "analysis/QMIndexManager.h"
#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/bills/PaymentChange.h"
#include "cli/commands/Commands.h"
#include "cli/input/MonthInput.h"
#include "cli/terminal/DisplayText.h"
#include "cli/terminal/Table.h"
#include "common/Sentences.h"
#include "foundation/Calendar.h"
#include "foundation/NumberReading.h"
#include "foundation/Texts.h"

namespace tallyvane::cli {

namespace {

struct Options {
  std::string month = "this month";
  bool all = false;
};

/// How many payments, and what they come to.
struct Paid {
  std::int32_t count = 0;
  float sum = 0;
};

/// By the model's rule; with `all`, every payment of the month.
Paid paidFor(const Platform& platform, std::span<const Dictionary> bills, Date date, bool all) {
  QMIndexManager manager{platform};
  if (!all) {
    const Array paid = manager.calculateTotalPaidinArrayForDate(bills, date);
    return {int32Value(&paid[0]), floatValue(&paid[1])};
  }
  const CalendarMonth month = Calendar::of(platform.region).month(date);
  float sum = 0;
  for (const Dictionary& bill : bills)
    sum += manager.parseTotalPaidThisInPaymentListWithCurrentComponents(tallyvane::paymentsOf(bill), month);
  return {manager.totalPaymentsThisMonth, sum};
}

std::vector<Cell> cellsOf(const Platform& platform, const Cell& name, const Paid& paid) {
  const Value sum = paid.sum;
  return {name, std::to_string(paid.count), amountCell(platform, &sum)};
}

std::string monthName(const Platform& platform, Date date) { return formattedDate(platform.region, date, "MMMMyyyy"); }

bool isPast(const Platform& platform, Date date) {
  const Calendar& calendar = Calendar::of(platform.region);
  const Date now = platform.clock.now();
  return date < now && calendar.month(date) != calendar.month(now);
}

void printPaid(Session& session, const std::vector<Dictionary>& bills, Date date, bool all) {
  const Platform& platform = session.platform;
  Table table({{marked("Bill"), false, 16, 0}, {marked("Payments"), true}, {marked("Amount"), true}});
  for (const Dictionary& bill : bills) {
    const Paid paid = paidFor(platform, {&bill, 1}, date, all);
    if (paid.count > 0) table.add(cellsOf(platform, bill.valueOr(key::Name, std::string()), paid));
  }
  // translators: a year such as "2027", or a month such as "March 2027"
  const Cell inAll = sentenceCell("Paid in {}", monthName(platform, date));
  table.add(cellsOf(platform, inAll, paidFor(platform, bills, date, all)));
  table.print(session.console);
  if (all || !isPast(platform, date)) return;
  const std::string hint = translated("Bills that were paid again later are not counted; --all counts every payment.");
  if (!session.console.interactive()) return session.console.error(hint);  // beside what a program reads
  session.console.line(session.console.painted(hint, Colour::dim));
}

void printPaidJson(Session& session, const std::vector<Dictionary>& bills, Date date, bool all) {
  const Platform& platform = session.platform;
  Json list = Json::array();
  for (const Dictionary& bill : bills) {
    const Paid paid = paidFor(platform, {&bill, 1}, date, all);
    if (paid.count == 0) continue;
    list.push_back({{"id", bill.valueOr(key::Bid, std::string())},
                    {"name", bill.valueOr(key::Name, std::string())},
                    {"payments", paid.count},
                    {"amount", floatJson(paid.sum)}});
  }
  const Paid paid = paidFor(platform, bills, date, all);
  printJson(session.console, {{"month", monthName(platform, date)},
                              {"payments", paid.count},
                              {"amount", floatJson(paid.sum)},
                              {"countsEveryPayment", all || !isPast(platform, date)},
                              {"bills", list}});
}

void showPaid(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  const Date date = understood(readMonth(platform.region, platform.clock.now(), options.month));
  std::vector<Group> groups{activeBills};
  if (options.all) groups.push_back(archivedBills);
  const std::vector<Dictionary> bills = contentsOf(platform, groups);
  nameUncountedBills(session, bills);
  (session.json ? printPaidJson : printPaid)(session, bills, date, options.all);
}

}  // namespace

void addPaid(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(app, invocation,
                                 {"paid", marked("Show what was paid in a month"), "tallyvane paid 'last month' --all"},
                                 [options](Session& session) { showPaid(session, *options); });
  command->add_option("MONTH", options->month,
                      "2027-02, february, \"feb 2027\", \"last month\"; this month if not given");
  command->add_flag("--all", options->all, "Count every payment, also of bills paid again later or archived since");
}

}  // namespace tallyvane::cli
