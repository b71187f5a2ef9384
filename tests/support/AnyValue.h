#pragma once

#include <bit>
#include <cmath>
#include <random>
#include <string>

#include "foundation/Value.h"

namespace tallyvane::testing {

/// Any value that a file can hold, of at most so many levels.
class AnyValue {
 public:
  explicit AnyValue(unsigned seed) : random_(seed) {}

  Value make(int levels) {
    switch (random_() % (levels > 0 ? 8 : 6)) {
      case 0:
        return random_() % 2 == 0;
      case 1:
        return static_cast<std::int64_t>(random_()) >> random_() % 64;
      case 2:
        return real();
      case 3:
        return text();
      case 4:
        return Date{distantPast + std::chrono::seconds{random_() % 315537897600}};
      case 5:
        return data();
      case 6:
        return array(levels);
      default:
        return dictionary(levels);
    }
  }

 private:
  double real() {
    const auto number = std::bit_cast<double>(random_());
    return std::isnan(number) ? 0.1 : number;
  }
  std::string text() {
    static const char* const pieces[] = {"a",   " ",  "\r\n", "\t", "<",    "&amp;", ">",
                                         "]]>", "\"", "é",    "日", "🙂", "\x7F"};
    std::string result;
    for (auto count = random_() % 9; count > 0; --count) result += pieces[random_() % std::size(pieces)];
    return result;
  }
  Data data() {
    Data result;
    for (auto count = random_() % 130; count > 0; --count) result.bytes.push_back(static_cast<std::uint8_t>(random_()));
    return result;
  }
  Array array(int levels) {
    Array result;
    for (auto count = random_() % 6; count > 0; --count) result.push_back(make(levels - 1));
    return result;
  }
  Dictionary dictionary(int levels) {
    Dictionary result;
    for (auto count = random_() % 30; count > 0; --count) result.set(text(), make(levels - 1));
    return result;
  }
  std::mt19937_64 random_;
};

}  // namespace tallyvane::testing
