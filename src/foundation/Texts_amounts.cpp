#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/uchar.h>
#include <unicode/ucurr.h>

#include <charconv>
#include <cmath>
#include <vector>

#include "foundation/Currency.h"
#include "foundation/IcuSupport.h"
#include "foundation/PerRegion.h"
#include "foundation/Texts.h"

namespace tallyvane {

namespace {

struct AmountReader {
  std::unique_ptr<icu::DecimalFormat> decimal;
  std::unique_ptr<icu::DecimalFormat> money;
  std::vector<icu::UnicodeString> currencyNames;  // case folded: the signs, the ISO code
};

std::unique_ptr<icu::DecimalFormat> decimalReader(const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::NumberFormat> number(icu::NumberFormat::createInstance(locale, status));
  requireIcu(status, "the number format");
  return std::unique_ptr<icu::DecimalFormat>(dynamic_cast<const icu::DecimalFormat&>(*number).clone());
}

// Reads digits with the marks that the locale uses for money; they differ from those of other numbers in a few.
std::unique_ptr<icu::DecimalFormat> moneyReader(const icu::Locale& locale) {
  using Symbols = icu::DecimalFormatSymbols;
  std::unique_ptr<icu::DecimalFormat> decimal = decimalReader(locale);
  Symbols symbols(*decimal->getDecimalFormatSymbols());
  symbols.setSymbol(Symbols::kDecimalSeparatorSymbol, symbols.getConstSymbol(Symbols::kMonetarySeparatorSymbol));
  symbols.setSymbol(Symbols::kGroupingSeparatorSymbol,
                    symbols.getConstSymbol(Symbols::kMonetaryGroupingSeparatorSymbol));
  decimal->setDecimalFormatSymbols(symbols);
  decimal->setParseNoExponent(true);
  return decimal;
}

// Marks that only steer the direction of writing stand in what some locales print, and are invisible when pasted.
icu::UnicodeString withoutMarks(const icu::UnicodeString& text) {
  icu::UnicodeString kept;
  for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1))
    if (u_charType(text.char32At(at)) != U_FORMAT_CHAR) kept.append(text.char32At(at));
  return kept;
}

std::vector<icu::UnicodeString> namesOfCurrency(const Region& region) {
  const std::u16string code = currencyCode(region);
  if (code.empty()) return {};
  std::vector<icu::UnicodeString> names{icu::UnicodeString(code.c_str()).foldCase()};
  for (const UCurrNameStyle style : {UCURR_SYMBOL_NAME, UCURR_NARROW_SYMBOL_NAME}) {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    const char16_t* name = ucurr_getName(code.c_str(), region.locale.c_str(), style, nullptr, &length, &status);
    if (U_SUCCESS(status) && length > 0) names.push_back(withoutMarks(icu::UnicodeString(name, length)).foldCase());
  }
  return names;
}

const AmountReader& readerOf(const Region& region) {
  return perRegion<AmountReader>(region, [](const Region& its) {
    const icu::Locale locale(its.locale.c_str());
    return std::unique_ptr<AmountReader>(
        new AmountReader{decimalReader(locale), moneyReader(locale), namesOfCurrency(its)});
  });
}

// u_isUWhiteSpace also takes the blanks that do not break, which stand between amount and sign.
void trim(icu::UnicodeString& text) {
  std::int32_t begin = 0;
  std::int32_t end = text.length();
  while (begin < end && u_isUWhiteSpace(text[begin])) ++begin;
  while (begin < end && u_isUWhiteSpace(text[end - 1])) --end;
  text.retainBetween(begin, end);
}

// What is left of the text: its sign and the currency come off from outside, each at most once.
struct Stripped {
  icu::UnicodeString text;
  bool hasSign = false;
  bool isNegative = false;
  bool hasCurrency = false;

  bool stripSign() {
    const UChar32 first = text.char32At(0);
    const bool minus = first == u'-' || first == u'\u2212';
    if (hasSign || !(minus || first == u'+')) return false;
    hasSign = true;
    isNegative = minus;
    text.remove(0, 1);
    trim(text);
    return true;
  }

  bool stripCurrency(const std::vector<icu::UnicodeString>& names) {
    for (const icu::UnicodeString& name : names) {
      if (hasCurrency || name.isEmpty()) return false;
      const bool before = text.startsWith(name);
      if (!before && !text.endsWith(name)) continue;
      hasCurrency = true;
      text.remove(before ? 0 : text.length() - name.length(), name.length());
      trim(text);
      return true;
    }
    return false;
  }
};

std::optional<double> wholeNumberOf(const icu::DecimalFormat& format, const icu::UnicodeString& digits) {
  icu::ParsePosition position(0);
  icu::Formattable number;
  format.parse(digits, number, position);
  if (digits.isEmpty() || position.getIndex() != digits.length()) return std::nullopt;
  UErrorCode status = U_ZERO_ERROR;
  const double value = number.getDouble(status);
  if (U_FAILURE(status) || !std::isfinite(value) || std::signbit(value)) return std::nullopt;
  return value;
}

// "1250.50" where the locale itself would write a comma. Three digits behind the point might be thousands.
std::optional<double> plainNumberOf(const icu::UnicodeString& digits) {
  constexpr std::size_t digitsOfAGroup = 3;
  const std::string text = utf8Of(digits);
  const std::size_t point = text.find('.');
  if (text.find_first_not_of("0123456789.") != std::string::npos || point == std::string::npos) return std::nullopt;
  const std::size_t decimals = text.size() - point - 1;
  if (point == 0 || decimals == 0 || decimals == digitsOfAGroup) return std::nullopt;
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

/// Without blanks, signs and the currency's names around the digits.
Stripped strippedOf(const icu::UnicodeString& text, const std::vector<icu::UnicodeString>& currencyNames) {
  Stripped stripped{.text = withoutMarks(text)};
  trim(stripped.text);
  while (stripped.stripSign() || stripped.stripCurrency(currencyNames)) {
  }
  return stripped;
}

std::optional<double> signedNumber(std::optional<double> amount, bool isNegative) {
  if (amount && isNegative) amount = -*amount;
  return amount;
}

}  // namespace

std::optional<double> parsedAmount(const Region& region, std::string_view text) {
  const AmountReader& reader = readerOf(region);
  const Stripped stripped = strippedOf(unicodeOf(text).foldCase(), reader.currencyNames);
  std::optional<double> amount = wholeNumberOf(*reader.money, stripped.text);
  if (!amount) amount = plainNumberOf(stripped.text);
  return signedNumber(amount, stripped.isNegative);
}

std::optional<double> parsedNumber(const Region& region, std::string_view text) {
  const Stripped stripped = strippedOf(unicodeOf(text), {});
  return signedNumber(wholeNumberOf(*readerOf(region).decimal, stripped.text), stripped.isNegative);
}

}  // namespace tallyvane
