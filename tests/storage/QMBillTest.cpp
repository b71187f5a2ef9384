#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "storage/QMBillsLoader.h"
#include "storage/QMUIDMaker.h"
#include "support/Bills.h"

namespace tallyvane::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsSupersetOf;
using ::testing::MatchesRegex;

const std::vector<std::string> allKeys = {"Name",        "Bid",          "Icon",      "DueDate",  "Repeat",
                                          "Average",     "LastPayment",  "TotalPaid", "RemindMe", "PaySite",
                                          "PaymentList", "ReminderDays", "Balance",   "Interest", "Notes",
                                          "Tags",        "Amount",       "PayType",   "Rev"};

Dictionary fileOf(FakeDesktop& desktop, const std::string& name) {
  const Value root = desktop.files.plist(inDataFolder(name));
  return root.is<Dictionary>() ? *root.get<Dictionary>() : Dictionary();
}

void putIndex(FakeDesktop& desktop, const Dictionary& index) {
  desktop.files.putPlist(inDataFolder("billindex.plist"), index);
}

TEST(QMBill, WritesAllNineteenKeysInOrderAndEntersANewIndex) {
  FakeDesktop desktop;
  billObject(desktop.platform, "A1", "Rent", daysFromToday(1)).writeBill(false);
  EXPECT_EQ(keysOf(fileOf(desktop, "A1.plist")), allKeys);
  EXPECT_EQ(fileOf(desktop, "A1.plist"), bill("A1", "Rent", daysFromToday(1)));
  const Dictionary index = fileOf(desktop, "billindex.plist");
  EXPECT_EQ(index, (Dictionary{{"ActiveBills", Array{"A1"}}, {"DeletedBills", Array()}, {"ArchivedBills", Array()}}));
  EXPECT_EQ(keysOf(index), (std::vector<std::string>{"ActiveBills", "DeletedBills", "ArchivedBills"}));
  EXPECT_EQ(desktop.files.plist(inDataFolder("tagindex.plist")), Value(Array{"Home"}));
}

