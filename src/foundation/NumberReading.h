// How a property-list value reads as a number of a stated width. These are the only coercions in Tallyvane.
//
//   value            int32Value            integerValue          floatValue        boolValue
//   absent           0                     0                     0                 false
//   boolean          0 or 1                0 or 1                0 or 1            itself
//   integer          its low 32 bits       itself                nearest float     not 0
//   real             cut toward zero; out of range or not a number: the most       nearest float     not 0
//                    negative integer of the width, in either direction
//   string           its leading number: blanks, a sign, digits; for the float also a fraction and an exponent;
//                    no digits give 0; an integer beyond the width gives the width's nearest end; as a boolean,
//                    true when after blanks, a sign and zeros comes a digit 1 to 9, or Y, y, T or t
//   date, data, array, dictionary: 0 or false
//
// Nothing here depends on the locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "foundation/Value.h"

namespace tallyvane {

/// Each takes a value that may be absent (null).
[[nodiscard]] std::int32_t int32Value(const Value* value);
[[nodiscard]] std::int64_t integerValue(const Value* value);
[[nodiscard]] float floatValue(const Value* value);
[[nodiscard]] double doubleValue(const Value* value);
[[nodiscard]] bool boolValue(const Value* value);

/// The same for a value at hand that may be absent.
[[nodiscard]] inline std::int32_t int32Value(const std::optional<Value>& value) {
  return int32Value(value ? &*value : nullptr);
}
[[nodiscard]] inline std::int64_t integerValue(const std::optional<Value>& value) {
  return integerValue(value ? &*value : nullptr);
}
[[nodiscard]] inline bool boolValue(const std::optional<Value>& value) { return boolValue(value ? &*value : nullptr); }

/// The same for the value under a key.
[[nodiscard]] inline std::int32_t int32Value(const Dictionary& from, std::string_view key) {
  return int32Value(from.find(key));
}
[[nodiscard]] inline std::int64_t integerValue(const Dictionary& from, std::string_view key) {
  return integerValue(from.find(key));
}
[[nodiscard]] inline float floatValue(const Dictionary& from, std::string_view key) {
  return floatValue(from.find(key));
}
[[nodiscard]] inline double doubleValue(const Dictionary& from, std::string_view key) {
  return doubleValue(from.find(key));
}
[[nodiscard]] inline bool boolValue(const Dictionary& from, std::string_view key) { return boolValue(from.find(key)); }

/// Whether the left number is below the right one, compared exactly whatever the two kinds; what has no number reads as
/// 0, and not a number is below all others.
[[nodiscard]] bool isNumberBelow(const Value* left, const Value* right);

/// Whether the value has a number to read at all: boolean, integer, real or string.
[[nodiscard]] bool canReadNumber(const Value& value);

/// A real number cut toward zero; out of range or not a number gives the most negative integer.
[[nodiscard]] std::int32_t truncatedToInt32(double number);
[[nodiscard]] std::int64_t truncatedToInt64(double number);

}  // namespace tallyvane
