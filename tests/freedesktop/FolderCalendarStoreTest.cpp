#include "freedesktop/FolderCalendarStore.h"

#include <gmock/gmock.h>

#include "foundation/Texts.h"
#include "support/CalendarFolder.h"
#include "support/CalendarStores.h"
#include "support/SmallDisk.h"

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
  const struct {
    const char* times;
    Date start, end;
    bool allDay;
  } cases[] = {
      {"DTSTART;VALUE=DATE:20270205\r\n", winterDay(2027, 2, 5), winterDay(2027, 2, 5), true},
      {"DTSTART;VALUE=DATE:20270205\r\nDTEND;VALUE=DATE:20270208\r\n", winterDay(2027, 2, 5), winterDay(2027, 2, 7),
       true},
      {"DTSTART:20270205T120000Z\r\nDURATION:PT1H\r\n", winterDay(2027, 2, 5) + std::chrono::hours{7},
       winterDay(2027, 2, 5) + std::chrono::hours{8}, false},
      {"DTSTART:20270205T120000\r\n", winterDay(2027, 2, 5) + std::chrono::hours{12},
       winterDay(2027, 2, 5) + std::chrono::hours{12}, false},
      {"DTSTART;TZID=Europe/Berlin:20270205T120000\r\n", winterDay(2027, 2, 5) + std::chrono::hours{6},
       winterDay(2027, 2, 5) + std::chrono::hours{6}, false},
  };
  for (const auto& c : cases) {
    put(path("moved.ics"), text(vevent(c.times)));
    ASSERT_THAT(found(), SizeIs(1)) << c.times;
    EXPECT_EQ(found()[0].title, "Pay Rent");
    EXPECT_EQ(found()[0].start, c.start) << c.times;
    EXPECT_EQ(found()[0].end, c.end) << c.times;
    EXPECT_EQ(found()[0].allDay, c.allDay) << c.times;
  }
}

TEST_F(FolderCalendarStoreTest, OfASeriesOnlyTheOneRepetitionGoesAndAllElseStaysByteByByte) {
  const std::string zone =
      "BEGIN:VTIMEZONE\r\nTZID:Z\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:+0100\r\n"
      "TZOFFSETTO:+0100\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n";
  const struct {
    const char* name;
    std::string before, after;
    std::size_t repetitions;
  } cases[] = {
      {"days", text(vevent("DTSTART;VALUE=DATE:20270104\r\nRRULE:FREQ=WEEKLY;COUNT=4\r\n")),
       text("BEGIN:VEVENT\r\nUID:u\r\nX-FOREIGN;P=1: kept  as it is\r\nDTSTART;VALUE=DATE:20270104\r\n"
            "RRULE:FREQ=WEEKLY;COUNT=4\r\nSUMMARY:Pay Rent\r\nEXDATE;VALUE=DATE:20270111\r\nEND:VEVENT\r\n"),
       4},
      {"times in a zone, added dates",
       text(zone + vevent("DTSTART;\r\n TZID=Z:20270104T090000\r\nRDATE;TZID=Z:20270111T090000\r\n")),
       text(zone +
            "BEGIN:VEVENT\r\nUID:u\r\nX-FOREIGN;P=1: kept  as it is\r\nDTSTART;\r\n TZID=Z:20270104T090000\r\n"
            "RDATE;TZID=Z:20270111T090000\r\nSUMMARY:Pay Rent\r\nEXDATE;TZID=Z:20270111T090000\r\nEND:VEVENT\r\n"),
       2},
      {"one that stands in for a repetition",
       text(vevent("DTSTART:20270104T090000Z\r\nRRULE:FREQ=DAILY;INTERVAL=9;COUNT=3\r\n") +
            vevent("DTSTART:20270110T090000Z\r\nRECURRENCE-ID:20270113T090000Z\r\n")),
       text("BEGIN:VEVENT\r\nUID:u\r\nX-FOREIGN;P=1: kept  as it is\r\nDTSTART:20270104T090000Z\r\n"
            "RRULE:FREQ=DAILY;INTERVAL=9;COUNT=3\r\nSUMMARY:Pay Rent\r\nEXDATE:20270113T090000Z\r\nEND:VEVENT\r\n"),
       3},
  };
  for (const auto& c : cases) {
    put(path("series.ics"), c.before);
    ASSERT_THAT(found(), SizeIs(c.repetitions)) << c.name;
    ASSERT_TRUE(store.remove(found()[1])) << c.name;
    EXPECT_EQ(contentOf(path("series.ics")), c.after) << c.name;
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

TEST_F(FolderCalendarStoreTest, OnAReadOnlyDiskEveryChangeFailsAndTheEventsStay) {
  const SmallDisk disk;
  if (!disk.mounted) GTEST_SKIP() << "no file system may be mounted here";
  root = disk.path;
  calendar = store.save(EventCalendar{"", "Bills", root})->identifier;
  ASSERT_TRUE(store.save(allDayEvent(calendar, "Pay Rent", winterDay(2027, 2, 1))));
  ASSERT_TRUE(disk.makeReadOnly());
  EXPECT_THAT(store.remove(found()[0]).error(), HasSubstr("Read-only"));
  EXPECT_THAT(store.save(allDayEvent(calendar, "Pay Gas", winterDay(2027, 2, 1))).error(), HasSubstr("Read-only"));
  EXPECT_FALSE(store.save(EventCalendar{"", "More", root}));
  EXPECT_THAT(found(), SizeIs(1));
}

TEST_F(FolderCalendarStoreTest, ARootThatIsNoFolderIsAnErrorOfTheListOfCalendars) {
  put(folder.path + "/file", "");
  root = folder.path + "/file";
  EXPECT_THROW((void)store.calendars(), CalendarStoreError);
  EXPECT_FALSE(store.save(EventCalendar{"", "Bills", root}));
}

}  // namespace
}  // namespace tallyvane::testing
