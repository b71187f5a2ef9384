#include "cli/check/Shapes.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace tallyvane::cli {

namespace {

std::string_view wordOf(Shape shape) {
  static constexpr std::string_view words[] = {"a text", "a number", "yes or no",
                                               "a date", "a list",   "a list of texts"};
  return words[static_cast<std::size_t>(shape)];
}

std::string_view kindOf(const Value& value) {
  static constexpr std::string_view words[] = {"yes or no", "a whole number", "a number", "a text",
                                               "a date",    "data",           "a list",   "a dictionary"};
  return words[value.storage().index()];
}

bool isListOfTexts(const Value& value) {
  const Array* list = value.get<Array>();
  return list != nullptr && std::all_of(list->begin(), list->end(), [](const Value& v) { return v.is<std::string>(); });
}

bool isOfKind(const Value& value, Shape shape) {
  switch (shape) {
    case Shape::text:
      return value.is<std::string>();
    case Shape::number:
      return value.is<std::int64_t>() || value.is<double>();
    case Shape::yesNo:
      return value.is<bool>() || value.is<std::int64_t>();
    case Shape::date:
      return value.is<Date>();
    case Shape::list:
      return value.is<Array>();
    case Shape::texts:
      break;
  }
  return isListOfTexts(value);
}

}  // namespace

std::string oddness(const Value* value, Shape shape) {
  if (value == nullptr) return "is missing";
  if (shape == Shape::texts && value->is<Array>() && !isListOfTexts(*value)) return "has entries that are no texts";
  if (!isOfKind(*value, shape)) return fmt::format("is {} where {} should be", kindOf(*value), wordOf(shape));
  const double* real = value->get<double>();
  return real == nullptr || std::isfinite(*real) ? "" : "is no finite number";
}

void addOddKeys(const Dictionary& content, std::initializer_list<KeyRule> rules, FindingKind kind,
                const std::string& where, Problems& problems) {
  for (const KeyRule& rule : rules) {
    const std::string odd = oddness(content.find(rule.key), rule.shape);
    if (!odd.empty())
      problems.push_back({kind, std::string(rule.key), fmt::format("{}\"{}\" {}", where, rule.key, odd)});
  }
}

}  // namespace tallyvane::cli
