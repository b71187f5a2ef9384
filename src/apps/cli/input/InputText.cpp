#include "cli/input/InputText.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <charconv>
#include <iterator>

#include "cli/input/Similar.h"
#include "foundation/Ascii.h"
#include "foundation/IcuSupport.h"

namespace tallyvane::cli {

namespace {

icu::UnicodeString withAsciiDigits(const icu::UnicodeString& text) {
  icu::UnicodeString plain;
  for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
    const UChar32 character = text.char32At(at);
    const std::int32_t digit = u_charDigitValue(character);
    plain.append(digit < 0 ? character : static_cast<UChar32>('0' + digit));
  }
  return plain;
}

std::optional<Unit> unitOf(std::string_view word) {
  constexpr std::string_view names[][3] = {
      {"d", "day", "days"}, {"w", "week", "weeks"}, {"m", "month", "months"}, {"y", "year", "years"}};
  for (std::size_t i = 0; i < std::size(names); ++i)
    if (std::find(std::begin(names[i]), std::end(names[i]), word) != std::end(names[i])) return static_cast<Unit>(i);
  return std::nullopt;
}

std::optional<int> countOf(std::string_view word) {
  constexpr std::string_view words[] = {"one",   "two",   "three", "four", "five",   "six",
                                        "seven", "eight", "nine",  "ten",  "eleven", "twelve"};
  if (word == "a" || word == "an") return 1;
  const auto* found = std::find(std::begin(words), std::end(words), word);
  if (found != std::end(words)) return static_cast<int>(found - std::begin(words)) + 1;
  return wholeNumber(word);
}

}  // namespace

std::string plainText(std::string_view text) {
  std::string plain;
  for (const char c : utf8Of(withAsciiDigits(unicodeOf(folded(text))))) {
    const bool isBlank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
    if (!isBlank)
      plain += c;
    else if (!plain.empty() && plain.back() != ' ')
      plain += ' ';
  }
  if (!plain.empty() && plain.back() == ' ') plain.pop_back();
  return plain;
}

std::optional<int> wholeNumber(std::string_view text) {
  constexpr std::size_t mostDigits = 6;
  if (text.empty() || text.size() > mostDigits || !std::all_of(text.begin(), text.end(), isAsciiDigit))
    return std::nullopt;
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

std::optional<UnitCount> unitCount(std::string_view plain) {
  const auto unitBegin =
      static_cast<std::size_t>(std::find_if_not(plain.begin(), plain.end(), isAsciiDigit) - plain.begin());
  const std::size_t blank = plain.find(' ');
  const bool hasBlank = blank != std::string_view::npos;
  const std::string_view count = plain.substr(0, hasBlank ? blank : unitBegin);
  const std::string_view word = plain.substr(hasBlank ? blank + 1 : unitBegin);
  const auto number = countOf(count);
  const auto unit = unitOf(word);
  if (!number || !unit) return std::nullopt;
  return UnitCount{*number, *unit};
}

}  // namespace tallyvane::cli
