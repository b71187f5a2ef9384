#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/input/AmountInput.h"
#include "cli/input/IconInput.h"
#include "cli/input/NextDueDates.h"
#include "cli/input/RepeatInput.h"
#include "support/Dates.h"
#include "support/Fakes.h"

namespace tallyvane::cli {
namespace {

using namespace std::chrono_literals;

TEST(RepeatInput, UnderstandsRulesAsPeopleSayThem) {
  const struct {
    std::vector<const char*> texts;
    Array repeat;
  } rows[] = {
      {{"weekly", "Every Week", "1w", "every 1 week"}, {1, 0}},
      {{"every 2 weeks", "biweekly", "bi-weekly", "fortnightly", "every other week", "2w", "every two weeks"}, {2, 0}},
      {{"twice a month", "Twice Per Month", "semimonthly", "semi-monthly"}, {1, 1}},
      {{"monthly", "every month", "1m"}, {1, 2}},
      {{"quarterly", "every 3 months", "3m"}, {3, 2}},
      {{"every 6 months", "half-yearly", "semiannually"}, {6, 2}},
      {{"yearly", "annually", "every year", "1y"}, {12, 2}},
      {{"every 2 years", "every other year"}, {24, 2}},
      {{"daily", "every day", "1d"}, {1, 3}},
      {{" every  10   days ", "10d"}, {10, 3}},
      {{"every 1000 days"}, {1000, 3}},
      {{"never", "once"}, {0, 4}},
  };
  for (const auto& row : rows)
    for (const char* text : row.texts) {
      const Result<Array> repeat = readRepeat(text);
      ASSERT_TRUE(repeat) << text << ": " << repeat.error();
      EXPECT_EQ(Value(*repeat), Value(row.repeat)) << text;
    }
}

TEST(RepeatInput, RefusesOtherRulesWithAReason) {
  for (const char* text :
       {"", "d", "every", "every 2", "sometimes", "bimonthly", "-2w", "every -2 weeks", "2.5 weeks", "every 2 moons"})
    EXPECT_NE(readRepeat(text).error().find("is not a repeat rule"), std::string::npos) << text;
  for (const char* text : {"every 0 days", "1001d", "999999 weeks", "every other 999999 years", "84 years"})
    EXPECT_NE(readRepeat(text).error().find("every 1 to 1000"), std::string::npos) << text;
}

TEST(AmountInput, TakesAmountsOfTheLocaleAndSaysWhatIsWrongWithOthers) {
  const Region german = testing::regionOf("de_DE");
  EXPECT_EQ(*readAmount(german, "1.250,50 €"), 1250.5);
  EXPECT_EQ(*readAmount(german, "0"), 0.0);
  EXPECT_EQ(*readAmount(german, "999999999999,99"), 999999999999.99);
  EXPECT_EQ(readAmount(german, "abc").error(), "\"abc\" is not an amount; write it like 1.250,5.");
  EXPECT_EQ(readAmount(german, "-5").error(), "\"-5\" is negative; an amount cannot be.");
  EXPECT_EQ(readAmount(german, "1000000000000").error(),
            "\"1000000000000\" is too large; an amount must be below 1000000000000.");
  EXPECT_FALSE(readAmount(german, "nan"));
}

TEST(AmountInput, KeepsInterestAsAFraction) {
  const Region english{};
  const Region turkish = testing::regionOf("tr_TR");
  for (const char* text : {"4.9", "4.9%", "4.9 %"}) EXPECT_EQ(*readInterest(english, text), 0.049) << text;
  EXPECT_EQ(*readInterest(turkish, "%4,9"), 0.049);
  for (const char* text : {"", "%", "-1", "$4.9", "4.9 usd", "1000", "4.9%%"})
    EXPECT_FALSE(readInterest(english, text)) << text;
}

TEST(IconInput, FindsAnIconByNumberNameTitleOrAPartOfIt) {
  Region region;
  region.words = [](std::string_view key) { return std::string(key == "Water" ? "Wasser" : ""); };
  const struct {
    const char* text;
    const char* imageName;
  } rows[] = {
      {"0", "32x32-House"},      {"30", "32x32-Taxes"},        {"32x32-house", "32x32-House"},
      {"phone", "32x32-Phone"},  {"CELL", "32x32-Smartphone"}, {"iphone", "32x32-Smartphone"},
      {"wasser", "32x32-Water"}, {"Water", "32x32-Water"},     {"credit card - o", "32x32-Credticard-B"},
  };
  for (const auto& row : rows) EXPECT_EQ(*readIcon(region, row.text), row.imageName) << row.text;
  EXPECT_EQ(readIcon(region, "credit").error(),
            "\"credit\" could be several icons: Credit Card - General; Credit Card - Other.");
  EXPECT_EQ(readIcon(region, "31").error(), "Icons are numbered 0 to 30.");
  for (const char* text : {"", " ", "spaceship", "-1"})
    EXPECT_NE(readIcon(region, text).error().find("There is no icon"), std::string::npos) << text;
}

TEST(NextDueDates, AreEachComputedFromTheOneBeforeWhileTheyMoveOn) {
  using testing::utc;
  const struct {
    Date due;
    Array repeat;
    std::vector<Date> dates;
  } rows[] = {
      {utc(2027, 1, 31, 14h), {1, 2}, {utc(2027, 2, 28, 14h), utc(2027, 3, 28, 14h), utc(2027, 4, 28, 14h)}},
      {utc(3999, 12, 1), {1, 2}, {utc(4000, 1, 1), utc(4000, 2, 1), utc(4000, 3, 1)}},
      {utc(4000, 11, 15), {1, 2}, {utc(4000, 12, 15)}},
      {utc(2027, 1, 1), {0, 4}, {}},
      {utc(2027, 1, 1), {0, 2}, {}},
      {utc(2027, 1, 1), {1, 9}, {}},
  };
  testing::FakeDesktop desktop;
  desktop.region = testing::regionOf("en_US");
  for (const auto& row : rows)
    EXPECT_EQ(nextDueDates(desktop.platform, row.due, row.repeat, 3), row.dates) << testing::textOf(row.due);
}

}  // namespace
}  // namespace tallyvane::cli
