#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "storage/QMBillsLoader.h"
#include "storage/QMUIDMaker.h"
#include "support/Bills.h"
#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

TEST(QMBill, WritesAllNineteenKeysInOrderUpToTheFirstMissingOne) {
  FakeDesktop desktop;
  billObject(desktop.platform, "A1", "Rent", daysFromToday(1)).writeBill(false);
  // As text, which shows the order as well.
  EXPECT_EQ(writePropertyList(fileOf(desktop, "A1.plist")), writePropertyList(bill("A1", "Rent", daysFromToday(1))));
  EXPECT_EQ(writePropertyList(indexOf(desktop)), writePropertyList(index({"A1"}, {}, {})));
  QMBill unfinished = billObject(desktop.platform, "A2", "Rent", daysFromToday(1));
  unfinished.icon.reset();
  unfinished.writeBill(false);
  EXPECT_THAT(keysOf(fileOf(desktop, "A2.plist")), ElementsAre("Name", "Bid")) << "ends at the first missing property";
}

TEST(QMBill, WritingLogsItsFixedLinesInOrder) {
  FakeDesktop desktop;
  desktop.defaults.content.set("iCloudSyncEnabled", true);
  billObject(desktop.platform, "A1", "Rent", daysFromToday(1)).writeBill(false);
  EXPECT_THAT(desktop.log.lines,
              ElementsAre("Wrote File = 1", "Speed1", "Creating Blank Index", "Speed4", "Speed4a", "Speed4b", "Speed4c",
                          "Speed5", "Speed6", "Added or Updated Bill to iCloud", "Speed7",
                          "Updated Active Bills to iCloud", "Speed8"));
  desktop.log.lines.clear();
  QMBill again = billObject(desktop.platform, "A1", "Rent", daysFromToday(1));
  again.remindMe = Value(true);
  again.writeBill(true);
  EXPECT_THAT(desktop.log.lines, ElementsAre("Wrote File = 1", "Speed1", "Speed2", "Speed3", "Speed4", "Speed4a",
                                             "Speed4b", "Speed4c", "Speed5", "Updating Reminder", "Speed6",
                                             "Added or Updated Bill to iCloud", "Speed7", "Speed8"));
}

TEST(QMBill, WritingEntersTheActiveListOnceLeavesTheArchiveAndStaysAmongTheDeleted) {
  const std::pair<Dictionary, Dictionary> cases[] = {
      {index({"B", "A1"}, {}, {"C"}), index({"B", "A1"}, {}, {"C"})},
      {index({"B"}, {}, {"A1", "C", "A1"}), index({"B", "A1"}, {}, {"C"})},
      {with(index({}, {"A1"}, {}), "Own key", 7), with(index({"A1"}, {"A1"}, {}), "Own key", 7)},
  };
  for (const auto& [before, after] : cases) {
    FakeDesktop desktop;
    putIndex(desktop, before);
    billObject(desktop.platform, "A1", "Rent", daysFromToday(1)).writeBill(false);
    EXPECT_EQ(indexOf(desktop), after);
  }
}

TEST(QMBill, RewritingStripsTheFiveDisplayKeysOnlyAndTouchesOneFile) {
  FakeDesktop desktop;
  putActiveBills(desktop, {bill("A1", "Rent", daysFromToday(1))});
  Dictionary row = QMBillsLoader{desktop.platform}.loadBills().at(0);
  desktop.files.saved.clear();
  row.set("Amount", 250.5);
  QMBill{desktop.platform}.rewriteSpecificBill(row);
  EXPECT_EQ(fileOf(desktop, "A1.plist"),
            with(with(bill("A1", "Rent", daysFromToday(1)), "Amount", 250.5), "DateWasModified", false));
  EXPECT_THAT(desktop.files.saved, ElementsAre(inDataFolder("A1.plist")));
  EXPECT_TRUE(desktop.cloud.content.empty());
}

TEST(QMBill, SavingKeysWritesTheDisplayKeysBack) {
  FakeDesktop desktop;
  putActiveBills(desktop, {bill("A1", "Rent", daysFromToday(1))});
  QMBill{desktop.platform}.saveSpecificKeyWithValueForBill("Amount", 7.5, "A1");
  const Dictionary written = fileOf(desktop, "A1.plist");
  EXPECT_THAT(keysOf(written),
              IsSupersetOf({"HumanRepeat", "HumanDueDate", "SortableDueDate", "DueIcon", "DueString"}));
  EXPECT_EQ(written.valueOr("Amount", 0.0), 7.5);
  // A key given twice takes its first value; a bill without a file holds the given keys alone.
  QMBill{desktop.platform}.saveSpecificKeysWithValuesForBill({"Notes", "Amount", "Notes"}, {"first", 1, "second"},
                                                             "B2");
  EXPECT_EQ(fileOf(desktop, "B2.plist"), (Dictionary{{"Notes", "first"}, {"Amount", 1}}));
}

