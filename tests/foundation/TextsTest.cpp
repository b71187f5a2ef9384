#include "foundation/Texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/Dates.h"

namespace tallyvane::testing {
namespace {

const Date monday = utc(2027, 3, 1);

// Blanks that do not break, and marks that steer the direction of writing, as their plain forms.
std::string plain(std::string text) {
  for (const auto& [special, simple] : {std::pair{"\u00A0", " "}, {"\u202F", " "}, {"\u200E", ""}, {"\u200F", ""}})
    for (std::size_t at = 0; (at = text.find(special)) != std::string::npos;)
      text.replace(at, std::string_view(special).size(), simple);
  return text;
}

TEST(Texts, WriteDatesInTheLocalesPatternAndCalendar) {
  const struct {
    const char* locale;
    const char* zone;
    const char* letters;
    const char* text;
  } rows[] = {
      {"en_US", "UTC", "EEEMMMdyyyy", "Mon, Mar 1, 2027"},
      {"en_US", "America/New_York", "EEEMMMdyyyy", "Sun, Feb 28, 2027"},
      {"en_US", "UTC", "MMMd", "Mar 1"},
      {"de_DE", "UTC", "EEEMMMdyyyy", "Mo., 1. März 2027"},
      {"th_TH", "UTC", "EEEMMMdyyyy", "จ. 1 มี.ค. 2570"},
      {"fa_IR", "UTC", "MMMd", "۱۰ اسفند"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(formattedDate(regionOf(row.locale, row.zone), monday, row.letters), row.text) << row.locale;
  EXPECT_EQ(dateInPattern(regionOf("en_US"), monday, "MMMMM d"), "M 1");
  EXPECT_EQ(dateInPattern(regionOf("de_DE"), monday, "MMM"), "März");
  EXPECT_EQ(formattedDate(regionOf("en_US"), distantPast, "yMMMd"), "Jan 1, 1");
  EXPECT_EQ(formattedDate(regionOf("en_US"), Date::max(), "y"), "32766");
}

TEST(Texts, WriteNumbersInTheLocalesStyle) {
  const Value amount(1250.5);
  const Value whole(std::int64_t{9007199254740993});
  const struct {
    const char* locale;
    const Value* number;
    const char* currency;
    const char* decimal;
  } rows[] = {
      {"en_US", &amount, "$1,250.50", "1,250.5"},
      {"en_US", nullptr, "$0.00", "0"},
      {"en_US", &whole, "$9,007,199,254,740,993.00", "9,007,199,254,740,993"},
      {"de_DE", &amount, "1.250,50 €", "1.250,5"},
      {"de_AT", &amount, "€ 1.250,50", "1 250,5"},
      {"ja_JP", &amount, "￥1,250", "1,250.5"},
      {"en_IN", &whole, "₹9,00,71,99,25,47,40,993.00", "9,00,71,99,25,47,40,993"},
      {"eo", &amount, "1 250,50", "1 250,5"},
      {"en_001", &amount, "1,250.50", "1,250.5"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(plain(currencyText(regionOf(row.locale), row.number)), row.currency) << row.locale;
    EXPECT_EQ(plain(decimalText(regionOf(row.locale), row.number)), row.decimal) << row.locale;
  }
}

TEST(Texts, ReadAnAmountAsItsLocaleTypesIt) {
  const std::pair<const char*, std::vector<std::pair<const char*, double>>> rows[] = {
      {"en_US", {{" $1,250.50 ", 1250.5}, {"$ 12", 12}, {"-$12.5", -12.5}, {"$-12.5", -12.5}, {"+5", 5}}},
      {"en_US", {{"12 usd", 12}, {"USD12", 12}, {"1.250", 1.25}, {".5", 0.5}, {"\u22125", -5}}},
      {"de_DE", {{"-1.250,50\u00A0€", -1250.5}, {"1250.50", 1250.5}, {"1.250", 1250}, {"0.5", 0.5}}},
      {"fr_FR", {{"1\u202F250,50 €", 1250.5}, {"1 250,50 €", 1250.5}}},
      {"de_CH", {{"CHF 1’250.50", 1250.5}}},
      {"en_IN", {{"₹1,00,000", 100000}}},
      {"ar_EG", {{"١٬٢٥٠٫٥٠", 1250.5}, {"1250.50", 1250.5}}},
      {"ja_JP", {{"￥1,250", 1250}, {"1250", 1250}}},
      {"eo", {{"12,5", 12.5}}},
  };
  for (const auto& [locale, typed] : rows)
    for (const auto& [text, amount] : typed)
      EXPECT_EQ(parsedAmount(regionOf(locale), text), amount) << locale << " " << text;
}

TEST(Texts, ReadANumberWithoutACurrency) {
  EXPECT_EQ(parsedNumber(regionOf("de_AT"), "1\u00A0250,5"), 1250.5);  // money has a point there
  EXPECT_EQ(parsedNumber(regionOf("en_US"), " -1,250.5 "), -1250.5);
  for (const char* text : {"$5", "5 USD", "5 kg", "", "-"})
    EXPECT_EQ(parsedNumber(regionOf("en_US"), text), std::nullopt) << text;
  EXPECT_EQ(parsedNumber(regionOf("de_DE"), "1250.50"), std::nullopt);  // not even as money, for which it would do
}

TEST(Texts, ReadBackEveryAmountThatTheyWrite) {
  for (const char* locale : {"en_US", "de_DE", "de_AT", "de_CH", "fr_FR", "fr_CH", "sv_SE", "pl_PL", "en_IN", "hi_IN",
                             "ar_EG", "fa_IR", "he_IL", "pt_BR", "eo", "lv_LV"})
    for (const double amount : {0.0, 5.0, 1250.0, -1250.0, 1234567.0}) {
      const Value value(amount);
      for (const std::string& text : {currencyText(regionOf(locale), &value), decimalText(regionOf(locale), &value)})
        EXPECT_EQ(parsedAmount(regionOf(locale), text), amount) << locale << " " << text;
    }
}

TEST(Texts, RefuseWhatIsNotWhollyAnAmount) {
  for (const char* text : {"",    " ",   "$",   "-",    "abc",  "12abc",  "12 abc", "1e3",   "1E3", "nan",
                           "NaN", "inf", "∞",   "0x10", "1,25", "1,,250", "1,250,", "1.2.3", "1 2", "--5",
                           "-+5", "$$5", "$5$", "5%",   "€5",   "12\n13", "\xFF",   "5\xC3"})
    EXPECT_EQ(parsedAmount(regionOf("en_US"), text), std::nullopt) << text;
  for (const char* text : {"1250.500", "1,250.50", "1.25.5", "1.2,5", ".5.", "1250.", "12.5e1"})
    EXPECT_EQ(parsedAmount(regionOf("de_DE"), text), std::nullopt) << text;
  EXPECT_EQ(parsedAmount(regionOf("en_US"), std::string(400, '9')), std::nullopt);
}

TEST(Texts, CompareInTheLocalesOrderWithoutCase) {
  std::vector<std::string> names{"zebra", "Öl", "apple", "Zürich", "ol", "Äpfel", "Apple pie", "10", "\xFF"};
  const auto sorted = [&names](const char* locale) {
    std::stable_sort(names.begin(), names.end(), [&](const std::string& left, const std::string& right) {
      return localizedCaseInsensitiveCompare(regionOf(locale), left, right) < 0;
    });
    return names;
  };
  EXPECT_EQ(sorted("en_US"),
            (std::vector<std::string>{"10", "Äpfel", "apple", "Apple pie", "ol", "Öl", "zebra", "Zürich", "\xFF"}));
  EXPECT_EQ(sorted("sv_SE"),
            (std::vector<std::string>{"10", "apple", "Apple pie", "ol", "zebra", "Zürich", "Äpfel", "Öl", "\xFF"}));
  EXPECT_EQ(localizedCaseInsensitiveCompare(regionOf("en_US"), "RENT", "rent"), 0);
  EXPECT_NE(localizedCaseInsensitiveCompare(regionOf("en_US"), "resume", "résumé"), 0);
}

TEST(Texts, CountUtf16UnitsAndTellValidUtf8) {
  const struct {
    std::string_view bytes;
    std::size_t units;
    bool valid;
  } rows[] = {
      {"", 0, true},
      {"\U0001F3E0 Miete für März", 17, true},
      {std::string_view("a\0b", 3), 3, true},
      {"12345678\xFF", 9, false},
      {"\xC0\x80", 2, false},          // overlong
      {"\xED\xA0\x80", 3, false},      // half of a pair
      {"\xF4\x90\x80\x80", 4, false},  // beyond the last character
      {"abc\xE2\x82", 4, false},       // cut short
  };
  for (const auto& row : rows) {
    EXPECT_EQ(utf16Length(row.bytes), row.units) << row.bytes;
    EXPECT_EQ(isValidUtf8(row.bytes), row.valid) << row.bytes;
  }
}

TEST(Texts, FindAsciiWithoutCase) {
  EXPECT_TRUE(containsIgnoringCase("été WWW.", "www."));
  EXPECT_TRUE(containsIgnoringCase("", ""));
  EXPECT_FALSE(containsIgnoringCase("htt", "http"));
  EXPECT_FALSE(containsIgnoringCase("[", "{"));
}

}  // namespace
}  // namespace tallyvane::testing
