// Dates, numbers and comparison in the form of the user's locale. What formatters cost is paid once per thread, locale
// and zone.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/Date.h"
#include "foundation/Region.h"
#include "foundation/Value.h"

namespace tallyvane {

/// The date in the pattern that the locale makes of a template such as "EEEMMMdyyyy", in the region's zone.
[[nodiscard]] std::string formattedDate(const Region& region, Date date, std::string_view templateLetters);
/// That pattern itself, in ICU's letters.
[[nodiscard]] std::string datePattern(const Region& region, std::string_view templateLetters);
/// The date in exactly this pattern, such as "MMM d", with the locale's names and digits, in the region's zone.
[[nodiscard]] std::string dateInPattern(const Region& region, Date date, std::string_view pattern);

/// A number in the locale's currency or decimal style. Integers are written exactly; an absent number (null) is 0.
[[nodiscard]] std::string currencyText(const Region& region, const Value* number);
[[nodiscard]] std::string decimalText(const Region& region, const Value* number);

/// An amount as a person of that locale types it: digits with the locale's grouping and decimal marks, the currency's
/// sign or code before or after, a sign. Nothing when the text is anything else or not wholly read.
[[nodiscard]] std::optional<double> parsedAmount(const Region& region, std::string_view text);

/// A number that the locale's decimal style reads wholly: no currency.
[[nodiscard]] std::optional<double> parsedNumber(const Region& region, std::string_view text);

/// Below, equal or above zero: the locale's order, case ignored.
[[nodiscard]] int localizedCaseInsensitiveCompare(const Region& region, std::string_view left, std::string_view right);

/// How many UTF-16 units a UTF-8 text has.
[[nodiscard]] std::size_t utf16Length(std::string_view text);
/// Whether the bytes are valid UTF-8.
[[nodiscard]] bool isValidUtf8(std::string_view bytes);
/// Whether `text` contains `ascii`, letters compared without case.
[[nodiscard]] bool containsIgnoringCase(std::string_view text, std::string_view ascii);

}  // namespace tallyvane
