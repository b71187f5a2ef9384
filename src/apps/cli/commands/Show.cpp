#include <fmt/format.h>

#include <memory>

#include "cli/BillLookup.h"
#include "cli/BillText.h"
#include "cli/Fields.h"
#include "cli/Json.h"
#include "cli/commands/Commands.h"
#include "foundation/NumberReading.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

/// "7 days before", or "no".
std::string reminderText(const Dictionary& bill) {
  if (!boolValue(bill, key::RemindMe)) return "no";
  const std::int64_t days = integerValue(bill, key::ReminderDays);
  if (days == 0) return "on the due day";
  return std::to_string(days) + (days == 1 ? " day before" : " days before");
}

/// A fraction as per cent.
Cell percentCell(const Platform& platform, const Dictionary& bill) {
  const Value percent = doubleValue(bill, key::Interest) * 100;
  return {QMBillsLoader{platform}.numberFormattedNumber(&percent) + " %", fmt::format("{:g}", doubleValue(&percent))};
}

Cell lastPaymentCell(const Platform& platform, const Dictionary& bill) {
  const Date* last = bill.get<Date>(key::LastPayment);
  if (last == nullptr || *last == distantPast) return {"never", ""};
  return {QMBillsLoader{platform}.createDueDateStringWithDate(*last), isoDay(platform, *last)};
}

std::string joined(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) result += (result.empty() ? "" : ", ") + text;
  return result;
}

std::vector<Field> fieldsOf(const Platform& platform, const Dictionary& bill, std::string_view groupWord) {
  const QMBillsLoader loader{platform};
  const auto text = [&](std::string_view key) { return bill.valueOr(key, std::string()); };
  const auto amount = [&](std::string_view key) { return amountCell(platform, bill.find(key)); };
  const auto icon = loader.getTitleForIcon(text(key::Icon));
  const std::string due = text(key::HumanDueDate);
  return {{"Name", text(key::Name)},
          {"State", std::string(groupWord)},
          {"Due", Cell(due, due, colourOf(bill))},
          {"Date", dueDateCell(platform, bill)},
          {"Repeats", text(key::HumanRepeat)},
          {"Amount", amount(key::Amount)},
          {"Balance", amount(key::Balance)},
          {"Interest", percentCell(platform, bill)},
          {"Paid automatically", isPaidAutomatically(bill) ? "yes" : "no"},
          {"Reminder", reminderText(bill)},
          {"Site", text(key::PaySite)},
          {"Tags", joined(stringsOf(bill.get<Array>(key::Tags)))},
          {"Icon", icon ? icon->title : text(key::Icon)},
          {"Last payment", lastPaymentCell(platform, bill)},
          {"Payments", loader.formattedTimesPaidWithPayments(bill.get<Array>(key::PaymentList))},
          {"Average", amount(key::Average)},
          {"Total paid", amount(key::TotalPaid)},
          {"Identifier", text(key::Bid)},
          {"Notes", text(key::Notes)}};
}

void showBill(Session& session, const std::string& named) {
  const ListedBill found = findBill(session.platform, named, {std::begin(allGroups), std::end(allGroups)});
  const Dictionary bill = QMBillsLoader{session.platform}.loadBillWithID(found.bid).value_or(found.content);
  if (session.json) return printJson(session.console, billJson(session.platform, bill, found.group.word));
  printFields(session.console, fieldsOf(session.platform, bill, found.group.word));
}

}  // namespace

void addShow(CLI::App& app, Invocation& invocation) {
  auto bill = std::make_shared<std::string>();
  CLI::App* command = addCommand(app, invocation, {"show", "Show all about one bill", "tallyvane show Rent"},
                                 [bill](Session& session) { showBill(session, *bill); });
  command->add_option("BILL", *bill, billHelp)->required();
}

}  // namespace tallyvane::cli
