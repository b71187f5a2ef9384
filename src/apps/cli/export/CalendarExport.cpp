#include <algorithm>

#include "cli/bills/BillText.h"
#include "cli/export/Exports.h"
#include "cli/input/NextDueDates.h"
#include "foundation/Calendar.h"
#include "foundation/NumberReading.h"
#include "freedesktop/CalendarText.h"
#include "schedule/RepeatRule.h"

namespace tallyvane::cli {

namespace {

/// How many of the next due dates stand in for a rule that cannot be said.
constexpr std::size_t saidOneByOne = 24;

unsigned dayOfMonth(CivilDay day) { return static_cast<unsigned>(std::chrono::year_month_day(day).day()); }

/// The bill's rule, where every calendar program that follows it comes to the days that payments come to. A monthly
/// bill that is due late in the month has none: after a short month it stays on that month's last day.
std::optional<RecurrenceRule> ruleOf(const Array& repeat, CivilDay due) {
  constexpr std::int64_t longest = 1000;
  constexpr unsigned lastDayOfEveryMonth = 28;
  if (!isCompleteRule(repeat)) return std::nullopt;
  const std::int64_t count = integerValue(&repeat[0]);
  const std::int64_t unit = integerValue(&repeat[1]);
  const unsigned day = dayOfMonth(due);
  if (unit == UnitKind::twicePerMonth && (day == 1 || day == 15))
    return RecurrenceRule{RecurrenceRule::Unit::months, 1, {1, 15}};
  if (count < 1 || count > longest) return std::nullopt;
  const auto interval = static_cast<int>(count);
  if (unit == UnitKind::weeks) return RecurrenceRule{RecurrenceRule::Unit::weeks, interval, {}};
  if (unit == UnitKind::days) return RecurrenceRule{RecurrenceRule::Unit::days, interval, {}};
  if (unit == UnitKind::months && day <= lastDayOfEveryMonth)
    return RecurrenceRule{RecurrenceRule::Unit::months, interval, {}};
  return std::nullopt;
}

std::string descriptionOf(const Platform& platform, const Dictionary& bill) {
  const std::string site = bill.valueOr(key::PaySite, std::string());
  return amountCell(platform, bill.find(key::Amount)).shown + (site.empty() ? "" : "\n" + site);
}

/// The stamp says when the bill last changed as far as its file tells: then the same bill gives the same event.
DayEvent eventOf(const Platform& platform, const ListedBill& bill, Date due) {
  const Calendar& calendar = Calendar::of(platform.region);
  const Array repeat = bill.content.valueOr(key::Repeat, Array());
  DayEvent event;
  event.uid = bill.bid + "@tallyvane";
  event.title = bill.name();
  event.description = descriptionOf(platform, bill.content);
  event.stamp = std::max(bill.content.valueOr(key::LastPayment, Date()), Date());
  event.day = calendar.civilDay(due);
  event.rule = ruleOf(repeat, event.day);
  if (event.rule) return event;
  for (const Date next : nextDueDates(platform, due, repeat, saidOneByOne))
    event.furtherDays.push_back(calendar.civilDay(next));
  return event;
}

}  // namespace

Result<std::string> calendarOf(const Platform& platform, const std::vector<ListedBill>& bills) {
  std::vector<DayEvent> events;
  for (const ListedBill& bill : bills) {
    const Date* due = bill.content.get<Date>(key::DueDate);
    const bool isAwaited = bill.group.key == key::ActiveBills && due != nullptr && *due < distantFuture;
    if (isAwaited) events.push_back(eventOf(platform, bill, *due));
  }
  return calendarText(events);
}

}  // namespace tallyvane::cli
