#include "freedesktop/PosixLocale.h"

#include <algorithm>
#include <utility>

namespace tallyvane {

namespace {

bool isLower(char c) { return c >= 'a' && c <= 'z'; }
bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isLanguage(std::string_view text) {
  return (text.size() == 2 || text.size() == 3) && std::all_of(text.begin(), text.end(), isLower);
}

bool isCountry(std::string_view text) {
  return (text.size() == 2 && std::all_of(text.begin(), text.end(), isUpper)) ||
         (text.size() == 3 && std::all_of(text.begin(), text.end(), isDigit));
}

// What stands before the first `mark`; the text keeps what follows it.
std::string_view takeUpTo(std::string_view& text, char mark) {
  const std::size_t at = std::min(text.find(mark), text.size());
  const std::string_view front = text.substr(0, at);
  text.remove_prefix(std::min(at + 1, text.size()));
  return front;
}

// Modifiers that change how texts look. The others, such as the currency of "@euro", say nothing that the country
// does not say today.
void apply(std::string_view modifier, PosixLocale& locale) {
  constexpr std::pair<std::string_view, std::string_view> scripts[] = {
      {"latin", "Latn"}, {"cyrillic", "Cyrl"}, {"devanagari", "Deva"}, {"iqtelif", "Latn"}};
  for (const auto& [name, script] : scripts)
    if (modifier == name) locale.script = script;
  if (modifier == "valencia") locale.variant = "VALENCIA";
}

}  // namespace

std::optional<PosixLocale> PosixLocale::read(std::string_view name) {
  std::string_view modifier = name;
  std::string_view country = takeUpTo(modifier, '@');
  country = takeUpTo(country, '.');
  const std::string_view language = takeUpTo(country, '_');
  if (!isLanguage(language) || !(country.empty() || isCountry(country))) return std::nullopt;
  PosixLocale locale{std::string(language), {}, std::string(country), {}};
  apply(modifier, locale);
  return locale;
}

std::string PosixLocale::identifier() const {
  std::string whole = language;
  for (const std::string& part : {script, country, variant})
    if (!part.empty()) whole += "_" + part;
  return whole;
}

}  // namespace tallyvane
