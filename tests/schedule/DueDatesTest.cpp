#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/LoadedBills.h"
#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

using DueDates = LoadedBills;

TEST_F(DueDates, ReadInUnevenBandsOfTheUsersWords) {
  struct Band {
    int first, last;
    const char* text;  ///< # stands for the number of days
  };
  const Band bands[] = {{-10000, -9999, "[Overdue by] # [days]"},
                        {-2, -2, "[Overdue by] # [days]"},
                        {-1, -1, "[Overdue by] 1 [day]"},
                        {0, 0, "[Due today]"},
                        {1, 1, "[Due in] 1 [day]"},
                        {2, 6, "[Due in] # [days]"},
                        {7, 7, "[Due in] 1 [week]"},
                        {8, 28, "[Due in] # [days]"},
                        {29, 31, "[Due in about] 1 [month]"},
                        {32, 58, "[Due in over] 1 [month]"},
                        {59, 61, "[Due in about] 2 [months]"},
                        {62, 89, "[Due in over] 2 [months]"},
                        {90, 90, "[Due in over] 3 [months]"},
                        {360, 365, "[Due in over] 12 [months]"},
                        {366, 366, "[Due in over] 1 [year]"},
                        {10000, 10000, "[Due in over] 1 [year]"},
                        {10001, 10001, "[Never]"}};
  desktop.region.timeZone = "UTC";  // every day has 24 hours
  desktop.region.words = bracketed;
  for (const Band& band : bands) {
    for (int d = band.first; d <= band.last; ++d) {
      std::string text = band.text;
      if (const auto at = text.find('#'); at != std::string::npos) text.replace(at, 1, std::to_string(std::abs(d)));
      EXPECT_EQ(loader.createHumanDueDateWithDueDateAndCurrentDate(daysFromToday(d), desktop.clock.now()), text) << d;
    }
  }
}

TEST_F(DueDates, AShortDayIsCutTowardZero) {
  // the clocks go forward in New York on 14 March 2027
  const Date changeDay = noon(2027, 3, 14);
  EXPECT_EQ(loader.createHumanDueDateWithDueDateAndCurrentDate(noon(2027, 3, 15), changeDay), "Due today");
  EXPECT_EQ(loader.createHumanDueDateWithDueDateAndCurrentDate(changeDay, noon(2027, 3, 15)), "Due today");
  EXPECT_EQ(loader.createSortableDueDateWithDueDateAndCurrentDate(noon(2027, 3, 15), changeDay), 82800);
  EXPECT_EQ(loader.getDaysApartWithDateAndCurrentDate(noon(2027, 3, 16), changeDay), 1);
  EXPECT_EQ(loader.createSortableDueDateWithDueDateAndCurrentDate(noon(2027, 11, 8), noon(2027, 11, 7)), 90000);
}

TEST_F(DueDates, TextsEndTenThousandDaysAway) {
  desktop.region.timeZone = "UTC";
  desktop.region.words = bracketed;
  EXPECT_EQ(loader.createDueDateStringWithDate(daysFromToday(0)), "Wed, Mar 10, 2027");
  EXPECT_EQ(loader.createShortDueDateStringWithDueDate(daysFromToday(3)), "Mar 13");
  EXPECT_EQ(loader.createDayStringWithDate(daysFromToday(3)), "Saturday");
  for (const Date far : {daysFromToday(10001), daysFromToday(-10001), distantPast, distantFuture}) {
    EXPECT_EQ(loader.createDueDateStringWithDate(far), "[Never]");
    EXPECT_EQ(loader.createShortDueDateStringWithDueDate(far), "[Never]");
    EXPECT_EQ(loader.createDayStringWithDate(far), "[ ]");
  }
  for (const int edge : {10000, -10000}) EXPECT_NE(loader.createDueDateStringWithDate(daysFromToday(edge)), "[Never]");
}

TEST_F(DueDates, IconsFollowDayHorizonAndPaymentType) {
  struct Case {
    Value sortNumber, payType;
    std::optional<int> horizon;
    const char* icon;
    const char* widgetIcon;
  };
  const Case cases[] = {
      {-86400, 0, 7, "red5.png", "red5.png"},
      {-86399, 0, 7, "yellow5.png", "yellow5.png"},
      {0, 0, std::nullopt, "yellow5.png", "yellow5.png"},
      {86399, 0, std::nullopt, "yellow5.png", "yellow5.png"},
      {86400, 0, std::nullopt, "green5.png", "yellow5.png"},
      {7 * 86400, 0, std::nullopt, "green5.png", "yellow5.png"},
      {8 * 86400, 0, std::nullopt, "green5.png", "green5.png"},
      {7 * 86400, 0, 7, "yellow5.png", "yellow5.png"},
      {8 * 86400, 2, 7, "green5.png", "green5.png"},
      {8 * 86400, 0, 30, "yellow5.png", "yellow5.png"},
      {-900000, 1, 7, "blue5.png", "blue5.png"},
  };
  EXPECT_EQ(loader.createDueIconWithSortNumberAndPaymentType(nullptr, nullptr), "yellow5.png");
  for (const Case& c : cases) {
    desktop.defaults.content = c.horizon ? Dictionary{{"QMDueSoonDays", *c.horizon}} : Dictionary();
    desktop.groupDefaults.content = desktop.defaults.content;
    EXPECT_EQ(loader.createDueIconWithSortNumberAndPaymentType(&c.sortNumber, &c.payType), c.icon);
    EXPECT_EQ(loader.createDueIconForExtensionWithSortNumberAndPaymentType(&c.sortNumber, &c.payType), c.widgetIcon);
  }
}

