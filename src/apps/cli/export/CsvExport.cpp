#include "cli/bills/BillText.h"
#include "cli/export/Exports.h"
#include "cli/export/PlainDecimal.h"
#include "foundation/NumberReading.h"
#include "payments/PaymentList.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

using Row = std::vector<std::string>;

/// A payment has the first eight.
const Row header{"record",  "id",           "name",    "state",     "date",    "amount",     "note",
                 "receipt", "repeats",      "average", "totalPaid", "balance", "interest",   "automatic",
                 "remind",  "reminderDays", "site",    "tags",      "icon",    "lastPayment"};

std::string field(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char character : text) quoted += character == '"' ? std::string("\"\"") : std::string(1, character);
  return quoted + "\"";
}

std::string lineOf(const Row& row) {
  std::string line;
  for (std::size_t i = 0; i < header.size(); ++i)
    line += (i == 0 ? "" : ",") + (i < row.size() ? field(row[i]) : std::string());
  return line + "\r\n";
}

std::string dayOf(const Platform& platform, const Date* date) {
  return date == nullptr || *date == distantPast ? "" : isoDay(platform, *date);
}

std::string joined(const std::vector<std::string>& tags) {
  std::string all;
  for (const std::string& tag : tags) all += (all.empty() ? "" : ", ") + tag;
  return all;
}

Row rowOf(const Platform& platform, const ListedBill& bill) {
  const Dictionary& content = bill.content;
  const auto text = [&](std::string_view key) { return content.valueOr(key, std::string()); };
  const auto number = [&](std::string_view key) { return plainDecimal(doubleValue(content, key)); };
  const auto yesNo = [](bool is) { return std::string(is ? "yes" : "no"); };
  const auto rule = QMBillsLoader{platform}.createHumanRepeatWithArray(content.get<Array>(key::Repeat));
  return {"bill",
          bill.bid,
          bill.name(),
          std::string(bill.group.word),
          dayOf(platform, content.get<Date>(key::DueDate)),
          number(key::Amount),
          text(key::Notes),
          "",
          rule.value_or(std::string()),
          number(key::Average),
          number(key::TotalPaid),
          number(key::Balance),
          number(key::Interest),
          yesNo(isPaidAutomatically(content)),
          yesNo(boolValue(content, key::RemindMe)),
          number(key::ReminderDays),
          text(key::PaySite),
          joined(stringsOf(content.get<Array>(key::Tags))),
          text(key::Icon),
          dayOf(platform, content.get<Date>(key::LastPayment))};
}

Row rowOf(const Platform& platform, const ListedBill& bill, const Value& payment) {
  const Dictionary* entry = payment.get<Dictionary>();
  const auto text = [&](std::string_view key) { return entry == nullptr ? "" : entry->valueOr(key, std::string()); };
  const std::string amount = entry == nullptr ? "" : plainDecimal(doubleValue(*entry, key::Amount));
  return {"payment",
          bill.bid,
          bill.name(),
          std::string(bill.group.word),
          dayOf(platform, dateOfPayment(payment)),
          amount,
          text(key::Note),
          text(key::Receipt)};
}

}  // namespace

std::string csvOf(const Platform& platform, const std::vector<ListedBill>& bills) {
  std::string table = lineOf(header);
  for (const ListedBill& bill : bills) {
    table += lineOf(rowOf(platform, bill));
    const Array* payments = bill.content.get<Array>(key::PaymentList);
    for (std::size_t i = 0; payments != nullptr && i < payments->size(); ++i)
      table += lineOf(rowOf(platform, bill, (*payments)[i]));
  }
  return table;
}

}  // namespace tallyvane::cli