TEST(QMBill, SavingADueDateRemindsOnlyWhenTheObjectWantsReminders) {
  for (const bool wants : {false, true}) {
    FakeDesktop desktop;
    desktop.defaults.content.set("QMEnableNotificationCenter", true);
    putActiveBills(desktop, {with(bill("A1", "Rent", daysFromToday(1)), "RemindMe", !wants)});
    QMBill object{desktop.platform};
    object.remindMe = Value(wants);
    object.saveSpecificKeysWithValuesForBill({"DueDate", "Name"}, {daysFromToday(20), "Flat"}, "A1");
    ASSERT_EQ(desktop.notifications.scheduledList.size(), wants ? 1U : 0U);
    if (wants) {
      EXPECT_EQ(desktop.notifications.scheduledList[0].title, "Pay Rent") << "the name is set after the date";
    }
  }
}

TEST(QMBill, MovesBetweenTheListsOfTheIndex) {
  const auto del = &QMBill::deleteBillWithBid;
  const auto archive = &QMBill::archiveBillWithBid;
  const auto restore = &QMBill::restoreBillWithBid;
  struct Case {
    void (QMBill::*operation)(const std::string&);
    Dictionary before, after;
  };
  const Case cases[] = {
      {del, index({"A", "B", "A"}, {"C"}, {}), index({"B"}, {"C", "A"}, {})},
      {del, index({"B"}, {}, {"A"}), index({"B"}, {"A"}, {})},
      {archive, index({"A", "B"}, {"C"}, {}), index({"B"}, {"C"}, {"A"})},
      {archive, index({"B"}, {}, {"A"}), index({"B"}, {}, {"A", "A"})},
      {restore, index({"B"}, {"C"}, {"A"}), index({"B", "A"}, {"C"}, {})},
      {restore, index({}, {"A"}, {"D"}), index({"A"}, {"A"}, {"D"})},
      {archive, {{"DeletedBills", Array{"C"}}}, {}},  // no list to take it from
      {archive, {{"ActiveBills", Array{"A"}}}, index({}, {}, {"A"})},
  };
  for (const Case& c : cases) {
    FakeDesktop desktop;
    putIndex(desktop, c.before);
    QMBill object{desktop.platform};
    (object.*c.operation)("A");
    EXPECT_EQ(indexOf(desktop), c.after) << "from " << ::testing::PrintToString(c.before);
  }
}

TEST(QMBill, AMoveWritesItsListsInTheOrderFromToOther) {
  FakeDesktop desktop;
  putActiveBills(desktop, {bill("A", "Rent", daysFromToday(1))});
  QMBill{desktop.platform}.archiveBillWithBid("A");
  EXPECT_THAT(keysOf(indexOf(desktop)), ElementsAre("ActiveBills", "ArchivedBills", "DeletedBills"));
  QMBill{desktop.platform}.deleteBillWithBid("A");
  EXPECT_THAT(keysOf(indexOf(desktop)), ElementsAre("ArchivedBills", "DeletedBills", "ActiveBills"));
}

TEST(QMBill, AnIndexInWhichAListIsNoneIsLeftAsItIsAndNamed) {
  for (const char* odd : {"ActiveBills", "ArchivedBills", "DeletedBills"}) {
    const Dictionary lists = with(index({"A"}, {"A"}, {"A"}), odd, "A");
    FakeDesktop desktop;
    desktop.defaults.content.set("iCloudSyncEnabled", true);
    putIndex(desktop, lists);
    QMBill{desktop.platform}.archiveBillWithBid("A");
    QMBill{desktop.platform}.restoreBillWithBid("A");
    billObject(desktop.platform, "A", "Rent", daysFromToday(1)).writeBill(false);
    (void)QMBillsLoader{desktop.platform}.getListOfBills(odd);
    EXPECT_EQ(indexOf(desktop), lists) << odd;
    EXPECT_EQ(desktop.cloud.object("activebills"), std::nullopt);
    EXPECT_THAT(desktop.log.diagnostics, AllOf(SizeIs(4), Each(AllOf(HasSubstr("billindex.plist"), HasSubstr(odd)))));
  }
}

