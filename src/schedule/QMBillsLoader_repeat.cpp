#include <fmt/format.h>

#include "schedule/RepeatRule.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane {

namespace {

struct Rule {
  std::int64_t count = 0;
  std::int64_t unitKind = 0;
};

/// An absent array reads as zeros; nothing for one that is too short or holds what has no number.
std::optional<Rule> readRule(const Array* repeat) {
  if (repeat == nullptr) return Rule{};
  if (!isCompleteRule(*repeat)) return std::nullopt;
  return Rule{integerValue(&(*repeat)[0]), integerValue(&(*repeat)[1])};
}

using Selection = std::optional<std::vector<std::int64_t>>;

Selection weeklySelection(std::int64_t count, bool allTenChoices) {
  if (count == 1) return {{0}};
  if (count == 2 && allTenChoices) return {{9}};
  return {{6, 1}};
}

Selection monthlySelection(std::int64_t count, bool allTenChoices) {
  switch (count) {
    case 1:
      return {{2}};
    case 3:
      return {{3}};
    case 6:
      return {{4}};
    case 12:
      return {{5}};
    default:
      break;
  }
  if (count == 2 && allTenChoices) return {{8}};
  return {{6, 2}};
}

Selection selectionOf(const Array* repeat, bool allTenChoices) {
  const std::optional<Rule> rule = readRule(repeat);
  if (!rule) return {{2}};
  switch (rule->unitKind) {
    case weeks:
      return weeklySelection(rule->count, allTenChoices);
    case twicePerMonth:
      return {{1}};
    case months:
      return monthlySelection(rule->count, allTenChoices);
    case days:
      return {{6, 0}};  // always a custom choice, even every 1 day
    case never:
      return {{7}};
    default:
      return std::nullopt;
  }
}

std::string every(const Region& region, std::string_view unit) {
  return fmt::format("{} {}", region.localized("Every"), region.localized(unit));
}

/// The singular for exactly 1; 0 and negative counts take the plural.
std::string everyCount(const Region& region, std::int64_t count, std::string_view singular, std::string_view plural) {
  if (count == 1) return every(region, singular);
  return fmt::format("{} {} {}", region.localized("Every"), count, region.localized(plural));
}

std::string everyMonths(const Region& region, std::int64_t count) {
  if (count == 3) return every(region, "quarter");
  if (count == 12) return every(region, "year");
  return everyCount(region, count, "month", "months");
}

}  // namespace

// Titles are not localized and differ from the sentences in case and wording; deliberate.
const std::vector<std::string_view>& repeatTitles() {
  static const std::vector<std::string_view> titles = {"Weekly",
                                                       "Twice Per Month",
                                                       "Monthly",
                                                       "Quarterly",
                                                       "Every 6 Months",
                                                       "Every Year",
                                                       "Custom",
                                                       "Never",
                                                       "Custom: Every 2 Months",
                                                       "Custom: Every 2 Weeks"};
  return titles;
}

std::optional<std::vector<std::int64_t>> QMBillsLoader::getRepeatFromArray(const Array* repeat) const {
  return selectionOf(repeat, true);
}

std::optional<std::vector<std::int64_t>> QMBillsLoader::getRepeatFromArrayMac(const Array* repeat) const {
  return selectionOf(repeat, false);
}

std::string QMBillsLoader::repeatStringFromRepeatArray(const std::vector<std::int64_t>* selection) const {
  const auto choice = static_cast<std::uint64_t>(selection == nullptr ? 0 : selection->at(0));
  const auto& titles = repeatTitles();
  return std::string(choice < titles.size() ? titles[choice] : std::string_view("Monthly"));
}

std::optional<std::string> QMBillsLoader::createHumanRepeatWithArray(const Array* repeat) const {
  const Region& region = platform_.region;
  const std::optional<Rule> rule = readRule(repeat);
  if (!rule) return "Unknown";  // not localized; deliberate
  switch (rule->unitKind) {
    case weeks:
      return everyCount(region, rule->count, "week", "weeks");
    case twicePerMonth:
      return region.localized("Twice per month");
    case months:
      return everyMonths(region, rule->count);
    case days:
      return everyCount(region, rule->count, "day", "days");
    case never:
      return region.localized("Never");
    default:
      return std::nullopt;
  }
}

}  // namespace tallyvane
