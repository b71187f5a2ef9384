#include "cli/input/RepeatInput.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

#include "cli/input/InputText.h"
#include "common/Sentences.h"
#include "schedule/RepeatRule.h"

namespace tallyvane::cli {

namespace {

struct Rule {
  std::string_view words;  // without blanks and hyphens
  int count;
  UnitKind kind;
};

constexpr Rule namedRules[] = {
    {"daily", 1, days},
    {"weekly", 1, weeks},
    {"biweekly", 2, weeks},
    {"fortnightly", 2, weeks},
    {"everyfortnight", 2, weeks},
    {"twiceamonth", 1, twicePerMonth},
    {"twicepermonth", 1, twicePerMonth},
    {"twicemonthly", 1, twicePerMonth},
    {"semimonthly", 1, twicePerMonth},
    {"monthly", 1, months},
    {"quarterly", 3, months},
    {"everyquarter", 3, months},
    {"halfyearly", 6, months},
    {"everyhalfyear", 6, months},
    {"semiannually", 6, months},
    {"twiceayear", 6, months},
    {"yearly", 12, months},
    {"annually", 12, months},
    {"never", 0, never},
    {"once", 0, never},
};

std::optional<Rule> namedRule(std::string words) {
  std::erase_if(words, [](char c) { return c == ' ' || c == '-'; });
  const auto* found =
      std::find_if(std::begin(namedRules), std::end(namedRules), [&](const Rule& rule) { return rule.words == words; });
  return found == std::end(namedRules) ? std::nullopt : std::optional(*found);
}

std::optional<Rule> countedRule(std::string_view words) {
  constexpr std::string_view every = "every ";
  constexpr std::string_view other = "other ";
  const bool isEvery = words.starts_with(every);
  if (isEvery) words.remove_prefix(every.size());
  const bool isEveryOther = words.starts_with(other);
  if (isEveryOther) words.remove_prefix(other.size());
  auto counted = unitCount(words);
  if (!counted && isEvery) counted = unitCount(fmt::format("a {}", words));
  if (!counted) return std::nullopt;
  const int count = counted->count * (isEveryOther ? 2 : 1);
  switch (counted->unit) {
    case Unit::day:
      return Rule{"", count, days};
    case Unit::week:
      return Rule{"", count, weeks};
    case Unit::month:
      return Rule{"", count, months};
    case Unit::year:
      return Rule{"", 12 * count, months};
  }
  return std::nullopt;
}

}  // namespace

Result<Array> readRepeat(std::string_view text) {
  constexpr int mostUnits = 1000;
  const std::string plain = plainText(text);
  if (const auto rule = namedRule(plain)) return Array{rule->count, static_cast<std::int64_t>(rule->kind)};
  const auto rule = countedRule(plain);
  if (!rule)
    return Error{sentence(
        "\"{}\" is not a repeat rule; write it like weekly, \"every 2 weeks\", \"twice a month\", quarterly or never.",
        text)};
  if (rule->count < 1 || rule->count > mostUnits)
    return Error{
        sentence("\"{}\" cannot be kept: a bill repeats every 1 to {} days, weeks or months.", text, mostUnits)};
  return Array{rule->count, static_cast<std::int64_t>(rule->kind)};
}

}  // namespace tallyvane::cli
