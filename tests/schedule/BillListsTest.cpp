#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/LoadedBills.h"
#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

using BillLists = LoadedBills;

const Date saturday = noon(2027, 3, 13);

TEST_F(BillLists, ListAGroupInIndexOrderAndFilterByExactTag) {
  putActiveBills(desktop, {bill("A", "Late", daysFromToday(90)),
                           with(bill("B", "Tagged", daysFromToday(1)), "Tags", Array{"home", "Car"}),
                           bill("C", "Soon", daysFromToday(-2))});
  desktop.files.putPlist(inDataFolder("D.plist"), bill("D", "Archived", daysFromToday(1)));
  EXPECT_THAT(column(loader.loadBillsInGroupWithTag("ActiveBills", "")), ElementsAre("Late", "Tagged", "Soon"));
  EXPECT_THAT(column(loader.loadBillsInGroupWithTag("ActiveBills", "Home")), ElementsAre("Late", "Soon"));
  EXPECT_THAT(loader.loadBillsInGroupWithTag("ArchivedBills", ""), IsEmpty());
  EXPECT_THAT(loader.loadBillsInGroupWithTag("NoSuchGroup", ""), IsEmpty());
}

TEST_F(BillLists, ARowCarriesItsComputedKeys) {
  desktop.defaults.content.set("QMAvoidWeekends", 2);
  putActiveBills(desktop, {bill("A", "Rent", saturday)});
  const Dictionary row = loader.loadBills().at(0);
  Dictionary expected = bill("A", "Rent", saturday);
  expected.set("DateWasModified", false);
  expected.set("HumanRepeat", "Every month");
  expected.set("HumanDueDate", "Due in 3 days");
  expected.set("SortableDueDate", 3 * 86400);
  expected.set("DueIcon", "green5.png");
  expected.set("DueString", "Sat, Mar 13, 2027");
  EXPECT_EQ(row, expected);
  EXPECT_THAT(desktop.log.lines, ElementsAre("Running Overview Update"));
}

TEST_F(BillLists, WeekendDatesMoveAsTheSettingSaysAndToFridayWhenItIsAbsent) {
  struct Case {
    std::optional<int> setting;
    Date shown;
    bool modified;
  };
  putActiveBills(desktop, {bill("A", "Rent", saturday)});
  for (const Case& c : {Case{1, noon(2027, 3, 15) - std::chrono::hours{1}, true}, Case{0, noon(2027, 3, 12), true},
                        Case{std::nullopt, noon(2027, 3, 12), true}, Case{2, saturday, false}}) {
    desktop.defaults.content = c.setting ? Dictionary{{"QMAvoidWeekends", *c.setting}} : Dictionary();
    const Dictionary row = loader.loadBills().at(0);
    EXPECT_EQ(row.valueOr("DueDate", distantPast), c.shown);
    EXPECT_EQ(row.valueOr("DateWasModified", !c.modified), c.modified);
    EXPECT_TRUE(desktop.files.saved.empty()) << "the shifted date is never stored";
  }
}

TEST_F(BillLists, AutomaticBillsAreHiddenOnRequest) {
  putActiveBills(desktop,
                 {with(bill("A", "Auto", daysFromToday(0)), "PayType", 1), bill("B", "By hand", daysFromToday(0))});
  EXPECT_THAT(column(loader.loadBills(), "DueIcon"), ElementsAre("blue5.png", "yellow5.png"));
  desktop.defaults.content.set("QMHideAutoMaticBillsInOverview", true);
  EXPECT_THAT(column(loader.loadBills()), ElementsAre("By hand"));
}

TEST_F(BillLists, OneBadFileLeavesTheOthersAndItselfAsTheyAre) {
  const std::pair<const char*, bool> cases[] = {
      {"", false},
      {"<plist version=\"1.0\"><dict><key>Name", false},
      {"<plist version=\"1.0\"><array/></plist>", false},
      {"\xFF\xFE rubbish", false},
      {"<plist version=\"1.0\"><dict><key>Name</key><integer>7</integer><key>Repeat</key><string>x</string>"
       "<key>Tags</key><true/><key>DueDate</key><string>soon</string><key>PayType</key><dict/></dict></plist>",
       true}};
  for (const auto& [content, listed] : cases) {
    FakeDesktop other;
    putActiveBills(other, {bill("A", "First", daysFromToday(1)), bill("B", "Second", daysFromToday(2))});
    other.files.content[inDataFolder("A.plist")] = content;
    const auto rows = QMBillsLoader{other.platform}.loadBills();
    EXPECT_EQ(rows.size(), listed ? 2U : 1U) << content;
    EXPECT_EQ(column(rows).back(), "Second");
    EXPECT_EQ(other.files.content[inDataFolder("A.plist")], content);
    if (!listed) {
      EXPECT_THAT(other.log.diagnostics, Contains(HasSubstr("A.plist")));
    }
  }
}

TEST_F(BillLists, ABillWithoutDueDateIsListedWithEmptyTextsAndStandsInNoSection) {
  desktop.defaults.content.set("QMDueSoonDays", 7);
  putActiveBills(desktop,
                 {with(without(bill("A", "Dateless", daysFromToday(1)), "DueDate"), "SortableDueDate", -172800),
                  with(bill("B", "Ruleless", daysFromToday(1)), "Repeat", Array{1, 9}),
                  with(bill("C", "Odd rule", daysFromToday(30)), "Repeat", "monthly"),
                  without(bill("D", "No rule", daysFromToday(30)), "Repeat")});
  const auto rows = loader.loadBills();
  EXPECT_THAT(column(rows, "HumanDueDate"),
              ElementsAre("", "Due in 1 day", "Due in about 1 month", "Due in about 1 month"));
  EXPECT_THAT(column(rows, "DueString"), ElementsAre("", "Thu, Mar 11, 2027", "Fri, Apr 9, 2027", "Fri, Apr 9, 2027"));
  EXPECT_THAT(column(rows, "HumanRepeat"), ElementsAre("Every month", "", "Unknown", "Every 0 weeks"));
  EXPECT_THAT(loader.rowsPerSectionForData(rows), ElementsAre(0, 1, 2));
  EXPECT_THAT(column(loader.loadBillsForExtension()), ElementsAre("Ruleless"));
  EXPECT_EQ(loader.getBillsDueSoonForExtensionWithBills(rows), 1);
}

