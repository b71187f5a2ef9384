#include <gtest/gtest.h>

#include <stdexcept>

#include "storage/QMBillsLoader.h"
#include "support/Bills.h"

namespace tallyvane::testing {
namespace {

using Selection = std::optional<std::vector<std::int64_t>>;

TEST(RepeatRules, EveryMenuChoiceButCustomReadsBackAsItself) {
  FakeDesktop desktop;
  for (std::int64_t selector : {0, 1, 2, 3, 4, 5, 7, 8, 9}) {
    const Array rule = QMBill{desktop.platform}.calculateRepeatValuesWithRepeatSelectorAndCustomNumberAndCustomSelector(
        selector, 77, 1);
    EXPECT_EQ(QMBillsLoader{desktop.platform}.getRepeatFromArray(&rule), Selection({{selector}}));
  }
}

TEST(RepeatRules, MenuChoicesMakeTheirArrays) {
  FakeDesktop desktop;
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

TEST(RepeatRules, ReadBackAsChoicesAndSentences) {
  FakeDesktop desktop;
  struct Case {
    std::optional<Array> rule;
    Selection ten;
    Selection desktopMenu;
    std::optional<std::string> sentence;
  };
  const Case cases[] = {
      {Array{1, 0}, {{0}}, {{0}}, "Every week"},
      {Array{2, 0}, {{9}}, {{6, 1}}, "Every 2 weeks"},
      {Array{5, 0}, {{6, 1}}, {{6, 1}}, "Every 5 weeks"},
      {Array{5, 1}, {{1}}, {{1}}, "Twice per month"},
      {Array{1, 2}, {{2}}, {{2}}, "Every month"},
      {Array{2, 2}, {{8}}, {{6, 2}}, "Every 2 months"},
      {Array{3, 2}, {{3}}, {{3}}, "Every quarter"},
      {Array{6, 2}, {{4}}, {{4}}, "Every 6 months"},
      {Array{12, 2}, {{5}}, {{5}}, "Every year"},
      {Array{24, 2}, {{6, 2}}, {{6, 2}}, "Every 24 months"},
      {Array{1, 3}, {{6, 0}}, {{6, 0}}, "Every day"},
      {Array{-4, 3}, {{6, 0}}, {{6, 0}}, "Every -4 days"},
      {Array{3, 4}, {{7}}, {{7}}, "Never"},
      {Array{1, 5}, std::nullopt, std::nullopt, std::nullopt},
      {Array{1, -1}, std::nullopt, std::nullopt, std::nullopt},
      {Array{4}, {{2}}, {{2}}, "Unknown"},
      {Array{}, {{2}}, {{2}}, "Unknown"},
      {Array{1, Dictionary()}, {{2}}, {{2}}, "Unknown"},
      {Array{"2", 0.9}, {{9}}, {{6, 1}}, "Every 2 weeks"},
      {std::nullopt, {{6, 1}}, {{6, 1}}, "Every 0 weeks"},
  };
  const QMBillsLoader loader{desktop.platform};
  for (const Case& c : cases) {
    const Array* rule = c.rule ? &*c.rule : nullptr;
    SCOPED_TRACE(c.sentence.value_or("no sentence"));
    EXPECT_EQ(loader.getRepeatFromArray(rule), c.ten);
    EXPECT_EQ(loader.getRepeatFromArrayMac(rule), c.desktopMenu);
    EXPECT_EQ(loader.createHumanRepeatWithArray(rule), c.sentence);
  }
}

TEST(RepeatRules, MenuTitlesDifferFromTheSentences) {
  FakeDesktop desktop;
  const QMBillsLoader loader{desktop.platform};
  const std::pair<std::vector<std::int64_t>, std::string> titles[] = {{{0}, "Weekly"},
                                                                      {{1}, "Twice Per Month"},
                                                                      {{2}, "Monthly"},
                                                                      {{3}, "Quarterly"},
                                                                      {{4}, "Every 6 Months"},
                                                                      {{5}, "Every Year"},
                                                                      {{6, 1}, "Custom"},
                                                                      {{7}, "Never"},
                                                                      {{8}, "Custom: Every 2 Months"},
                                                                      {{9}, "Custom: Every 2 Weeks"},
                                                                      {{10}, "Monthly"},
                                                                      {{-1}, "Monthly"}};
  for (const auto& [selection, title] : titles) EXPECT_EQ(loader.repeatStringFromRepeatArray(&selection), title);
  EXPECT_EQ(loader.repeatStringFromRepeatArray(nullptr), "Weekly");
  const std::vector<std::int64_t> empty;
  EXPECT_THROW((void)loader.repeatStringFromRepeatArray(&empty), std::out_of_range);
}

TEST(RepeatRules, SentencesAreMadeOfTheUsersWords) {
  FakeDesktop desktop;
  desktop.region.words = [](std::string_view word) { return "[" + std::string(word) + "]"; };
  const std::pair<Array, const char*> sentences[] = {{{1, 0}, "[Every] [week]"},     {{2, 0}, "[Every] 2 [weeks]"},
                                                     {{1, 1}, "[Twice per month]"},  {{1, 2}, "[Every] [month]"},
                                                     {{3, 2}, "[Every] [quarter]"},  {{12, 2}, "[Every] [year]"},
                                                     {{5, 2}, "[Every] 5 [months]"}, {{1, 3}, "[Every] [day]"},
                                                     {{9, 3}, "[Every] 9 [days]"},   {{0, 4}, "[Never]"}};
  for (const auto& [rule, sentence] : sentences) {
    EXPECT_EQ(QMBillsLoader{desktop.platform}.createHumanRepeatWithArray(&rule), sentence);
  }
}

}  // namespace
}  // namespace tallyvane::testing