TEST(QMBill, MirrorsWhatItWroteAndMovedAndNothingWhileTheUserDoesNotSync) {
  for (const bool syncs : {true, false}) {
    FakeDesktop desktop;
    desktop.defaults.content.set("iCloudSyncEnabled", syncs);
    const auto mirrored = [&](const char* key) { return desktop.cloud.object(key).value_or("nothing"); };
    const auto expected = [&](const Value& value) { return syncs ? value : Value("nothing"); };
    QMBill rent = billObject(desktop.platform, "A1", "Rent", daysFromToday(1));
    rent.writeBill(false);
    EXPECT_EQ(mirrored("A1"), expected(bill("A1", "Rent", daysFromToday(1))));
    EXPECT_EQ(mirrored("activebills"), expected(Array{"A1"}));
    EXPECT_EQ(mirrored("tagindex"), expected(Array{"Home"}));
    rent.saveSpecificKeyWithValueForBill("Amount", 9.5, "A1");
    EXPECT_EQ(mirrored("A1"), expected(fileOf(desktop, "A1.plist")));
    rent.rewriteSpecificBillWithoutUpdatingiCloud(bill("A1", "Flat", daysFromToday(1)));
    EXPECT_NE(mirrored("A1"), Value(bill("A1", "Flat", daysFromToday(1))));
    rent.rewriteSpecificBill(bill("A1", "Flat", daysFromToday(1)));
    EXPECT_EQ(mirrored("A1"), expected(bill("A1", "Flat", daysFromToday(1))));
    rent.archiveBillWithBid("A1");
    EXPECT_EQ(mirrored("archivedbills"), expected(Array{"A1"}));
    rent.restoreBillWithBid("A1");
    EXPECT_EQ(mirrored("archivedbills"), expected(Array{"A1"})) << "restoring mirrors nothing";
    rent.deleteBillWithBid("A1");
    EXPECT_EQ(mirrored("deletedbills"), expected(Array{"A1"}));
    EXPECT_EQ(desktop.cloud.content.empty(), !syncs);
  }
}

TEST(QMBill, GoesOnAfterAnyFailedWrite) {
  for (int failing = 1; failing <= 3; ++failing) {
    FakeDesktop desktop;
    desktop.defaults.content.set("iCloudSyncEnabled", true);
    FailingFileStore files{desktop.files, failing};
    const Platform platform = desktop.over(files);
    billObject(platform, "A1", "Rent", daysFromToday(1)).writeBill(false);
    EXPECT_EQ(files.calls(), 3);
    EXPECT_EQ(desktop.files.saved.size(), 2U);
    EXPECT_EQ(desktop.log.lines.front(), failing == 1 ? "Wrote File = 0" : "Wrote File = 1");
    EXPECT_EQ(desktop.log.lines.back(), "Speed8");
    EXPECT_TRUE(desktop.cloud.object("A1"));
  }
}

TEST(QMBill, EveryOperationLeavesTheRemindersThatItShould) {
  FakeDesktop desktop;
  for (const char* wanted : {"QMEnableNotificationCenter", "QMReminderEvents"})
    desktop.defaults.content.set(wanted, true);
  desktop.defaults.content.set("QMCalendarList", Array{"Bills"});
  const auto placed = [&] {
    return std::vector{desktop.calendars.eventList.size(), desktop.notifications.scheduledList.size()};
  };
  const Dictionary reminding = with(bill("A1", "Rent", daysFromToday(5)), "RemindMe", true);
  QMBill object = billObject(desktop.platform, "A1", "Rent", daysFromToday(5));
  object.remindMe = Value(true);
  for (int twice = 0; twice < 2; ++twice) {
    object.writeBill(false);
    EXPECT_THAT(placed(), ElementsAre(1, 1));
    object.rewriteSpecificBillWithoutUpdatingiCloud(reminding);
    EXPECT_THAT(placed(), ElementsAre(1, 1));
  }
  object.archiveBillWithBid("A1");
  EXPECT_THAT(placed(), ElementsAre(0, 0));
  object.restoreBillWithBid("A1");
  EXPECT_THAT(placed(), ElementsAre(0, 0)) << "restoring makes none";
  object.rewriteSpecificBill(reminding);
  object.saveSpecificKeyWithValueForBill("DueDate", daysFromToday(6), "A1");
  EXPECT_THAT(placed(), ElementsAre(2, 2)) << "saving one key leaves the earlier ones";
  object.deleteBillWithBid("A1");
  EXPECT_THAT(placed(), ElementsAre(0, 0));
  object.rewriteSpecificBill(reminding);
  object.rewriteSpecificBill(with(reminding, "RemindMe", false));
  EXPECT_THAT(placed(), ElementsAre(0, 0));
}