TEST_F(DueDates, TheOlderIconReads32BitsAndTurnsGreenAfterFifteenDays) {
  const auto icon = [&](const Value& number) { return loader.calculateIconWithDueDateNumber(&number); };
  EXPECT_EQ(icon(-1) + icon(0) + icon(1295999) + icon(1296000), "red.pngyellow.pngyellow.pnggreen.png");
  EXPECT_EQ(icon(std::int64_t{1} << 31), "red.png");
}

TEST_F(DueDates, MoveOffAWeekendByTheStepTwiceAtMostAndKeepTheTimeOnTheWall) {
  constexpr std::chrono::hours clockChange{1};  // the clocks go forward on Sunday 14 March
  struct Case {
    unsigned day;
    std::int64_t step;
    std::optional<Date> moved;
  };
  const Case cases[] = {{13, 1, noon(2027, 3, 15) - clockChange},
                        {14, 1, noon(2027, 3, 15)},
                        {13, -1, noon(2027, 3, 12)},
                        {14, -1, noon(2027, 3, 12) + clockChange},
                        {10, 1, std::nullopt},
                        // A week on is a weekend again, and no third step follows.
                        {13, 7, noon(2027, 3, 27) - clockChange}};
  for (const Case& c : cases) {
    EXPECT_EQ(loader.modifyDueDateToAvoidWeekendsWithAmount(noon(2027, 3, c.day), c.step), c.moved)
        << c.day << " " << c.step;
  }
  desktop.log.lines.clear();
  (void)loader.modifyDueDateToAvoidWeekendsWithAmount(noon(2027, 3, 6), 1);
  EXPECT_THAT(desktop.log.lines, ElementsAre("weekend!", "nextDate: 2027-03-07 17:00:00 +0000 ...")) << "one step";
}

TEST_F(DueDates, TheWeekendIsSaturdayAndSundayEverywhere) {
  for (const char* locale : {"fa_IR", "ar_SA", "th_TH"}) {
    desktop.region.locale = locale;
    EXPECT_EQ(loader.modifyDueDateToAvoidWeekendsWithAmount(noon(2027, 3, 12), 1), std::nullopt) << locale;
    EXPECT_EQ(loader.modifyDueDateToAvoidWeekendsWithAmount(noon(2027, 3, 6), 1), noon(2027, 3, 8)) << locale;
  }
}

TEST_F(DueDates, LieInAMonthOfTheUsersOwnCalendar) {
  EXPECT_TRUE(loader.isDueDateInThisMonth(noon(2027, 3, 31), noon(2027, 3, 1)));
  EXPECT_FALSE(loader.isDueDateInThisMonth(noon(2028, 3, 10), noon(2027, 3, 10)));
  EXPECT_FALSE(loader.isDueDateInThisMonth(noon(2027, 4, 1), noon(2027, 3, 31)));
  // 03:00 UTC on the first is still the month before in New York.
  EXPECT_TRUE(loader.isDueDateInThisMonth(noon(2027, 4, 1) - std::chrono::hours{14}, noon(2027, 3, 10)));
  desktop.region.locale = "fa_IR@calendar=persian";  // the month Farvardin begins on 21 March
  EXPECT_FALSE(loader.isDueDateInThisMonth(noon(2027, 3, 25), noon(2027, 3, 10)));
  EXPECT_TRUE(loader.isDueDateInThisMonth(noon(2027, 3, 25), noon(2027, 4, 10)));
}

TEST_F(DueDates, CountsAndAmountsReadInWords) {
  const Array one{1}, three{1, 2, 3};
  EXPECT_EQ(loader.formattedTimesPaidWithPayments(nullptr), "Paid 0 times");
  EXPECT_EQ(loader.formattedTimesPaidWithPayments(&one), "Paid 1 time");
  EXPECT_EQ(loader.formattedTimesPaidWithPayments(&three), "Paid 3 times");
  const Value amount(1234.5);
  EXPECT_EQ(loader.currencyFormattedNumber(&amount) + " " + loader.numberFormattedNumber(&amount), "$1,234.50 1,234.5");
}

}  // namespace
}  // namespace tallyvane::testing
