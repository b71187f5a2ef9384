#include "analysis/QMIncomeManager.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>

#include "foundation/Ascii.h"
#include "foundation/Calendar.h"
#include "foundation/NumberReading.h"
#include "foundation/Texts.h"
#include "platform/PropertyListFile.h"
#include "schedule/DateDescription.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"

namespace tallyvane {

namespace {

constexpr std::int64_t fortnightly = 2;
constexpr std::int64_t weekly = 3;

/// Text without a leading whole number, as int32Value reads one, is no code.
bool hasCode(const Value& repeat) {
  const auto* text = repeat.get<std::string>();
  if (text == nullptr) return canReadNumber(repeat);
  std::size_t first = text->find_first_not_of(" \t\n\v\f\r");
  if (first != std::string::npos && ((*text)[first] == '-' || (*text)[first] == '+')) ++first;
  return first < text->size() && isAsciiDigit((*text)[first]);
}

bool paysByDay(std::optional<std::uint32_t> code) { return code && *code <= 1; }
bool paysByDates(std::optional<std::uint32_t> code) { return code && (*code == fortnightly || *code == weekly); }

std::int64_t payDateOf(const Dictionary& source) { return int32Value(source, key::PayDate); }

/// The leading dates of a source's list, up to the first element that is none.
std::vector<Date> datesOf(const Dictionary& source) {
  std::vector<Date> dates;
  const Array* list = source.get<Array>(key::IncomeDates);
  if (list == nullptr) return dates;
  for (const Value& element : *list) {
    const Date* date = element.get<Date>();
    if (date == nullptr) break;
    dates.push_back(*date);
  }
  return dates;
}

template <typename Visit>
void forEachSource(const Array& sources, Visit visit) {
  for (const Value& element : sources) {
    if (const auto* source = element.get<Dictionary>()) visit(*source, incomeIntervalCode(*source));
  }
}

}  // namespace

std::optional<std::uint32_t> incomeIntervalCode(const Dictionary& source) {
  const Value* repeat = source.find(key::Repeat);
  if (repeat != nullptr && !hasCode(*repeat)) return std::nullopt;
  return static_cast<std::uint32_t>(int32Value(repeat));
}

Array QMIncomeManager::getIncomeSources() {
  const std::string path = pathInDataFolder(platform_, incomeIndexName);
  const auto content = readPropertyListFile<Dictionary>(platform_.files, platform_.log, path);
  const Array* sources = content ? content->get<Array>(key::IncomeSources) : nullptr;
  Array current = removeInactiveIncomeSources(sources == nullptr ? Array() : *sources);
  writeUpdatedIncomeArray(current);
  return current;
}

void QMIncomeManager::writeUpdatedIncomeArray(const Array& sources) {
  Dictionary content;
  content.set(key::IncomeSources, sources);
  (void)savePropertyListFile(platform_.files, pathInDataFolder(platform_, incomeIndexName), content);
}

Array QMIncomeManager::removeInactiveIncomeSources(const Array& sources) const {
  Array kept;
  for (const Value& element : sources) {
    const auto* source = element.get<Dictionary>();
    const auto code = source == nullptr ? std::nullopt : incomeIntervalCode(*source);
    if (!code || *code == 1) {
      kept.push_back(element);
    } else if (paysByDates(code)) {
      static const Value none = Array();
      const Value* listed = source->find(key::IncomeDates);
      const Array* dates = (listed == nullptr ? none : *listed).get<Array>();
      Dictionary copy = *source;
      if (dates != nullptr) copy.set(key::IncomeDates, trimmed(*dates));
      kept.emplace_back(std::move(copy));
    } else if (const Date* created = source->get<Date>(key::CreationDate);
               created != nullptr && isThisMonth(*created)) {
      kept.push_back(element);
    }
  }
  return kept;
}

/// Without the dates before the first of this month.
Array QMIncomeManager::trimmed(const Array& dates) const {
  if (!std::all_of(dates.begin(), dates.end(), [](const Value& date) { return date.is<Date>(); })) return dates;
  platform_.log.line("Current Date: " + dateDescription(platform_.clock.now()));
  const auto first = std::find_if(dates.begin(), dates.end(), [&](const Value& element) {
    const Date date = *element.get<Date>();
    platform_.log.line("Income Date: " + dateDescription(date));
    return isThisMonth(date);
  });
  return Array(first, dates.end());
}

template <typename Add>
void QMIncomeManager::forEachIncome(Add add) {
  forEachSource(getIncomeSources(), [&](const Dictionary& source, std::optional<std::uint32_t> code) {
    const float amount = floatValue(source, key::Amount);
    if (paysByDay(code)) add(amount, payDay(payDateOf(source)));
    if (!paysByDates(code)) return;
    for (const Date date : datesOf(source)) {
      if (!isThisMonth(date)) break;
      add(amount, std::int64_t{Calendar::of(platform_.region).fields(date).day});
    }
  });
}

float QMIncomeManager::incomeThisMonth() {
  float sum = 0;
  forEachIncome([&](float amount, std::int64_t day) { sum += today() >= day ? amount : 0.0F; });
  return sum;
}

float QMIncomeManager::incomeThisMonthAll() {
  float sum = 0;
  forEachIncome([&](float amount, std::int64_t /*day*/) { sum += amount; });
  return sum;
}

std::vector<Date> QMIncomeManager::incomeDatesThisMonth() {
  const Calendar& calendar = Calendar::of(platform_.region);
  CalendarMonth next = calendar.month(platform_.clock.now());
  ++next.month;
  std::vector<Date> dates;
  forEachSource(getIncomeSources(), [&](const Dictionary& source, std::optional<std::uint32_t> code) {
    if (paysByDay(code)) {
      const std::int64_t day = payDay(payDateOf(source));
      const Date date = calendar.startOfDay(addDays(firstDayOfMonth(), day - 1));
      dates.insert(dates.end(), {date, calendar.adding(date, {.months = 1})});
    }
    if (!paysByDates(code)) return;
    for (const Date date : datesOf(source)) {
      if (!isThisMonth(date) && calendar.month(date) != next) break;
      dates.push_back(date);
    }
  });
  return dates;
}

std::string QMIncomeManager::displayDateWithIncome(const Dictionary& source) const {
  const auto code = incomeIntervalCode(source);
  if (paysByDay(code)) return displayDateFromIndex(payDateOf(source));
  if (!paysByDates(code)) return "";
  const std::vector<Date> dates = datesOf(source);
  return dateInPattern(platform_.region, dates.empty() ? platform_.clock.now() : dates.front(), "MMM d");
}

std::string QMIncomeManager::displayDateFromIndex(std::int64_t index) const {
  static constexpr std::array<std::string_view, 12> names = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const auto month = static_cast<std::size_t>(Calendar::of(platform_.region).month(platform_.clock.now()).month - 1);
  return fmt::format("{} {}", month < names.size() ? names[month] : "", payDay(index));
}

std::int64_t QMIncomeManager::lastDayOfMonth() const {
  const Calendar& calendar = Calendar::of(platform_.region);
  const CivilDay first = firstDayOfMonth();
  return (calendar.civilDay(calendar.adding(calendar.startOfDay(first), {.months = 1})) - first).count();
}

Array QMIncomeManager::createArrayOfIncomeDatesForIntervalFromDate(std::int64_t interval, std::int64_t dayIndex) const {
  constexpr int weeks = 156;
  const int step = interval == weekly ? 1 : interval == fortnightly ? 2 : weeks + 1;
  Date date = dateFromDateIndex(dayIndex);
  Array dates;
  dates.emplace_back(date);
  for (int week = step; week <= weeks; week += step) {
    date = Calendar::of(platform_.region).adding(date, {.days = std::int64_t{7} * step});
    dates.emplace_back(date);
  }
  return dates;
}

Date QMIncomeManager::dateFromDateIndex(std::int64_t index) const {
  return Calendar::of(platform_.region).startOfDay(addDays(firstDayOfMonth(), index));
}

bool QMIncomeManager::isThisMonth(Date date) const {
  const Calendar& calendar = Calendar::of(platform_.region);
  return calendar.month(date) == calendar.month(platform_.clock.now());
}

CivilDay QMIncomeManager::firstDayOfMonth() const {
  const Calendar& calendar = Calendar::of(platform_.region);
  const Date now = platform_.clock.now();
  return addDays(calendar.civilDay(now), 1 - std::int64_t{calendar.fields(now).day});
}

std::int64_t QMIncomeManager::today() const { return Calendar::of(platform_.region).fields(platform_.clock.now()).day; }

/// The day of the month that an index stands for.
std::int64_t QMIncomeManager::payDay(std::int64_t index) const {
  constexpr std::int64_t lastDayIndex = 28;
  if (index == lastDayIndex) return lastDayOfMonth();
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(index) + 1);  // of the largest, the most negative
}

}  // namespace tallyvane
