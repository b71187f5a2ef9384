// What is typed is a day or a rule that a bill can keep, or gets one line that says why not.
#include <algorithm>
#include <array>
#include <iterator>

#include "Fuzzed.h"
#include "cli/input/DueDateInput.h"
#include "cli/input/MonthInput.h"
#include "cli/input/NextDueDates.h"
#include "cli/input/RepeatInput.h"
#include "foundation/Calendar.h"
#include "foundation/NumberReading.h"
#include "support/Fakes.h"

namespace tallyvane::fuzz {

namespace {

const std::array<Region, 9> regions{{{"en_US", "America/New_York", {}},
                                     {"de_DE", "Europe/Berlin", {}},
                                     {"ja_JP@calendar=japanese", "Asia/Tokyo", {}},
                                     {"fa_IR", "Asia/Tehran", {}},
                                     {"ar_SA@calendar=islamic", "Asia/Riyadh", {}},
                                     {"he_IL@calendar=hebrew", "Asia/Jerusalem", {}},
                                     {"th_TH", "Asia/Bangkok", {}},
                                     {"zh_CN@calendar=chinese", "Asia/Shanghai", {}},
                                     {"en_WS", "Pacific/Apia", {}}}};

/// As 2027-03-10, which reads the same everywhere.
std::string internationalForm(std::chrono::year_month_day day) {
  const auto inDigits = [](long number, std::size_t count) {
    const std::string digits = std::to_string(number);
    return std::string(count - std::min(count, digits.size()), '0') + digits;
  };
  return inDigits(int{day.year()}, 4) + "-" + inDigits(unsigned{day.month()}, 2) + "-" +
         inDigits(unsigned{day.day()}, 2);
}

void checkDay(const Region& region, Date now, const Result<Date>& day) {
  if (!day) return require(!day.error().empty(), "refused without a reason");
  const Calendar& calendar = Calendar::of(region);
  const std::chrono::year_month_day civil{calendar.civilDay(*day)};
  const std::string form = internationalForm(civil);
  require(int{civil.year()} >= 1 && int{civil.year()} <= 9999, "not within the years 1 to 9999: " + form);
  require(calendar.startOfDay(*day) == *day, "not the start of its day: " + form);
  const Result<Date> again = cli::readDueDate(region, now, form);
  require(again && *again == *day, form + " is read as another day: " + again.error());
}

}  // namespace

void typedDate(std::string_view bytes) {
  const bool choosesRegion = !bytes.empty() && bytes.front() > 0 && bytes.front() < ' ';
  const std::size_t choice = choosesRegion ? static_cast<std::size_t>(bytes.front()) - 1 : 0;
  if (choosesRegion) bytes.remove_prefix(1);
  const Region& region = regions[choice % regions.size()];
  const Date now = testing::FakeClock().now();
  checkDay(region, now, cli::readDueDate(region, now, bytes));
  const Result<Date> paid = cli::readPaymentDate(region, now, bytes);
  checkDay(region, now, paid);
  require(!paid || *paid <= now, "a payment that lies ahead");
  const Result<Date> month = cli::readMonth(region, now, bytes);
  require(month || !month.error().empty(), "refused without a reason");
}

void typedRepeat(std::string_view bytes) {
  const Result<Array> rule = cli::readRepeat(bytes);
  if (!rule) return require(!rule.error().empty(), "refused without a reason");
  require(rule->size() == 2, "not a rule of two numbers");
  const std::int64_t count = integerValue(&rule->at(0));
  const std::int64_t unit = integerValue(&rule->at(1));
  const bool isNever = unit == 4 && count == 0;
  require(isNever || (unit >= 0 && unit <= 3 && count >= 1 && count <= 12'000), "not a rule that a bill can keep");
  testing::FakeDesktop desktop;
  const Date due = desktop.clock.now();
  std::vector<Date> dates = cli::nextDueDates(desktop.platform, due, *rule, 3);
  require(dates.empty() == isNever, "a rule that does not lead ahead");
  dates.insert(dates.begin(), due);
  require(std::is_sorted(dates.begin(), dates.end(), std::less_equal<>()), "a date that is not behind the last");
}

}  // namespace tallyvane::fuzz
