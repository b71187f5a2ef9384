#include <fmt/format.h>

#include <memory>

#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/Fields.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

/// "7 days before", or "no".
Cell reminderCell(const Dictionary& bill) {
  if (!boolValue(bill, key::RemindMe)) return wordCell(marked("no"));
  const std::int64_t days = integerValue(bill, key::ReminderDays);
  // translators: when a reminder comes
  if (days == 0) return wordCell(marked("on the due day"));
  const std::string shown = countedSentence(static_cast<std::size_t>(days), "{} day before", "{} days before", days);
  return {shown, fmt::format("{} {} before", days, days == 1 ? "day" : "days")};
}

/// A fraction as per cent.
Cell percentCell(const Platform& platform, const Dictionary& bill) {
  const Value percent = doubleValue(bill, key::Interest) * 100;
  return {QMBillsLoader{platform}.numberFormattedNumber(&percent) + " %", fmt::format("{:g}", doubleValue(&percent))};
}

Cell lastPaymentCell(const Platform& platform, const Dictionary& bill) {
  const Date* last = bill.get<Date>(key::LastPayment);
  if (last == nullptr || *last == distantPast) return {translated("never"), ""};
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
  return {{marked("Name"), text(key::Name)},
          {marked("State"), wordCell(std::string(groupWord))},
          {marked("Due"), Cell(due, due, colourOf(bill))},
          {marked("Date"), dueDateCell(platform, bill)},
          {marked("Repeats"), text(key::HumanRepeat)},
          {marked("Amount"), amount(key::Amount)},
          {marked("Balance"), amount(key::Balance)},
          {marked("Interest"), percentCell(platform, bill)},
          {marked("Paid automatically"), wordCell(isPaidAutomatically(bill) ? marked("yes") : marked("no"))},
          {marked("Reminder"), reminderCell(bill)},
          {marked("Site"), text(key::PaySite)},
          {marked("Tags"), joined(stringsOf(bill.get<Array>(key::Tags)))},
          {marked("Icon"), icon ? icon->title : text(key::Icon)},
          {marked("Last payment"), lastPaymentCell(platform, bill)},
          {marked("Payments"), loader.formattedTimesPaidWithPayments(bill.get<Array>(key::PaymentList))},
          {marked("Average"), amount(key::Average)},
          {marked("Total paid"), amount(key::TotalPaid)},
          {marked("Identifier"), text(key::Bid)},
          {marked("Notes"), text(key::Notes)}};
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
  CLI::App* command = addCommand(app, invocation, {"show", marked("Show all about one bill"), "tallyvane show Rent"},
                                 [bill](Session& session) { showBill(session, *bill); });
  command->add_option("BILL", *bill, billHelp)->required();
}

}  // namespace tallyvane::cli
