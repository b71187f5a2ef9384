#include "foundation/Texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tallyvane {
namespace {

using namespace std::chrono_literals;

Region regionOf(std::string locale, std::string zone = "UTC") {
  return {.locale = std::move(locale), .timeZone = std::move(zone), .words = {}};
}

constexpr Date monday = std::chrono::sys_days{std::chrono::year{2027} / 3 / 1};

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
      {"en_US", "UTC", "EEEE", "Monday"},
      {"en_GB", "UTC", "EEEMMMdyyyy", "Mon, 1 Mar 2027"},
      {"de_DE", "UTC", "EEEMMMdyyyy", "Mo., 1. März 2027"},
      {"ja_JP", "UTC", "MMMd", "3月1日"},
      {"th_TH", "UTC", "EEEMMMdyyyy", "จ. 1 มี.ค. 2570"},
      {"fa_IR", "UTC", "MMMd", "۱۰ اسفند"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(formattedDate(regionOf(row.locale, row.zone), monday, row.letters), row.text) << row.locale;
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
      {"en", &amount, "$1,250.50", "1,250.5"},
      {"eo", &amount, "1 250,50", "1 250,5"},
      {"en_001", &amount, "1,250.50", "1,250.5"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(plain(currencyText(regionOf(row.locale), row.number)), row.currency) << row.locale;
    EXPECT_EQ(plain(decimalText(regionOf(row.locale), row.number)), row.decimal) << row.locale;
  }
}

TEST(Texts, ReadAnAmountAsItsLocaleTypesIt) {
  const struct {
    const char* locale;
    const char* text;
    double amount;
  } rows[] = {
      {"en_US", "1250.50", 1250.5},
      {"en_US", "1,250.50", 1250.5},
      {"en_US", " $1,250.50 ", 1250.5},
      {"en_US", "$ 12", 12},
      {"en_US", "-$12.5", -12.5},
      {"en_US", "$-12.5", -12.5},
      {"en_US", "+5", 5},
      {"en_US", "12 usd", 12},
      {"en_US", "USD12", 12},
      {"en_US", "1.250", 1.25},
      {"en_US", ".5", 0.5},
      {"en_US", "\u22125", -5},
      {"de_DE", "1.250,50 €", 1250.5},
      {"de_DE", "-1.250,50\u00A0€", -1250.5},
      {"de_DE", "1250,50", 1250.5},
      {"de_DE", "1250.50", 1250.5},
      {"de_DE", "1.250", 1250},
      {"de_DE", "0.5", 0.5},
      {"fr_FR", "1\u202F250,50 €", 1250.5},
      {"fr_FR", "1 250,50 €", 1250.5},
      {"de_CH", "CHF 1’250.50", 1250.5},
      {"fr_CH", "12.50", 12.5},
      {"en_IN", "₹1,00,000", 100000},
      {"ar_EG", "١٬٢٥٠٫٥٠", 1250.5},
      {"ar_EG", "1250.50", 1250.5},
      {"fa_IR", "۱۲۵۰", 1250},
      {"ja_JP", "￥1,250", 1250},
      {"ja_JP", "1250", 1250},
      {"eo", "12,5", 12.5},
  };
  for (const auto& row : rows) {
    const auto amount = parsedAmount(regionOf(row.locale), row.text);
    ASSERT_TRUE(amount.has_value()) << row.locale << " " << row.text;
    EXPECT_DOUBLE_EQ(*amount, row.amount) << row.locale << " " << row.text;
  }
}

TEST(Texts, ReadBackEveryAmountThatTheyWrite) {
  for (const char* locale :
       {"en_US", "de_DE", "de_AT", "de_CH", "fr_FR", "fr_CH", "sv_SE", "pl_PL", "en_IN", "hi_IN", "ar_EG",
        "fa_IR", "th_TH", "he_IL", "pt_BR", "tr_TR", "en",    "eo",    "bg_BG", "es_ES", "lv_LV"})
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
      {"twelve bytes and more", 21, true},
      {"Miete für März", 14, true},
      {"\U0001F3E0 rent", 7, true},
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
  EXPECT_TRUE(containsIgnoringCase("My HTTPS page", "https"));
  EXPECT_TRUE(containsIgnoringCase("été WWW.", "www."));
  EXPECT_TRUE(containsIgnoringCase("", ""));
  EXPECT_FALSE(containsIgnoringCase("htt", "http"));
  EXPECT_FALSE(containsIgnoringCase("[", "{"));
}

}  // namespace
}  // namespace tallyvane
