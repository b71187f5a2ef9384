#include "foundation/PropertyListScalars.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "foundation/Ascii.h"
#include "foundation/Base64.h"
#include "foundation/PropertyListCharacters.h"

namespace tallyvane {
namespace {

/// A text of the file, short enough to stand in a message.
std::string quoted(std::string_view text) {
  constexpr std::size_t shown = 40;
  std::string printable(text.substr(0, shown));
  std::replace_if(
      printable.begin(), printable.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
  return fmt::format("\"{}{}\"", printable, text.size() > shown ? "…" : "");
}

/// Takes a sign off the text; whether it was a minus.
bool takeSign(std::string_view& text) {
  if (text.empty() || (text.front() != '-' && text.front() != '+')) return false;
  const bool minus = text.front() == '-';
  text.remove_prefix(1);
  return minus;
}

std::optional<double> realOfWord(std::string_view word) {
  const std::string lower = lowerAscii(word);
  if (lower == "nan") return std::numeric_limits<double>::quiet_NaN();
  if (lower == "inf" || lower == "infinity") return std::numeric_limits<double>::infinity();
  return std::nullopt;
}

unsigned numberOfDigits(std::string_view digits) {
  unsigned number = 0;
  for (const char digit : digits) number = number * 10 + static_cast<unsigned>(digit - '0');
  return number;
}

/// Whether the text has a digit where the shape has a 0, and what the shape has elsewhere.
bool hasShape(std::string_view text, std::string_view shape) {
  return std::equal(text.begin(), text.end(), shape.begin(), shape.end(), [](char character, char expected) {
    return expected == '0' ? isAsciiDigit(character) : character == expected;
  });
}

/// Which value each base64 character has; the others are told apart by numbers above 63.
constexpr std::uint8_t blank = 64, padding = 65, foreign = 66;

constexpr std::array<std::uint8_t, 256> base64Values = [] {
  std::array<std::uint8_t, 256> values{};
  values.fill(foreign);
  for (std::size_t i = 0; i < base64Digits.size(); ++i)
    values[static_cast<std::uint8_t>(base64Digits[i])] = static_cast<std::uint8_t>(i);
  for (const char space : {' ', '\t', '\n', '\r'}) values[static_cast<std::uint8_t>(space)] = blank;
  values['='] = padding;
  return values;
}();

}  // namespace

std::int64_t integerOfText(std::string_view text) {
  std::string_view rest = text;
  const bool minus = takeSign(rest);
  const bool hexadecimal = rest.starts_with("0x") || rest.starts_with("0X");
  if (hexadecimal) rest.remove_prefix(2);
  std::uint64_t size = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), size, hexadecimal ? 16 : 10);
  if (end != rest.data() + rest.size() || error == std::errc::invalid_argument)
    throw PropertyListFault{quoted(text) + " is not a whole number"};
  constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
  if (error != std::errc() || size > largest + (minus ? 1 : 0))
    throw PropertyListFault{fmt::format("the whole number {} does not fit 64 bits", quoted(text))};
  return static_cast<std::int64_t>(minus ? 0 - size : size);
}

double realOfText(std::string_view text) {
  std::string_view rest = text;
  const bool minus = takeSign(rest);
  std::optional<double> number = realOfWord(rest);
  if (!number) {
    double read = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), read);
    const bool startsAsNumber = !rest.empty() && (rest.front() == '.' || isAsciiDigit(rest.front()));
    if (!startsAsNumber || end != rest.data() + rest.size() || error == std::errc::invalid_argument)
      throw PropertyListFault{quoted(text) + " is not a number"};
    if (error != std::errc()) throw PropertyListFault{fmt::format("the number {} does not fit a double", quoted(text))};
    number = read;
  }
  return minus ? -*number : *number;
}

