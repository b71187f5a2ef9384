#include "cli/bills/BillText.h"

#include <fmt/format.h>

#include <cstdlib>

#include "foundation/Calendar.h"
#include "foundation/NumberReading.h"
#include "foundation/Texts.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

bool isPaidAutomatically(const Dictionary& bill) { return int32Value(bill, key::PayType) == 1; }

std::int64_t daysUntil(const Platform& platform, Date due) {
  return QMBillsLoader{platform}.getDaysApartWithDateAndCurrentDate(due, platform.clock.now());
}

std::string isoDay(const Platform& platform, Date date) {
  const std::chrono::year_month_day day{Calendar::of(platform.region).civilDay(date)};
  return fmt::format("{:04}-{:02}-{:02}", static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
                     static_cast<unsigned>(day.day()));
}

std::string isoMinute(const Platform& platform, Date date) {
  const Calendar& calendar = Calendar::of(platform.region);
  const DateFields fields = calendar.fields(date);
  const std::chrono::minutes ofDay = std::chrono::hours{fields.hour} + std::chrono::minutes{fields.minute};
  const auto onTheWall = std::chrono::sys_days{calendar.civilDay(date).time_since_epoch()} + ofDay;
  const auto ahead = (onTheWall - std::chrono::floor<std::chrono::minutes>(date)).count();
  return fmt::format("{}T{:02}:{:02}{}{:02}:{:02}", isoDay(platform, date), fields.hour, fields.minute,
                     ahead < 0 ? '-' : '+', std::abs(ahead) / 60, std::abs(ahead) % 60);
}

Colour colourOf(const Dictionary& row) {
  const std::string icon = row.valueOr(key::DueIcon, std::string());
  if (icon == "red5.png") return Colour::red;
  if (icon == "yellow5.png") return Colour::yellow;
  if (icon == "green5.png") return Colour::green;
  return icon == "blue5.png" ? Colour::blue : Colour::none;
}

Cell dueDateCell(const Platform& platform, const Dictionary& row) {
  const Date* due = row.get<Date>(key::DueDate);
  if (due == nullptr) return "";
  return {row.valueOr(key::DueString, std::string()), isoDay(platform, *due)};
}

Cell timeCell(const Platform& platform, Date date) {
  return {formattedDate(platform.region, date, "EEEMMMdyyyyjm"), isoMinute(platform, date)};
}

Cell amountCell(const Platform& platform, const Value* amount) {
  return {QMBillsLoader{platform}.currencyFormattedNumber(amount), fmt::format("{:.2f}", doubleValue(amount))};
}

}  // namespace tallyvane::cli
