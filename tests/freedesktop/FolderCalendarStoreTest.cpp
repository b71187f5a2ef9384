#include "freedesktop/FolderCalendarStore.h"

#include <gmock/gmock.h>

#include "foundation/Texts.h"
#include "support/CalendarFolder.h"
#include "support/CalendarStores.h"

namespace tallyvane::testing {
namespace {

TEST_F(FolderCalendarStoreTest, WritesWhatOtherCalendarProgramsExpect) {
  ASSERT_TRUE(store.save(allDayEvent(calendar, "Pay Gas, \"Wasser\"", winterDay(2027, 2, 1))));
  const std::string uid = eventFiles()[0].substr(0, eventFiles()[0].find('.'));
  EXPECT_EQ(onlyText(),
            "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tallyvane//Tallyvane//EN\r\nBEGIN:VEVENT\r\nUID:" + uid +
                "\r\nDTSTAMP:20270310T170000Z\r\nDTSTART;VALUE=DATE:20270201\r\n"
                "DTEND;VALUE=DATE:20270202\r\nSUMMARY:Pay Gas\\, \"Wasser\"\r\nTRANSP:TRANSPARENT\r\n"
                "BEGIN:VALARM\r\nACTION:DISPLAY\r\nTRIGGER;VALUE=DATE-TIME:20270131T140000Z\r\n"
                "DESCRIPTION:Pay Gas\\, \"Wasser\"\r\nX-TALLYVANE-SOUND:Submarine\r\nEND:VALARM\r\n"
                "END:VEVENT\r\nEND:VCALENDAR\r\n");
  EXPECT_EQ(contentOf(path("displayname")), "Bills");
}

TEST_F(FolderCalendarStoreTest, FoldsLongLinesBetweenCharacters) {
  std::string title;
  for (int i = 0; i < 2'500; ++i) title += "é光🏠;";
  ASSERT_TRUE(store.save(allDayEvent(calendar, title, winterDay(2027, 2, 1))));
  const std::string written = onlyText();
  for (std::size_t at = 0, end; (end = written.find("\r\n", at)) != std::string::npos; at = end + 2) {
    EXPECT_LE(end - at, 75U);
    EXPECT_TRUE(isValidUtf8(written.substr(at, end - at)));
  }
}

TEST_F(FolderCalendarStoreTest, TheSameEventSavedAgainIsTheSameFileAndNoFileIsReplaced) {
  const CalendarEvent rent = allDayEvent(calendar, "Pay Rent", winterDay(2027, 2, 1));
  ASSERT_TRUE(store.save(rent));
  const auto first = eventFiles();
  const std::string written = onlyText();
  ASSERT_TRUE(store.remove(found()[0]));
  EXPECT_THAT(eventFiles(), IsEmpty());
  ASSERT_TRUE(store.save(rent));
  EXPECT_EQ(eventFiles(), first);
  EXPECT_EQ(onlyText(), written);
  put(path(first[0]), "what somebody made of it");
  ASSERT_TRUE(store.save(rent));
  EXPECT_THAT(eventFiles(), SizeIs(2));
  EXPECT_EQ(contentOf(path(first[0])), "what somebody made of it");
}

TEST_F(FolderCalendarStoreTest, FindsEventsThatOtherProgramsMovedOrWrote) {
  using std::chrono::hours;
  const Date fifth = winterDay(2027, 2, 5);
  const struct {
    const char* times;
    Date start, end;
    bool allDay;
  } cases[] = {
      {"DTSTART;VALUE=DATE:20270205\r\n", fifth, fifth, true},
      {"DTSTART;VALUE=DATE:20270205\r\nDTEND;VALUE=DATE:20270208\r\n", fifth, winterDay(2027, 2, 7), true},
      {"DTSTART:20270205T120000Z\r\nDURATION:PT1H\r\n", fifth + hours{7}, fifth + hours{8}, false},
      {"DTSTART:20270205T120000\r\n", fifth + hours{12}, fifth + hours{12}, false},
      {"DTSTART;TZID=Europe/Berlin:20270205T120000\r\n", fifth + hours{6}, fifth + hours{6}, false},
  };
  for (const auto& c : cases) {
    put(path("moved.ics"), text(vevent(c.times)));
    const CalendarEvent moved{"moved.ics/0", calendar, "Pay Rent", c.start, c.end, c.allDay, {}};
    EXPECT_THAT(found(), ElementsAre(moved)) << c.times;
  }
}

TEST_F(FolderCalendarStoreTest, OfASeriesOnlyTheOneRepetitionGoesAndAllElseStaysByteByByte) {
  const std::string zone =
      "BEGIN:VTIMEZONE\r\nTZID:Z\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:+0100\r\n"
      "TZOFFSETTO:+0100\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n";
  const struct {
    const char* name;
    std::string zone, times, standIn, exception;
    std::size_t repetitions;
  } cases[] = {
      {"days", "", "DTSTART;VALUE=DATE:20270104\r\nRRULE:FREQ=WEEKLY;COUNT=4\r\n", "", "EXDATE;VALUE=DATE:20270111\r\n",
       4},
      {"times in a zone, added dates", zone, "DTSTART;\r\n TZID=Z:20270104T090000\r\nRDATE;TZID=Z:20270111T090000\r\n",
       "", "EXDATE;TZID=Z:20270111T090000\r\n", 2},
      {"one that stands in for a repetition", "", "DTSTART:20270104T090000Z\r\nRRULE:FREQ=DAILY;INTERVAL=9;COUNT=3\r\n",
       vevent("DTSTART:20270110T090000Z\r\nRECURRENCE-ID:20270113T090000Z\r\n"), "EXDATE:20270113T090000Z\r\n", 3},
  };
  for (const auto& c : cases) {
    put(path("series.ics"), text(c.zone + vevent(c.times) + c.standIn));
    ASSERT_THAT(found(), SizeIs(c.repetitions)) << c.name;
    ASSERT_TRUE(store.remove(found()[1])) << c.name;
    EXPECT_EQ(contentOf(path("series.ics")), text(c.zone + vevent(c.times, c.exception))) << c.name;
    EXPECT_THAT(found(), SizeIs(c.repetitions - 1)) << c.name;
  }
}

TEST_F(FolderCalendarStoreTest, ASeriesWithoutMeasureTakesNoMeasurelessTime) {
  for (const char* rule : {"FREQ=SECONDLY", "FREQ=DAILY;BYHOUR=1,2,3;BYMINUTE=1,2,3;BYSECOND=1,2,3"}) {
    put(path("endless.ics"), text(vevent("DTSTART:00010101T000000Z\r\nRRULE:" + std::string(rule) + "\r\n")));
    EXPECT_THAT(found(), IsEmpty()) << rule;
  }
}

TEST_F(FolderCalendarStoreTest, ForeignAndBrokenFilesStayAndAreSaidOnce) {
  ASSERT_TRUE(store.save(allDayEvent(calendar, "Pay Rent", winterDay(2027, 2, 1))));
  const std::vector<std::pair<std::string, std::string>> foreign{
      {"rubbish.ics", "rubbish"},
      {"empty.ics", ""},
      {"card.ics", "BEGIN:VCARD\r\nFN:Pay Rent\r\nEND:VCARD\r\n"},
      {"task.ics", text("BEGIN:VTODO\r\nUID:t\r\nSUMMARY:Pay Rent\r\nDUE;VALUE=DATE:20270201\r\nEND:VTODO\r\n")},
      {"timeless.ics", text(vevent(""))},
      {"cut.ics", "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nSUMMARY:Pay"},
      {"color", "#ff0000"}};
  for (const auto& [name, bytes] : foreign) put(path(name), bytes);
  for (int i = 0; i < 3; ++i) ASSERT_THAT(found(), SizeIs(1));
  EXPECT_THAT(log.diagnostics, SizeIs(4));
  EXPECT_THAT(log.diagnostics, Each(StartsWith("Not a calendar file, left as it is: ")));
  ASSERT_TRUE(store.remove(found()[0]));
  for (const auto& [name, bytes] : foreign) EXPECT_EQ(contentOf(path(name)), bytes) << name;
}

TEST_F(FolderCalendarStoreTest, AFailedChangeIsAnErrorAndLosesNothing) {
  ASSERT_TRUE(store.save(allDayEvent(calendar, "Pay Rent", winterDay(2027, 2, 1))));
  const std::string before = onlyText();
  FailingFileStore failing(files, 1);
  FolderCalendarStore broken = over(failing);
  EXPECT_THAT(broken.save(allDayEvent(calendar, "Pay Gas", winterDay(2027, 2, 1))).error(), HasSubstr("No space"));
  FailingFileStore alsoFailing(files, 1);
  EXPECT_THAT(over(alsoFailing).remove(found()[0]).error(), HasSubstr(".ics: "));
  EXPECT_EQ(onlyText(), before);
  FailingFileStore untitled(files, 1);
  EXPECT_FALSE(over(untitled).save(EventCalendar{"", "More", root}));
  EXPECT_THAT(store.calendars(), SizeIs(1));
  EXPECT_FALSE(store.save(allDayEvent("none", "Pay Gas", winterDay(2027, 2, 1))));
  EXPECT_FALSE(store.save(allDayEvent(calendar, "Pay Gas", distantPast - std::chrono::days{400})));
  EXPECT_THAT(eventFiles(), SizeIs(1));
}

TEST_F(FolderCalendarStoreTest, ARootThatIsNoFolderIsAnErrorOfTheListOfCalendars) {
  put(folder.path + "/file", "");
  root = folder.path + "/file";
  EXPECT_THROW((void)store.calendars(), CalendarStoreError);
  EXPECT_FALSE(store.save(EventCalendar{"", "Bills", root}));
}

}  // namespace
}  // namespace tallyvane::testing
