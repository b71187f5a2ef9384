#include <unicode/numfmt.h>

#include "foundation/Currency.h"
#include "foundation/IcuSupport.h"
#include "foundation/NumberReading.h"
#include "foundation/PerRegion.h"
#include "foundation/Texts.h"

namespace tallyvane {

namespace {

using NumberFormatPointer = std::unique_ptr<icu::NumberFormat>;

NumberFormatPointer decimalFormatOf(const Region& region) {
  UErrorCode status = U_ZERO_ERROR;
  NumberFormatPointer format(icu::NumberFormat::createInstance(icu::Locale(region.locale.c_str()), status));
  requireIcu(status, "the number format");
  return format;
}

// A locale that belongs to no country has no currency: then a plain number with two decimals, since a sign that means
// "some currency" tells nobody anything.
NumberFormatPointer currencyFormatOf(const Region& region) {
  constexpr int twoDecimals = 2;
  UErrorCode status = U_ZERO_ERROR;
  const std::u16string currency = currencyCode(region);
  if (currency.empty()) {
    NumberFormatPointer plain = decimalFormatOf(region);
    plain->setMinimumFractionDigits(twoDecimals);
    plain->setMaximumFractionDigits(twoDecimals);
    return plain;
  }
  NumberFormatPointer format(icu::NumberFormat::createCurrencyInstance(icu::Locale(region.locale.c_str()), status));
  requireIcu(status, "the currency format");
  format->setCurrency(currency.c_str(), status);
  requireIcu(status, "the currency format");
  return format;
}

struct NumberTexts {
  NumberFormatPointer currency;
  NumberFormatPointer decimal;
};

const NumberTexts& textsOf(const Region& region) {
  return perRegion<NumberTexts>(region, [](const Region& its) {
    return std::unique_ptr<NumberTexts>(new NumberTexts{currencyFormatOf(its), decimalFormatOf(its)});
  });
}

std::string textOf(const icu::NumberFormat& format, const Value* number) {
  icu::UnicodeString text;
  if (const auto* integer = number == nullptr ? nullptr : number->get<std::int64_t>())
    format.format(*integer, text);
  else
    format.format(doubleValue(number), text);
  return utf8Of(text);
}

}  // namespace

std::string currencyText(const Region& region, const Value* number) {
  return textOf(*textsOf(region).currency, number);
}

std::string decimalText(const Region& region, const Value* number) { return textOf(*textsOf(region).decimal, number); }

}  // namespace tallyvane