TEST(QMBill, TheFileEndsAtTheFirstMissingProperty) {
  FakeDesktop desktop;
  QMBill short_ = billObject(desktop.platform, "A1", "Rent", daysFromToday(1));
  short_.icon.reset();
  short_.writeBill(false);
  EXPECT_EQ(keysOf(fileOf(desktop, "A1.plist")), (std::vector<std::string>{"Name", "Bid"}));
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
  struct Case {
    const char* what;
    Dictionary before;
    Dictionary after;
  };
  const Case cases[] = {
      {"active already",
       {{"ActiveBills", Array{"B", "A1"}}, {"DeletedBills", Array()}, {"ArchivedBills", Array{"C"}}},
       {{"ActiveBills", Array{"B", "A1"}}, {"DeletedBills", Array()}, {"ArchivedBills", Array{"C"}}}},
      {"archived twice",
       {{"ActiveBills", Array{"B"}}, {"DeletedBills", Array()}, {"ArchivedBills", Array{"A1", "C", "A1"}}},
       {{"ActiveBills", Array{"B", "A1"}}, {"DeletedBills", Array()}, {"ArchivedBills", Array{"C"}}}},
      {"deleted, and an unknown key",
       {{"ActiveBills", Array()}, {"DeletedBills", Array{"A1"}}, {"ArchivedBills", Array()}, {"Own", 7}},
       {{"ActiveBills", Array{"A1"}}, {"DeletedBills", Array{"A1"}}, {"ArchivedBills", Array()}, {"Own", 7}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    FakeDesktop desktop;
    putIndex(desktop, c.before);
    billObject(desktop.platform, "A1", "Rent", daysFromToday(1)).writeBill(false);
    EXPECT_EQ(fileOf(desktop, "billindex.plist"), c.after);
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

TEST(QMBill, OnlyTheRewriteForTheCloudMirrors) {
  FakeDesktop desktop;
  desktop.defaults.content.set("iCloudSyncEnabled", true);
  const Dictionary rent = bill("A1", "Rent", daysFromToday(1));
  QMBill{desktop.platform}.rewriteSpecificBillWithoutUpdatingiCloud(rent);
  EXPECT_TRUE(desktop.cloud.content.empty());
  QMBill{desktop.platform}.rewriteSpecificBill(with(rent, "HumanRepeat", "Every month"));
  EXPECT_EQ(desktop.cloud.object("A1"), Value(rent));
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
  const auto bills = [](Array active, Array deleted, Array archived) {
    return Dictionary{{"ActiveBills", active}, {"DeletedBills", deleted}, {"ArchivedBills", archived}};
  };
  struct Case {
    const char* what;
    void (QMBill::*operation)(const std::string&);
    Dictionary before;
    Dictionary after;
  };
  const Case cases[] = {
      {"delete active", &QMBill::deleteBillWithBid, bills({"A", "B", "A"}, {"C"}, {}), bills({"B"}, {"C", "A"}, {})},
      {"delete archived", &QMBill::deleteBillWithBid, bills({"B"}, {}, {"A"}), bills({"B"}, {"A"}, {})},
      {"archive", &QMBill::archiveBillWithBid, bills({"A", "B"}, {"C"}, {}), bills({"B"}, {"C"}, {"A"})},
      {"archive again", &QMBill::archiveBillWithBid, bills({"B"}, {}, {"A"}), bills({"B"}, {}, {"A", "A"})},
      {"restore", &QMBill::restoreBillWithBid, bills({"B"}, {"C"}, {"A"}), bills({"B", "A"}, {"C"}, {})},
      {"restore deleted", &QMBill::restoreBillWithBid, bills({}, {"A"}, {"D"}), bills({"A"}, {"A"}, {"D"})},
      {"no list to take from", &QMBill::archiveBillWithBid, {{"DeletedBills", Array{"C"}}}, {}},
      {"no list to leave be", &QMBill::archiveBillWithBid, {{"ActiveBills", Array{"A"}}}, bills({}, {}, {"A"})},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    FakeDesktop desktop;
    putIndex(desktop, c.before);
    QMBill object{desktop.platform};
    (object.*c.operation)("A");
    EXPECT_EQ(fileOf(desktop, "billindex.plist"), c.after);
  }
}

TEST(QMBill, AMoveWritesItsListsInTheOrderFromToOtherAndSparesAnIndexOfTheWrongKind) {
  FakeDesktop desktop;
  putActiveBills(desktop, {bill("A", "Rent", daysFromToday(1))});
  QMBill{desktop.platform}.archiveBillWithBid("A");
  EXPECT_THAT(keysOf(fileOf(desktop, "billindex.plist")), ElementsAre("ActiveBills", "ArchivedBills", "DeletedBills"));
  QMBill{desktop.platform}.deleteBillWithBid("A");
  EXPECT_THAT(keysOf(fileOf(desktop, "billindex.plist")), ElementsAre("ArchivedBills", "DeletedBills", "ActiveBills"));
  const Dictionary odd = {{"ActiveBills", "A"}, {"DeletedBills", Array{"C"}}, {"ArchivedBills", Array{"D"}}};
  putIndex(desktop, odd);
  QMBill{desktop.platform}.archiveBillWithBid("A");
  EXPECT_EQ(fileOf(desktop, "billindex.plist"), odd);
  EXPECT_THAT(desktop.log.diagnostics, ElementsAre(::testing::HasSubstr("billindex.plist")));
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

TEST(QMBill, WritingAndRewritingReplaceTheReminders) {
  FakeDesktop desktop;
  desktop.defaults.content.set("QMEnableNotificationCenter", true);
  desktop.defaults.content.set("QMReminderEvents", true);
  desktop.defaults.content.set("QMCalendarList", Array{"Bills"});
  const auto reminders = [&] {
    return std::pair(desktop.calendars.eventList.size(), desktop.notifications.scheduledList.size());
  };
  const auto one = std::pair<std::size_t, std::size_t>(1, 1);
  const Dictionary reminding = with(bill("A1", "Rent", daysFromToday(5)), "RemindMe", true);
  QMBill object = billObject(desktop.platform, "A1", "Rent", daysFromToday(5));
  object.remindMe = Value(true);
  object.writeBill(false);
  object.writeBill(false);
  EXPECT_EQ(reminders(), one);
  object.rewriteSpecificBill(reminding);
  object.rewriteSpecificBillWithoutUpdatingiCloud(reminding);
  EXPECT_EQ(reminders(), one);
  object.saveSpecificKeyWithValueForBill("DueDate", daysFromToday(6), "A1");
  EXPECT_EQ(desktop.notifications.scheduledList.size(), 2U) << "saving one key leaves the earlier ones";
  object.rewriteSpecificBill(with(reminding, "RemindMe", false));
  EXPECT_EQ(reminders(), (std::pair<std::size_t, std::size_t>(0, 0)));
}

TEST(QMBill, DeletingAnUnknownBillWritesNothingButMirrorsTheDeletedList) {
  FakeDesktop desktop;
  desktop.defaults.content.set("iCloudSyncEnabled", true);
  putIndex(desktop, {{"ActiveBills", Array{"B"}}, {"DeletedBills", Array{"C"}}, {"ArchivedBills", Array()}});
  QMBill{desktop.platform}.deleteBillWithBid("A");
  EXPECT_TRUE(desktop.files.saved.empty());
  EXPECT_EQ(desktop.cloud.object("deletedbills"), Value(Array{"C"}));
  EXPECT_THAT(desktop.log.lines, ElementsAre("Updated Deleted Bills to iCloud"));
}

TEST(QMBill, DisablingRemovesRemindersAndRestoringMakesNone) {
  FakeDesktop desktop;
  desktop.defaults.content.set("QMEnableNotificationCenter", true);
  desktop.defaults.content.set("QMReminderEvents", true);
  desktop.defaults.content.set("QMCalendarList", Array{"Bills"});
  QMBill object = billObject(desktop.platform, "A1", "Rent", daysFromToday(5));
  object.remindMe = Value(true);
  object.writeBill(false);
  ASSERT_EQ(desktop.notifications.scheduledList.size(), 1U);
  ASSERT_EQ(desktop.calendars.eventList.size(), 1U);
  object.archiveBillWithBid("A1");
  EXPECT_TRUE(desktop.notifications.scheduledList.empty());
  EXPECT_TRUE(desktop.calendars.eventList.empty());
  object.restoreBillWithBid("A1");
  EXPECT_TRUE(desktop.notifications.scheduledList.empty());
  for (const bool archived : {false, true}) {
    object.writeBill(false);
    if (archived)
      object.moveBillFromIndexToIndexNotUsingIndexAndDisableBill("A1", "ActiveBills", "ArchivedBills", "DeletedBills",
                                                                 false);
    ASSERT_EQ(desktop.notifications.scheduledList.size(), 1U);
    object.deleteBillWithBid("A1");
    EXPECT_TRUE(desktop.notifications.scheduledList.empty());
  }
}

TEST(QMBill, EmptyingTheIndexWritesThreeEmptyListsAndKeepsTheFiles) {
  FakeDesktop desktop;
  putActiveBills(desktop, {bill("A1", "Rent", daysFromToday(1))});
  QMBill{desktop.platform}.deleteAllBills();
  EXPECT_EQ(fileOf(desktop, "billindex.plist"),
            (Dictionary{{"ActiveBills", Array()}, {"ArchivedBills", Array()}, {"DeletedBills", Array()}}));
  EXPECT_TRUE(desktop.files.exists(inDataFolder("A1.plist")));
}

TEST(QMBill, OverwritingTheIndexMirrorsTheOneListThatIsNamed) {
  struct Case {
    std::string cloudKey;
    Value mirrored;
    std::vector<std::string> lines;
  };
  const Case cases[] = {
      {"activebills", Array{"A"}, {"Updated Active Bills to iCloud", "iCloud: Uploading active bills back to icloud"}},
      {"deletedbills",
       Array{"D"},
       {"Updated Deleted Bills to iCloud", "iCloud: Uploading deleted bills back to icloud"}},
      {"archivedbills",
       Array{"R"},
       {"Updated Archived Bills to iCloud", "iCloud: Uploading archived bills back to icloud"}},
      {"tagindex", "", {}},
  };
  const Dictionary index = {{"ActiveBills", Array{"A"}}, {"DeletedBills", Array{"D"}}, {"ArchivedBills", Array{"R"}}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.cloudKey);
    FakeDesktop desktop;
    desktop.defaults.content.set("iCloudSyncEnabled", true);
    (void)QMBillsLoader{desktop.platform}.tallyvaneDirectory();
    QMBill{desktop.platform}.overWriteIndexFileWithDictionaryUpdatingKey(index, c.cloudKey);
    EXPECT_EQ(fileOf(desktop, "billindex.plist"), index);
    EXPECT_EQ(desktop.cloud.object(c.cloudKey).value_or(""), c.mirrored);
    EXPECT_EQ(desktop.log.lines, c.lines);
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
