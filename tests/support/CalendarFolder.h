// A folder of calendars on disk.
#pragma once

#include "freedesktop/FolderCalendarStore.h"

#include <gmock/gmock.h>

#include "foundation/Texts.h"
#include "support/CalendarStores.h"
#include "support/Matchers.h"

namespace tallyvane::testing {

class FolderCalendarStoreTest : public ::testing::Test, public CalendarsInAFolder {
 protected:
  void SetUp() override {
    const auto saved = store.save(EventCalendar{"", "Bills", root});
    ASSERT_TRUE(saved) << saved.error();
    calendar = saved->identifier;
  }
  [[nodiscard]] std::string path(const std::string& file) const { return root + "/" + calendar + "/" + file; }
  std::vector<std::string> eventFiles() {
    auto names = *files.list(root + "/" + calendar);
    std::erase(names, "displayname");
    return names;
  }
  std::string onlyText() { return eventFiles().size() == 1 ? contentOf(path(eventFiles()[0])) : "not one file"; }
  std::vector<CalendarEvent> found() { return store.events(calendar, winterDay(2027, 1, 1), winterDay(2027, 3, 1)); }
  static std::string text(const std::string& lines) {
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:x\r\n" + lines + "END:VCALENDAR\r\n";
  }
  /// An event of another program; `behind` are the lines behind its title.
  static std::string vevent(const std::string& lines, const std::string& behind = "") {
    return "BEGIN:VEVENT\r\nUID:u\r\nX-FOREIGN;P=1: kept  as it is\r\n" + lines + "SUMMARY:Pay Rent\r\n" + behind +
           "END:VEVENT\r\n";
  }

  std::string calendar;
};

}  // namespace tallyvane::testing