TEST_F(BillLists, SectionsAreCountedByDayAndTitledInOrder) {
  struct Case {
    std::vector<int> dueIn;
    std::int32_t overdue, soon, later;
    Array perSection;
    std::string title1, title2;
  };
  const Case cases[] = {{{-1, -9, 8, 9, 30, 60, 10001}, 2, 0, 5, {2, 5}, "Overdue", "Due Later"},
                        {{0, 7}, 0, 2, 0, {2}, "Due Soon", ""},
                        {{-1, 0, 8}, 1, 1, 1, {1, 1, 1}, "Overdue", "Due Soon"},
                        {{}, 0, 0, 0, {}, "", ""}};
  desktop.region.timeZone = "UTC";  // every day has 24 hours
  desktop.defaults.content.set("QMDueSoonDays", 7);
  for (const Case& c : cases) {
    std::vector<Dictionary> rows;
    for (const int days : c.dueIn) rows.push_back(bill("A", "Rent", daysFromToday(days)));
    const Dictionary expected = {{"RowsInOverdue", c.overdue},
                                 {"RowsInDueSoon", c.soon},
                                 {"RowsInDueLater", c.later},
                                 {"OverdueSectionExists", c.overdue > 0},
                                 {"DueSoonSectionExists", c.soon > 0},
                                 {"DueLaterSectionExists", c.later > 0},
                                 {"TotalSections", c.perSection.size()},
                                 {"RowsPerSection", c.perSection},
                                 {"Section1", c.title1},
                                 {"Section2", c.title2},
                                 {"Section3", "Due Later"}};
    EXPECT_EQ(loader.dataSourceDetailsForDataSource(rows), expected);
    EXPECT_THAT(std::exchange(desktop.log.lines, {}), ElementsAre("Bills: " + std::to_string(rows.size())));
    EXPECT_EQ(loader.sectionCountForData(rows), 3);
  }
}

TEST_F(BillLists, ReadSomeNumbersIn32Bits) {
  constexpr std::int64_t beyond32Bits = std::int64_t{1} << 32;
  desktop.defaults.content.set("QMHideAutoMaticBillsInOverview", true);
  desktop.defaults.content.set("QMDueSoonDays", beyond32Bits + 7);
  putActiveBills(desktop, {with(bill("A", "Auto?", daysFromToday(0)), "PayType", beyond32Bits + 1)});
  EXPECT_THAT(loader.loadBills(), IsEmpty()) << "hiding reads 32 bits of the payment type";
  const Value payType = beyond32Bits + 1;
  EXPECT_EQ(loader.createDueIconWithSortNumberAndPaymentType(nullptr, &payType), "yellow5.png") << "the icon reads 64";
  EXPECT_THAT(loader.rowsPerSectionForData({bill("B", "Later", daysFromToday(20))}), ElementsAre(0, 0, 1));
  EXPECT_EQ(loader.getEstimatedAmountDueForBill({{"Amount", beyond32Bits}, {"Average", 42}}), Value(42));
}

TEST_F(BillLists, GoOnWhenTheGroupsSettingsCannotBeWritten) {
  desktop.groupDefaults.failing = true;
  putActiveBills(desktop, {bill("A", "Rent", daysFromToday(0))});
  EXPECT_EQ(loader.loadBills().size(), 1U);
  EXPECT_THAT(desktop.log.lines, ElementsAre("Oops, that did not work.", "Running Overview Update"));
  EXPECT_THAT(desktop.log.diagnostics, Contains(HasSubstr("snapshot")));
}

TEST_F(BillLists, AnAmountBelowOneCountsAsNone) {
  const std::pair<Dictionary, Value> cases[] = {{{{"Amount", 0.75}, {"Average", 42}}, 42},
                                                {{{"Amount", 1.25}, {"Average", 42}}, 1.25},
                                                {{{"Amount", -3.5}, {"Average", 42}}, -3.5},
                                                {{{"Average", 0.0}}, 0.0},
                                                {{}, 0}};
  for (const auto& [asked, estimate] : cases) EXPECT_EQ(loader.getEstimatedAmountDueForBill(asked), estimate);
}

TEST_F(BillLists, LookUpRangesAndIcons) {
  const std::pair<std::uint64_t, std::int64_t> ranges[] = {{0, 5}, {1, 14}, {2, 30}, {3, 10000}, {~0ULL, 10000}};
  for (const auto& [choice, days] : ranges) EXPECT_EQ(loader.returnBillsToDisplayFromIndex(choice), days);
  EXPECT_EQ(loader.getIndexForIcon("bill_medical.png"), 5);
  EXPECT_EQ(loader.getIndexForIcon("bill_rental.png"), 0);
  EXPECT_EQ(iconCatalogue().size(), 31U);
  EXPECT_EQ(loader.getTitleForIcon("32x32-Furtinure").value().index, 19);
  EXPECT_EQ(loader.getTitleForIcon("32x32-Credticard-B").value().title, "Credit Card - Other");
  EXPECT_FALSE(loader.getTitleForIcon("32x32-Furniture"));
}

}  // namespace
}  // namespace tallyvane::testing
