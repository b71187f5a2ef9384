#include <gtest/gtest.h>

#include <stdexcept>

#include "support/LoadedBills.h"

namespace tallyvane::testing {
namespace {

using RepeatRules = LoadedBills;

using Selection = std::optional<std::vector<std::int64_t>>;

TEST_F(RepeatRules, MenuChoicesMakeTheirArrays) {
  struct Case {
    std::int64_t selector, number, unit;
    Array rule;
  };
  const Case cases[] = {{0, 9, 9, {1, 0}}, {1, 9, 9, {1, 1}},  {2, 9, 9, {1, 2}},   {3, 9, 9, {3, 2}},
                        {4, 9, 9, {6, 2}}, {5, 9, 9, {12, 2}}, {7, 9, 9, {0, 4}},   {8, 9, 9, {2, 2}},
                        {9, 9, 9, {2, 0}}, {6, 5, 1, {5, 0}},  {6, -3, 0, {-3, 3}}, {6, 0, 2, {0, 2}},
                        {6, 4, 7, {4}},    {6, 4, -1, {4}},    {10, 1, 1, {}},      {-1, 1, 1, {}}};
  for (const Case& c : cases) {
    EXPECT_EQ(QMBill{desktop.platform}.calculateRepeatValuesWithRepeatSelectorAndCustomNumberAndCustomSelector(
                  c.selector, c.number, c.unit),
              c.rule)
        << c.selector << " " << c.number << " " << c.unit;
  }
}

TEST_F(RepeatRules, ReadBackAsChoicesAndSentencesOfTheUsersWords) {
  desktop.region.words = bracketed;
  struct Case {
    std::optional<Array> rule;
    Selection ten, desktopMenu;
    std::optional<std::string> sentence;
  };
  const Case cases[] = {
      {Array{1, 0}, {{0}}, {{0}}, "[Every] [week]"},
      {Array{2, 0}, {{9}}, {{6, 1}}, "[Every] 2 [weeks]"},
      {Array{5, 0}, {{6, 1}}, {{6, 1}}, "[Every] 5 [weeks]"},
      {Array{5, 1}, {{1}}, {{1}}, "[Twice per month]"},
      {Array{1, 2}, {{2}}, {{2}}, "[Every] [month]"},
      {Array{2, 2}, {{8}}, {{6, 2}}, "[Every] 2 [months]"},
      {Array{3, 2}, {{3}}, {{3}}, "[Every] [quarter]"},
      {Array{6, 2}, {{4}}, {{4}}, "[Every] 6 [months]"},
      {Array{12, 2}, {{5}}, {{5}}, "[Every] [year]"},
      {Array{24, 2}, {{6, 2}}, {{6, 2}}, "[Every] 24 [months]"},
      {Array{1, 3}, {{6, 0}}, {{6, 0}}, "[Every] [day]"},
      {Array{-4, 3}, {{6, 0}}, {{6, 0}}, "[Every] -4 [days]"},
      {Array{3, 4}, {{7}}, {{7}}, "[Never]"},
      {Array{1, 5}, std::nullopt, std::nullopt, std::nullopt},
      {Array{1, -1}, std::nullopt, std::nullopt, std::nullopt},
      {Array{4}, {{2}}, {{2}}, "Unknown"},
      {Array{}, {{2}}, {{2}}, "Unknown"},
      {Array{1, Dictionary()}, {{2}}, {{2}}, "Unknown"},
      {Array{"2", 0.9}, {{9}}, {{6, 1}}, "[Every] 2 [weeks]"},
      {std::nullopt, {{6, 1}}, {{6, 1}}, "[Every] 0 [weeks]"},
  };
  for (const Case& c : cases) {
    const Array* rule = c.rule ? &*c.rule : nullptr;
    SCOPED_TRACE(c.sentence.value_or("no sentence"));
    EXPECT_EQ(loader.getRepeatFromArray(rule), c.ten);
    EXPECT_EQ(loader.getRepeatFromArrayMac(rule), c.desktopMenu);
    EXPECT_EQ(loader.createHumanRepeatWithArray(rule), c.sentence);
  }
}

TEST_F(RepeatRules, MenuTitlesDifferFromTheSentences) {
  desktop.region.words = bracketed;  // titles are not looked up
  const std::vector<std::int64_t> every6Months{4}, unknown{10}, negative{-1}, custom{6, 1}, empty;
  EXPECT_EQ(loader.repeatStringFromRepeatArray(&every6Months), "Every 6 Months");
  EXPECT_EQ(loader.repeatStringFromRepeatArray(&custom), "Custom");
  EXPECT_EQ(loader.repeatStringFromRepeatArray(&unknown), "Monthly");
  EXPECT_EQ(loader.repeatStringFromRepeatArray(&negative), "Monthly");
  EXPECT_EQ(loader.repeatStringFromRepeatArray(nullptr), "Weekly");
  EXPECT_THROW((void)loader.repeatStringFromRepeatArray(&empty), std::out_of_range);
  EXPECT_EQ(repeatTitles(), (std::vector<std::string_view>{"Weekly", "Twice Per Month", "Monthly", "Quarterly",
                                                           "Every 6 Months", "Every Year", "Custom", "Never",
                                                           "Custom: Every 2 Months", "Custom: Every 2 Weeks"}));
}

}  // namespace
}  // namespace tallyvane::testing