Date dateOfText(std::string_view text) {
  constexpr std::string_view shape = "0000-00-00T00:00:00Z";
  const std::size_t missing = shape.size() - std::min(text.size(), shape.size());  // digits of a short year
  if (missing > 3 || !hasShape(text, shape.substr(missing)))
    throw PropertyListFault{fmt::format("{} is not a date of the form 2027-03-01T00:00:00Z", quoted(text))};
  const std::string_view year = text.substr(0, 4 - missing);
  const auto part = [&](std::size_t at) { return numberOfDigits(text.substr(at - missing, 2)); };
  const std::chrono::year_month_day civil{std::chrono::year{static_cast<int>(numberOfDigits(year))},
                                          std::chrono::month{part(5)}, std::chrono::day{part(8)}};
  const unsigned hour = part(11), minute = part(14), second = part(17);
  if (civil.year() == std::chrono::year{0} || !civil.ok() || hour > 23 || minute > 59 || second > 59)
    throw PropertyListFault{fmt::format("there is no such date as {}", quoted(text))};
  return std::chrono::sys_days{civil} + std::chrono::hours{hour} + std::chrono::minutes{minute} +
         std::chrono::seconds{second};
}

std::vector<std::uint8_t> dataOfBase64(std::string_view text) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(text.size() / 4 * 3 + 3);
  std::uint32_t group = 0;
  std::size_t taken = 0, padded = 0;
  for (const char character : text) {
    const std::uint8_t value = base64Values[byteOf(character)];
    if (value == blank) continue;
    if (value == foreign || (value != padding && padded > 0)) throw PropertyListFault{"the data is not base64"};
    padded += value == padding ? 1 : 0;
    group = group << 6 | (value & 0x3FU);
    if (++taken % 4 != 0) continue;
    for (std::size_t i = 0; padded <= 2 && i < 3 - padded; ++i)
      bytes.push_back(static_cast<std::uint8_t>(group >> (16 - 8 * i)));
  }
  if (taken % 4 != 0 || padded > 2) throw PropertyListFault{"the base64 data is cut short"};
  return bytes;
}

void appendInteger(std::string& to, std::int64_t number) {
  std::array<char, 24> buffer;
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  to.append(buffer.data(), end);
}

void appendReal(std::string& to, double number) {
  if (std::isnan(number)) {
    to += "nan";
  } else if (std::isinf(number)) {
    to += number < 0 ? "-inf" : "inf";
  } else {
    std::array<char, 32> buffer;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    to.append(buffer.data(), end);
  }
}

void appendDate(std::string& to, Date date) {
  const auto second =
      std::chrono::floor<std::chrono::seconds>(std::clamp(date, earliestWrittenDate, latestWrittenDate));
  const auto day = std::chrono::floor<std::chrono::days>(second);
  const std::chrono::year_month_day civil{day};
  const std::chrono::hh_mm_ss time{second - day};
  char text[] = "YYYY-MM-DDThh:mm:ssZ";
  const auto put = [&](std::size_t at, std::size_t width, auto number) {
    for (std::size_t i = at + width; i-- > at; number /= 10) text[i] = static_cast<char>('0' + number % 10);
  };
  put(0, 4, static_cast<int>(civil.year()));
  put(5, 2, static_cast<unsigned>(civil.month()));
  put(8, 2, static_cast<unsigned>(civil.day()));
  put(11, 2, time.hours().count());
  put(14, 2, time.minutes().count());
  put(17, 2, time.seconds().count());
  to.append(text, sizeof text - 1);
}

void appendBase64Lines(std::string& to, const std::vector<std::uint8_t>& bytes, int depth) {
  constexpr std::size_t bytesPerLine = 76 / 4 * 3;
  std::string_view rest(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  while (!rest.empty()) {
    to.append(static_cast<std::size_t>(depth), '\t');
    appendBase64(to, rest.substr(0, bytesPerLine));
    to.push_back('\n');
    rest.remove_prefix(std::min(bytesPerLine, rest.size()));
  }
}

}  // namespace tallyvane
