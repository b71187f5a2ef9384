#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>

#include "analysis/Payments.h"
#include "analysis/QMStatisticsCalculator.h"
#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/bills/PaymentChange.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/Bars.h"
#include "cli/terminal/Fields.h"
#include "cli/terminal/Table.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"

namespace tallyvane::cli {

namespace {

/// A count of bills and what they come to, as the model counts them.
struct Figure {
  const char* title;
  const char* jsonKey;
  Array (QMStatisticsCalculator::*count)(const std::vector<Dictionary>&) const;
};

constexpr Figure figures[] = {
    {marked("Overdue or due soon"), "overdueOrDueSoon", &QMStatisticsCalculator::countAndAmountofBillsDueSoonForData},
    {marked("Overdue, to pay yourself"), "overdue", &QMStatisticsCalculator::countAndAmountofBillsOverdueSoonForData},
    {marked("Due soon, to pay yourself"), "dueSoon",
     &QMStatisticsCalculator::countAndAmountofBillsDueExcludingOverdueSoonForData},
    {marked("Due later, to pay yourself"), "dueLater", &QMStatisticsCalculator::countAndAmountofBillsDueLaterForData}};

struct Season {
  std::string_view key;
  const char* jsonKey;
  const char* title;
};

constexpr Season seasons[] = {{key::TotalWinter, "winter", marked("Paid in winter")},
                              {key::TotalSpring, "spring", marked("Paid in spring")},
                              {key::TotalSummer, "summer", marked("Paid in summer")},
                              {key::TotalFall, "fall", marked("Paid in fall")}};

/// One bill with the payments of all, to have their totals in one sum.
Dictionary allPaymentsOf(std::vector<Dictionary> bills) {
  Array all;
  for (Dictionary& bill : bills) {
    if (Array* payments = bill.get<Array>(key::PaymentList)) std::ranges::move(*payments, std::back_inserter(all));
  }
  Dictionary bill;
  bill.set(key::PaymentList, std::move(all));
  return bill;
}

/// An amount, with a bar on a terminal.
Cell yearCell(const Platform& platform, const Dictionary& totals, std::string_view sum, std::string_view height) {
  constexpr int width = 20;
  Cell cell = amountCell(platform, totals.find(sum));
  const std::string drawn = bar(doubleValue(totals, height) / 100, width);
  if (!drawn.empty()) cell.shown += "  " + drawn;
  return cell;
}

std::vector<Field> totalsFields(const Platform& platform, const Dictionary& totals) {
  const auto year = [&](std::string_view key) {
    return sentenceCell("Paid in {}", totals.valueOr(key, std::string()));
  };
  std::vector<Field> fields{
      {year(key::ThisYearString), yearCell(platform, totals, key::TotalThisYear, key::ThisYearHeight)},
      {year(key::LastYearString), yearCell(platform, totals, key::TotalLastYear, key::LastYearHeight)},
      {marked("Paid in all"), amountCell(platform, totals.find(key::Total))}};
  for (const Season& season : seasons) fields.push_back({season.title, amountCell(platform, totals.find(season.key))});
  return fields;
}

Json totalsJson(const Dictionary& totals) {
  const auto year = [&](std::string_view text, std::string_view sum, std::string_view height) {
    return Json{{"year", totals.valueOr(text, std::string())},
                {"total", floatJson(totals.find(sum))},
                {"height", integerValue(totals, height)}};
  };
  Json json{{"total", floatJson(totals.find(key::Total))},
            {"thisYear", year(key::ThisYearString, key::TotalThisYear, key::ThisYearHeight)},
            {"lastYear", year(key::LastYearString, key::TotalLastYear, key::LastYearHeight)}};
  for (const Season& season : seasons) json[season.jsonKey] = floatJson(totals.find(season.key));
  return json;
}

void allStatistics(Session& session) {
  const Platform& platform = session.platform;
  const QMStatisticsCalculator calculator{platform};
  std::vector<Dictionary> bills = contentsOf(platform, {activeBills});
  nameUncountedBills(session, bills);
  Table table({{marked("Bills"), false, 16, 0}, {marked("Count"), true}, {marked("Amount"), true}});
  Json json = Json::object();
  for (const Figure& figure : figures) {
    const Array counted = (calculator.*figure.count)(bills);
    const std::string count = std::to_string(integerValue(&counted[0]));
    table.add({wordCell(figure.title), count, amountCell(platform, &counted[1])});
    json[figure.jsonKey] = {{"count", integerValue(&counted[0])}, {"amount", floatJson(&counted[1])}};
  }
  const Dictionary totals = calculator.totalsForBill(allPaymentsOf(std::move(bills)));
  if (session.json) return printJson(session.console, {{"bills", json}, {"paid", totalsJson(totals)}});
  table.print(session.console);
  if (session.console.interactive()) session.console.line();
  printFields(session.console, totalsFields(platform, totals));
}

bool wasPaid(const Dictionary& bill) {
  const Array& payments = tallyvane::paymentsOf(bill);
  return std::any_of(payments.begin(), payments.end(), [](const Value& payment) { return payment.is<Dictionary>(); });
}

/// "$12.50 on Wed, Mar 10, 2027".
Cell paymentCell(const Platform& platform, const Dictionary& payment) {
  const Cell amount = amountCell(platform, payment.find(key::Amount));
  const Date* date = payment.get<Date>(key::Date);
  if (date == nullptr) return amount;
  // translators: an amount and a day
  return {sentence("{} on {}", amount.shown, QMStatisticsCalculator{platform}.createStringWithDate(*date)),
          amount.plain + " on " + isoDay(platform, *date)};
}

/// How much of what was owed has been paid; nothing without a balance to pay off.
std::optional<float> percentPaidOff(const Platform& platform, const Dictionary& bill) {
  const float balance = floatValue(bill, key::Balance);
  const float paid = floatValue(bill, key::TotalPaid);
  const float percent =
      QMStatisticsCalculator{platform}.balanceGraphSizeWithMaxWidthAndTotalPaidAndBalance(100, paid, balance);
  return balance > 0 && paid >= 0 && std::isfinite(percent) ? std::optional(percent) : std::nullopt;
}

void billStatistics(Session& session, const std::string& named) {
  const Platform& platform = session.platform;
  ListedBill bill = findBill(platform, named, {std::begin(allGroups), std::end(allGroups)});
  (void)paymentsOf(bill);
  const QMStatisticsCalculator calculator{platform};
  const Dictionary totals = calculator.totalsForBill(bill.content);
  const auto paidOff = percentPaidOff(platform, bill.content);
  const Dictionary range = calculator.highestAndLowestPaymentForBill(bill.content);  // sorts this copy's payments
  const auto payment = [&](std::string_view key) { return range.valueOr(key, Dictionary()); };
  const bool isPaid = wasPaid(bill.content);
  if (session.json) {
    const auto json = [&](std::string_view key) {
      return isPaid ? paymentJson(platform, payment(key)) : Json(nullptr);
    };
    return printJson(session.console, {{"id", bill.bid},
                                       {"name", bill.name()},
                                       {"highest", json(key::Highest)},
                                       {"lowest", json(key::Lowest)},
                                       {"percentPaidOff", paidOff ? floatJson(*paidOff) : Json(nullptr)},
                                       {"paid", totalsJson(totals)}});
  }
  const auto cell = [&](std::string_view key) {
    return isPaid ? paymentCell(platform, payment(key)) : Cell(payment(key).valueOr(key::Date, std::string()));
  };
  std::vector<Field> fields{{marked("Name"), bill.name()},
                            {marked("Highest payment"), cell(key::Highest)},
                            {marked("Lowest payment"), cell(key::Lowest)}};
  for (Field& field : totalsFields(platform, totals)) fields.push_back(std::move(field));
  if (paidOff)
    fields.push_back({marked("Paid off"), Cell(fmt::format("{:.0f} %", *paidOff), fmt::format("{:g}", *paidOff))});
  printFields(session.console, fields);
}

}  // namespace

void addStats(CLI::App& app, Invocation& invocation) {
  auto bill = std::make_shared<std::string>();
  CLI::App* command = addCommand(app, invocation,
                                 {"stats", marked("Show what is due and was paid, of all active bills or of one bill"),
                                  "tallyvane stats Electricity"},
                                 nullptr);
  CLI::Option* named = command->add_option("BILL", *bill, billHelp);
  command->callback([&invocation, bill, named] {
    if (named->count() == 0) {
      invocation.action = allStatistics;
    } else {
      invocation.action = [bill](Session& session) { billStatistics(session, *bill); };
    }
  });
}

}  // namespace tallyvane::cli
