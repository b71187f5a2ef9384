#include "foundation/NumberReading.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace tallyvane {
namespace {

constexpr auto least32 = std::numeric_limits<std::int32_t>::min();
constexpr auto most32 = std::numeric_limits<std::int32_t>::max();
constexpr auto least64 = std::numeric_limits<std::int64_t>::min();
constexpr auto most64 = std::numeric_limits<std::int64_t>::max();

struct Row {
  Value value;
  std::int32_t int32;
  std::int64_t integer;
  double real;  ///< as a float when it is read as one
  bool boolean;
};

const Row table[] = {
    {true, 1, 1, 1, true},
    {false, 0, 0, 0, false},
    {4294967295, -1, 4294967295, 4294967295.0, true},
    {16777217, 16777217, 16777217, 16777217, true},
    {least64, 0, least64, -0x1p63, true},
    {-2.9, -2, -2, -2.9, true},
    {-0.0, 0, 0, 0, false},
    {2147483648.0, least32, 2147483648, 2147483648.0, true},
    {-2147483648.9, least32, -2147483648, -2147483648.9, true},
    {0x1p63, least32, least64, 0x1p63, true},
    {HUGE_VAL, least32, least64, HUGE_VAL, true},
    {" \t\n-12 bills", -12, -12, -12, true},
    {"+3.75e2x", 3, 3, 375, true},
    {"1.5.5", 1, 1, 1.5, true},
    {"2e+", 2, 2, 2, true},
    {".5", 0, 0, 0.5, false},
    {"1,5", 1, 1, 1, true},
    {"0x10", 0, 0, 0, false},
    {"", 0, 0, 0, false},
    {".", 0, 0, 0, false},
    {"inf", 0, 0, 0, false},
    {"- 5", 0, 0, 0, false},
    {"-2147483649", least32, -2147483649, -2147483649.0, true},
    {"9223372036854775807", most32, most64, 0x1p63, true},
    {"-9223372036854775809", least32, least64, -0x1p63, true},
    {"1e999", 1, 1, HUGE_VAL, true},
    {"-1e-999", -1, -1, 0, true},
    {"YES", 0, 0, 0, true},
    {" -00t", 0, 0, 0, true},
    {"on", 0, 0, 0, false},
    {distantFuture, 0, 0, 0, false},
    {Data{{1}}, 0, 0, 0, false},
    {Array{1}, 0, 0, 0, false},
    {Dictionary{{"a", 1}}, 0, 0, 0, false},
};

TEST(NumberReading, everyKindOfValueReadsAsTheTableSays) {
  for (std::size_t i = 0; i < std::size(table); ++i) {
    const Row& row = table[i];
    const auto* text = row.value.get<std::string>();
    SCOPED_TRACE("row " + std::to_string(i) + (text != nullptr ? " \"" + *text + "\"" : ""));
    EXPECT_EQ(int32Value(&row.value), row.int32);
    EXPECT_EQ(integerValue(&row.value), row.integer);
    EXPECT_EQ(floatValue(&row.value), static_cast<float>(row.real));
    EXPECT_EQ(doubleValue(&row.value), row.real);
    EXPECT_EQ(boolValue(&row.value), row.boolean);
    EXPECT_EQ(canReadNumber(row.value), row.value.storage().index() < 4);
  }
}

TEST(NumberReading, anAbsentValueIsZeroAndNotANumberIsTheLeastInteger) {
  const Dictionary none;
  EXPECT_EQ(int32Value(none, "a") + integerValue(none, "a") + boolValue(none, "a"), 0);
  EXPECT_EQ(floatValue(none, "a") + doubleValue(none, "a"), 0);

  const Value notANumber = std::nan("");
  EXPECT_EQ(int32Value(&notANumber), least32);
  EXPECT_EQ(integerValue(&notANumber), least64);
  EXPECT_TRUE(std::isnan(floatValue(&notANumber)));
  EXPECT_TRUE(boolValue(&notANumber));
}

TEST(NumberReading, numbersAreComparedExactlyWhateverTheirKinds) {
  const Value ascending[] = {std::nan(""),
                             -std::numeric_limits<double>::infinity(),
                             least64,
                             -1.5,
                             Data{},
                             "0.5 apples",
                             true,
                             9007199254740992.0,
                             std::int64_t{9007199254740993},
                             9007199254740994.0,
                             std::numeric_limits<std::int64_t>::max(),
                             9223372036854775808.0};
  for (const Value& left : ascending) {
    for (const Value& right : ascending) EXPECT_EQ(isNumberBelow(&left, &right), &left < &right);
  }
  EXPECT_TRUE(isNumberBelow(&ascending[3], nullptr));
}

}  // namespace
}  // namespace tallyvane
