#include "cli/check/Shapes.h"

#include <algorithm>
#include <cmath>

#include "common/Sentences.h"

namespace tallyvane::cli {

namespace {

const char* wordOf(Shape shape) {
  // translators: kinds of values, which stand in "{} is {} where {} should be"
  static constexpr const char* words[] = {marked("a text"), marked("a number"), marked("yes or no"),
                                          marked("a date"), marked("a list"),   marked("a list of texts")};
  return words[static_cast<std::size_t>(shape)];
}

const char* kindOf(const Value& value) {
  static constexpr const char* words[] = {marked("yes or no"), marked("a whole number"), marked("a number"),
                                          marked("a text"),    marked("a date"),         marked("data"),
                                          marked("a list"),    marked("a dictionary")};
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

std::string oddness(const std::string& named, const Value* value, Shape shape) {
  if (value == nullptr) return sentence("{} is missing", named);
  if (shape == Shape::texts && value->is<Array>() && !isListOfTexts(*value))
    return sentence("{} has entries that are no texts", named);
  if (!isOfKind(*value, shape)) {
    // translators: a key of a file and two of "a text", "a list" and so on; may be said as "{0}: {1}, not {2}"
    return sentence("{} is {} where {} should be", named, translated(kindOf(*value)), translated(wordOf(shape)));
  }
  const double* real = value->get<double>();
  return real == nullptr || std::isfinite(*real) ? "" : sentence("{} is no finite number", named);
}

void addOddKeys(const Dictionary& content, std::initializer_list<KeyRule> rules, FindingKind kind,
                const std::string& where, Problems& problems) {
  for (const KeyRule& rule : rules) {
    const std::string key(rule.key);
    const std::string odd = oddness("\"" + key + "\"", content.find(key), rule.shape);
    if (!odd.empty()) problems.push_back({kind, key, where + odd});
  }
}

}  // namespace tallyvane::cli
