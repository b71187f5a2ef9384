// The calendar stores of the contract.
#pragma once

#include <gmock/gmock.h>

#include "support/CalendarStores.h"
#include "support/Matchers.h"

namespace tallyvane::testing {

template <typename Subject>
class CalendarContract : public ::testing::Test {
 protected:
  std::string calendar(const std::string& title) {
    const auto saved = store.save(EventCalendar{"", title, store.sources().back().identifier});
    EXPECT_TRUE(saved) << saved.error();
    return saved ? saved->identifier : "";
  }
  void save(const CalendarEvent& event) {
    const Result<> saved = store.save(event);
    EXPECT_TRUE(saved) << saved.error();
  }
  std::vector<std::string> titles(const std::string& in, Date from, Date to) {
    std::vector<std::string> found;
    for (const CalendarEvent& event : store.events(in, from, to)) found.push_back(event.title);
    return found;
  }
  Subject subject;
  CalendarStore& store = subject.store;
};
using Subjects = ::testing::Types<CalendarsInMemory, CalendarsInAFolder>;
TYPED_TEST_SUITE(CalendarContract, Subjects);

}  // namespace tallyvane::testing
