#include "cli/Json.h"

#include <fmt/format.h>

#include <cmath>

#include "cli/bills/BillText.h"
#include "cli/terminal/DisplayText.h"
#include "foundation/NumberReading.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

Json numberJson(const Value* value) {
  if (value == nullptr) return nullptr;
  if (const auto* integer = value->get<std::int64_t>()) return *integer;
  return doubleValue(value);
}

Json dayJson(const Platform& platform, const Date* date) {
  return date == nullptr ? Json(nullptr) : Json(isoDay(platform, *date));
}

Json textsJson(const Array* texts) {
  Json list = Json::array();
  for (const std::string& text : stringsOf(texts)) list.push_back(text);
  return list;
}

Json repeatJson(const Dictionary& row) {
  static constexpr std::string_view units[] = {"weeks", "twicePerMonth", "months", "days", "never"};
  const Array* repeat = row.get<Array>(key::Repeat);
  if (repeat == nullptr || repeat->size() < 2) return nullptr;
  const auto kind = static_cast<std::uint64_t>(integerValue(&(*repeat)[1]));
  return {{"count", integerValue(&(*repeat)[0])},
          {"unit", kind < std::size(units) ? Json(units[kind]) : Json(nullptr)}};
}

Json paymentsJson(const Platform& platform, const Array* payments) {
  Json list = Json::array();
  if (payments == nullptr) return list;
  for (const Value& element : *payments) {
    const Dictionary* payment = element.get<Dictionary>();
    if (payment != nullptr) list.push_back(paymentJson(platform, *payment));
  }
  return list;
}

Json lastPaymentJson(const Platform& platform, const Dictionary& row) {
  const Date* last = row.get<Date>(key::LastPayment);
  return dayJson(platform, last != nullptr && *last == distantPast ? nullptr : last);
}

}  // namespace

Json paymentJson(const Platform& platform, const Dictionary& payment) {
  return {{"amount", numberJson(payment.find(key::Amount))},
          {"date", dayJson(platform, payment.get<Date>(key::Date))},
          {"note", payment.valueOr(key::Note, std::string())},
          {"receipt", payment.valueOr(key::Receipt, std::string())}};
}

Json billJson(const Platform& platform, const Dictionary& row, std::string_view groupWord) {
  const QMBillsLoader loader{platform};
  const Date* due = row.get<Date>(key::DueDate);
  const std::string icon = row.valueOr(key::Icon, std::string());
  const auto iconTitle = loader.getTitleForIcon(icon);
  const auto text = [&](std::string_view key) { return row.valueOr(key, std::string()); };
  const Value estimated = loader.getEstimatedAmountDueForBill(row);
  return {{"id", text(key::Bid)},
          {"name", text(key::Name)},
          {"state", groupWord},
          {"icon", icon},
          {"iconTitle", iconTitle ? Json(iconTitle->title) : Json(nullptr)},
          {"dueDate", dayJson(platform, due)},
          {"movedOffWeekend", boolValue(row, key::DateWasModified)},
          {"daysUntilDue", due == nullptr ? Json(nullptr) : Json(daysUntil(platform, *due))},
          {"due", text(key::HumanDueDate)},
          {"repeat", repeatJson(row)},
          {"repeats", text(key::HumanRepeat)},
          {"amount", numberJson(row.find(key::Amount))},
          {"estimatedAmount", numberJson(&estimated)},
          {"average", numberJson(row.find(key::Average))},
          {"totalPaid", numberJson(row.find(key::TotalPaid))},
          {"balance", numberJson(row.find(key::Balance))},
          {"interest", numberJson(row.find(key::Interest))},
          {"paidAutomatically", isPaidAutomatically(row)},
          {"remind", boolValue(row, key::RemindMe)},
          {"reminderDays", numberJson(row.find(key::ReminderDays))},
          {"site", text(key::PaySite)},
          {"tags", textsJson(row.get<Array>(key::Tags))},
          {"notes", text(key::Notes)},
          {"lastPayment", lastPaymentJson(platform, row)},
          {"payments", paymentsJson(platform, row.get<Array>(key::PaymentList))}};
}

Json floatJson(float number) { return std::isfinite(number) ? Json::parse(fmt::format("{}", number)) : Json(nullptr); }

Json floatJson(const Value* number) { return floatJson(floatValue(number)); }

void printJson(Console& console, const Json& json) {
  console.line(escapedForTerminal(json.dump(2, ' ', false, Json::error_handler_t::replace)));
}

void printJsonLine(Console& console, const Json& json) {
  console.line(escapedForTerminal(json.dump(-1, ' ', false, Json::error_handler_t::replace)));
}

}  // namespace tallyvane::cli