TEST(QMBill, DeletingAnUnknownBillWritesNothingButMirrorsTheDeletedList) {
  FakeDesktop desktop;
  desktop.defaults.content.set("iCloudSyncEnabled", true);
  putIndex(desktop, index({"B"}, {"C"}, {}));
  QMBill{desktop.platform}.deleteBillWithBid("A");
  EXPECT_TRUE(desktop.files.saved.empty());
  EXPECT_EQ(desktop.cloud.object("deletedbills"), Value(Array{"C"}));
}

TEST(QMBill, EmptyingTheIndexWritesThreeEmptyListsAndKeepsTheFiles) {
  FakeDesktop desktop;
  putActiveBills(desktop, {bill("A1", "Rent", daysFromToday(1))});
  QMBill{desktop.platform}.deleteAllBills();
  EXPECT_EQ(indexOf(desktop), index({}, {}, {}));
  EXPECT_TRUE(desktop.files.exists(inDataFolder("A1.plist")));
}

TEST(QMBill, OverwritingTheIndexMirrorsTheOneListThatIsNamed) {
  const Dictionary lists = index({"activebills"}, {"deletedbills"}, {"archivedbills"});
  const std::pair<std::string, std::string> cases[] = {
      {"activebills", "active"}, {"deletedbills", "deleted"}, {"archivedbills", "archived"}, {"tagindex", ""}};
  for (const auto& [cloudKey, word] : cases) {
    FakeDesktop desktop;
    desktop.defaults.content.set("iCloudSyncEnabled", true);
    (void)QMBillsLoader{desktop.platform}.tallyvaneDirectory();
    QMBill{desktop.platform}.overWriteIndexFileWithDictionaryUpdatingKey(lists, cloudKey);
    EXPECT_EQ(indexOf(desktop), lists);
    EXPECT_EQ(desktop.cloud.content.size(), word.empty() ? 0U : 1U);
    if (word.empty()) continue;
    EXPECT_EQ(desktop.cloud.object(cloudKey), Value(Array{cloudKey}));
    EXPECT_EQ(desktop.log.lines.back(), "iCloud: Uploading " + word + " bills back to icloud");
  }
}

TEST(QMBill, LoadsOneBillWithDisplayKeysAndItsStoredDate) {
  FakeDesktop desktop;
  putActiveBills(desktop, {bill("A1", "Rent", noon(2027, 3, 13))});  // a Saturday
  const auto row = QMBillsLoader{desktop.platform}.loadBillWithID("A1");
  ASSERT_TRUE(row);
  EXPECT_EQ(row->valueOr("DueDate", distantPast), noon(2027, 3, 13));
  EXPECT_EQ(row->valueOr("HumanDueDate", std::string()), "Due in 3 days");
  EXPECT_EQ(row->size(), 19U + 5U);
  EXPECT_EQ(QMBillsLoader{desktop.platform}.loadBillWithID("B2"), std::nullopt);
}

TEST(QMBill, CorrectsPaymentAddressesAndNamesOlderIcons) {
  FakeDesktop desktop;
  const QMBill object{desktop.platform};
  const std::pair<std::optional<std::string>, std::optional<std::string>> addresses[] = {
      {std::nullopt, std::nullopt},
      {"", ""},
      {"pay/bills", "http://pay/bills"},
      {"HTTPS://x", "HTTPS://x"},
      {"see Http pages", "see Http pages"}};
  for (const auto& [given, corrected] : addresses) EXPECT_EQ(object.getCorrectedPaymentURL(given), corrected);
  EXPECT_EQ(object.getIconFromInteger(0), "bill_home.png");
  EXPECT_EQ(object.getIconFromInteger(11.9), "bill_internet.png");
  EXPECT_EQ(object.getIconFromInteger(12), std::nullopt);
  EXPECT_EQ(object.getIconFromInteger(-1), std::nullopt);
}

TEST(QMUIDMaker, MakesDistinctRandomUuidsWithoutDashes) {
  FakeRandom random;
  QMUIDMaker maker{random};
  const std::string uid = maker.makeUID();
  EXPECT_THAT(uid, MatchesRegex("[0-9A-F]{12}4[0-9A-F]{3}[89AB][0-9A-F]{15}"));
  EXPECT_NE(uid, maker.makeUID());
}

}  // namespace
}  // namespace tallyvane::testing
