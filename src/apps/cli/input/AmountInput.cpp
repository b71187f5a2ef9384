#include "cli/input/AmountInput.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cmath>
#include <string>

#include "cli/input/InputText.h"
#include "common/Sentences.h"
#include "foundation/IcuSupport.h"
#include "foundation/Texts.h"

namespace tallyvane::cli {

namespace {

std::string inLocale(const Region& region, double example) {
  const Value number(example);
  return decimalText(region, &number);
}

bool namesACurrency(const std::string& text) {
  const icu::UnicodeString unicode = unicodeOf(text);
  for (std::int32_t at = 0; at < unicode.length(); at = unicode.moveIndex32(at, 1)) {
    const UChar32 character = unicode.char32At(at);
    if (u_isalpha(character) || u_charType(character) == U_CURRENCY_SYMBOL) return true;
  }
  return false;
}

std::string withoutPercentSign(std::string text) {
  for (const std::string_view sign : {"%", "\u066A"}) {
    if (text.starts_with(sign)) return text.substr(sign.size());
    if (text.ends_with(sign)) return text.substr(0, text.size() - sign.size());
  }
  return text;
}

}  // namespace

Result<double> readAmount(const Region& region, std::string_view text) {
  constexpr double trillion = 1e12;
  constexpr double example = 1250.5;
  const auto amount = parsedAmount(region, text);
  if (!amount) return Error{sentence("\"{}\" is not an amount; write it like {}.", text, inLocale(region, example))};
  if (*amount < 0) return Error{sentence("\"{}\" is negative; an amount cannot be.", text)};
  if (*amount >= trillion)
    return Error{sentence("\"{}\" is too large; an amount must be below {:.0f}.", text, trillion)};
  return std::abs(*amount);  // no negative zero
}

Result<double> readInterest(const Region& region, std::string_view text) {
  constexpr double limit = 1000;
  constexpr double example = 4.9;
  constexpr double perCent = 100;
  const std::string number = withoutPercentSign(plainText(text));
  const auto rate = namesACurrency(number) ? std::nullopt : parsedAmount(region, number);
  if (!rate)
    return Error{
        sentence("\"{}\" is not an interest rate in per cent; write it like {}.", text, inLocale(region, example))};
  if (*rate < 0) return Error{sentence("\"{}\" is negative; an interest rate cannot be.", text)};
  if (*rate >= limit)
    return Error{sentence("\"{}\" is too large; an interest rate must be below {:.0f}.", text, limit)};
  return std::abs(*rate) / perCent;
}

}  // namespace tallyvane::cli
