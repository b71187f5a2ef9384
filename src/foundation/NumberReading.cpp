#include "foundation/NumberReading.h"

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <variant>

#include "foundation/Ascii.h"

namespace tallyvane {
namespace {

std::string_view withoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::size_t signLength(std::string_view text) {
  return !text.empty() && (text.front() == '-' || text.front() == '+') ? 1 : 0;
}

std::size_t skipDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && isAsciiDigit(text[at])) ++at;
  return at;
}

/// The leading number of a text, as far as `strtod` is to see it: no words, no hexadecimal digits.
std::string leadingReal(std::string_view text) {
  text = withoutBlanks(text);
  const std::size_t start = signLength(text);
  std::size_t end = skipDigits(text, start);
  std::size_t digits = end - start;
  if (end < text.size() && text[end] == '.') {
    const std::size_t fraction = skipDigits(text, end + 1);
    digits += fraction - end - 1;
    end = fraction;
  }
  if (digits == 0) return {};
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    const std::size_t exponent = end + 1 + signLength(text.substr(end + 1));
    const std::size_t exponentEnd = skipDigits(text, exponent);
    if (exponentEnd > exponent) end = exponentEnd;
  }
  return std::string(text.substr(0, end));
}

double realOf(std::string_view text) {
  static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
  return strtod_l(leadingReal(text).c_str(), nullptr, plain);
}

/// Stops at the ends of the width.
template <typename Integer>
Integer integerOf(std::string_view text) {
  text = withoutBlanks(text);
  const std::size_t sign = signLength(text);
  const bool minus = sign == 1 && text.front() == '-';
  Integer number = 0;
  for (const char character : text.substr(sign, skipDigits(text, sign) - sign)) {
    const auto digit = static_cast<Integer>(minus ? '0' - character : character - '0');
    if (__builtin_mul_overflow(number, Integer{10}, &number) || __builtin_add_overflow(number, digit, &number))
      return minus ? std::numeric_limits<Integer>::min() : std::numeric_limits<Integer>::max();
  }
  return number;
}

bool booleanOf(std::string_view text) {
  text = withoutBlanks(text);
  text.remove_prefix(signLength(text));
  const std::size_t first = text.find_first_not_of('0');
  if (first == std::string_view::npos) return false;
  const char character = text[first];
  return isAsciiDigit(character) || character == 'Y' || character == 'y' || character == 'T' || character == 't';
}

template <typename Integer>
Integer truncated(double number) {
  const double whole = std::trunc(number);
  constexpr double end = -static_cast<double>(std::numeric_limits<Integer>::min());  // one beyond the largest; exact
  return whole >= -end && whole < end ? static_cast<Integer>(whole) : std::numeric_limits<Integer>::min();
}

template <typename... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

/// Applies the case for the value's kind; an absent value and a kind without a number give zero.
template <typename Number, typename... Cases>
Number read(const Value* value, Cases... cases) {
  if (value == nullptr) return Number{};
  return std::visit(Overloaded{cases..., [](const auto&) { return Number{}; }}, value->storage());
}

template <typename Integer>
Integer readInteger(const Value* value) {
  return read<Integer>(
      value, [](bool boolean) { return Integer{boolean}; },
      [](std::int64_t integer) { return static_cast<Integer>(integer); },
      [](double real) { return truncated<Integer>(real); },
      [](const std::string& text) { return integerOf<Integer>(text); });
}

}  // namespace

std::int32_t int32Value(const Value* value) { return readInteger<std::int32_t>(value); }

std::int64_t integerValue(const Value* value) { return readInteger<std::int64_t>(value); }

float floatValue(const Value* value) {
  return read<float>(
      value, [](bool boolean) { return boolean ? 1.0F : 0.0F; },
      [](std::int64_t integer) { return static_cast<float>(integer); },
      [](double real) { return static_cast<float>(real); },
      [](const std::string& text) { return static_cast<float>(realOf(text)); });
}

double doubleValue(const Value* value) {
  return read<double>(
      value, [](bool boolean) { return boolean ? 1.0 : 0.0; },
      [](std::int64_t integer) { return static_cast<double>(integer); }, [](double real) { return real; },
      [](const std::string& text) { return realOf(text); });
}

bool boolValue(const Value* value) {
  return read<bool>(
      value, [](bool boolean) { return boolean; }, [](std::int64_t integer) { return integer != 0; },
      [](double real) { return real != 0; }, [](const std::string& text) { return booleanOf(text); });
}

bool isNumberBelow(const Value* left, const Value* right) {
  // Its 64 bits or more of fraction hold every integer and every double.
  static_assert(std::numeric_limits<long double>::digits >= std::numeric_limits<std::int64_t>::digits);
  const auto exact = [](const Value* value) -> long double {
    const auto* integer = value == nullptr ? nullptr : value->get<std::int64_t>();
    return integer != nullptr ? static_cast<long double>(*integer) : doubleValue(value);
  };
  const long double lower = exact(left);
  const long double upper = exact(right);
  return std::isnan(lower) ? !std::isnan(upper) : lower < upper;
}

bool canReadNumber(const Value& value) {
  return value.is<bool>() || value.is<std::int64_t>() || value.is<double>() || value.is<std::string>();
}

std::int32_t truncatedToInt32(double number) { return truncated<std::int32_t>(number); }

std::int64_t truncatedToInt64(double number) { return truncated<std::int64_t>(number); }

}  // namespace tallyvane
