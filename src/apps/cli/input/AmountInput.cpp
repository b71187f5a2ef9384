#include "cli/input/AmountInput.h"

#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cmath>
#include <string>

#include "cli/input/InputText.h"
#include "foundation/Texts.h"

namespace tallyvane::cli {

namespace {

Result<double> within(double amount, double limit, std::string_view text, std::string_view what) {
  if (amount < 0) return Error{fmt::format("\"{}\" is negative; {} cannot be.", text, what)};
  if (amount >= limit) return Error{fmt::format("\"{}\" is too large; {} must be below {:.0f}.", text, what, limit)};
  return std::abs(amount);  // no negative zero
}

Error notReadable(const Region& region, std::string_view text, std::string_view what, double example) {
  const Value number(example);
  return {fmt::format("\"{}\" is not {}; write it like {}.", text, what, decimalText(region, &number))};
}

bool namesACurrency(const std::string& text) {
  const auto unicode = icu::UnicodeString::fromUTF8(text);
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
  if (!amount) return notReadable(region, text, "an amount", example);
  return within(*amount, trillion, text, "an amount");
}

Result<double> readInterest(const Region& region, std::string_view text) {
  constexpr double limit = 1000;
  constexpr double example = 4.9;
  constexpr double perCent = 100;
  const std::string number = withoutPercentSign(plainText(text));
  const auto rate = namesACurrency(number) ? std::nullopt : parsedAmount(region, number);
  if (!rate) return notReadable(region, text, "an interest rate in per cent", example);
  const Result<double> checked = within(*rate, limit, text, "an interest rate");
  return checked ? Result<double>(*checked / perCent) : checked;
}

}  // namespace tallyvane::cli
