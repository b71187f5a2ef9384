#include <gmock/gmock.h>

#include "support/CalendarHosts.h"
#include "support/CalendarStores.h"

namespace tallyvane::testing {
namespace {

TYPED_TEST(CalendarContract, CalendarsAreListedUnderTheTitlesThatTheyWereSavedWith) {
  EXPECT_THAT(this->store.calendars(), IsEmpty());
  const std::string longTitle(10'000, 'x');
  for (const std::string& title :
       {std::string("Bills"), std::string("Bills"), std::string("../Gas & Wasser\n光熱費 "), longTitle}) {
    const std::string identifier = this->calendar(title);
    std::vector<std::string> titles;
    for (const EventCalendar& calendar : this->store.calendars()) {
      if (calendar.identifier == identifier) titles.push_back(calendar.title);
    }
    EXPECT_THAT(titles, ElementsAre(title));
  }
  EXPECT_EQ(this->store.calendars().size(), 4U);
}

TYPED_TEST(CalendarContract, AnEventComesBackAsItWasSaved) {
  std::string manyLetters;
  for (int i = 0; i < 2'500; ++i) manyLetters += "aé光🏠";
  for (const std::string& title :
       {std::string("Pay Rent"), std::string("\t Pay \"Gas; water, \\n\" <&>:\n\tsecond line "),
        std::string("שכר דירה \u200Fإيجار"), manyLetters, std::string("\r\x01\x7F.")}) {
    const std::string calendar = this->calendar("Bills");
    CalendarEvent event = allDayEvent(calendar, title, winterDay(2027, 2, 1));
    this->save(event);
    const auto found = this->store.events(calendar, winterDay(2027, 1, 1), winterDay(2027, 3, 1));
    ASSERT_EQ(found.size(), 1U) << title;
    event.identifier = found[0].identifier;
    EXPECT_EQ(found[0], event) << title;
  }
}

TYPED_TEST(CalendarContract, EventsOfOneCalendarAreFoundByTheTimeThatTheyOverlapInTheirOrder) {
  const std::string mine = this->calendar("Mine");
  const std::string other = this->calendar("Other");
  for (unsigned day : {9U, 3U, 6U, 3U}) {
    this->save(allDayEvent(mine, "on " + std::to_string(day), winterDay(2027, 2, day)));
  }
  this->save(allDayEvent(other, "elsewhere", winterDay(2027, 2, 5)));
  EXPECT_THAT(this->titles(mine, winterDay(2027, 2, 3), winterDay(2027, 2, 6)), ElementsAre("on 3", "on 3", "on 6"));
  EXPECT_THAT(this->titles(other, distantPast, distantFuture), ElementsAre("elsewhere"));
  EXPECT_THAT(this->titles("none", distantPast, distantFuture), IsEmpty());
}

TYPED_TEST(CalendarContract, OnlyTheEventThatIsMeantIsRemoved) {
  const std::string calendar = this->calendar("Bills");
  for (int i = 0; i < 2; ++i) this->save(allDayEvent(calendar, "Pay Rent", winterDay(2027, 2, 1)));
  const auto both = this->store.events(calendar, distantPast, distantFuture);
  ASSERT_EQ(both.size(), 2U);
  EXPECT_TRUE(this->store.remove(both[0]));
  const auto left = this->store.events(calendar, distantPast, distantFuture);
  ASSERT_EQ(left.size(), 1U);
  EXPECT_EQ(left[0].identifier, both[1].identifier);
}

}  // namespace
}  // namespace tallyvane::testing
