#include "freedesktop/PosixLocale.h"

#include <algorithm>
#include <utility>

#include "foundation/Ascii.h"
#include "freedesktop/TextParts.h"

namespace tallyvane {

namespace {

bool isLower(char c) { return c >= 'a' && c <= 'z'; }
bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }

bool isLanguage(std::string_view text) {
  return (text.size() == 2 || text.size() == 3) && std::all_of(text.begin(), text.end(), isLower);
}

bool isCountry(std::string_view text) {
  return (text.size() == 2 && std::all_of(text.begin(), text.end(), isUpper)) ||
         (text.size() == 3 && std::all_of(text.begin(), text.end(), isAsciiDigit));
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
