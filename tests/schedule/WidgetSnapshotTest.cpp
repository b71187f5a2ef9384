#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/LoadedBills.h"
#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

using WidgetSnapshot = LoadedBills;

TEST_F(WidgetSnapshot, KeepsEveryRowSortedAndIsReadWithFreshTexts) {
  desktop.region.timeZone = "UTC";
  desktop.defaults.content.set("QMDueSoonDays", 7);
  desktop.defaults.content.set("QMAvoidWeekends", 2);
  putActiveBills(desktop,
                 {bill("A", "Later", daysFromToday(20)), bill("B", "Today", daysFromToday(0)),
                  bill("C", "Overdue", daysFromToday(-4)), with(bill("D", "Auto", daysFromToday(0)), "PayType", 1)});
  EXPECT_THAT(column(loader.loadBills()), ElementsAre("Later", "Today", "Overdue", "Auto"));
  const auto stored = desktop.groupDefaults.content.get<Array>("ActiveBills");
  ASSERT_NE(stored, nullptr);
  EXPECT_EQ(*stored->front().get<Dictionary>()->get<std::string>("Name"), "Overdue");
  EXPECT_EQ(stored->size(), 4U);
  EXPECT_EQ(desktop.groupDefaults.object("QMDueSoonDays"), Value(7));
  EXPECT_GT(desktop.groupDefaults.synchronized, 0);

  desktop.clock.moment += std::chrono::days{13};
  desktop.files.content.clear();
  desktop.files.reads = 0;
  desktop.groupDefaults.synchronized = 0;
  const auto rows = loader.loadBillsForExtension();
  EXPECT_THAT(column(rows), ElementsAre("Overdue", "Today", "Later"));
  EXPECT_THAT(column(rows, "HumanDueDate"), ElementsAre("Overdue by 17 days", "Overdue by 13 days", "Due in 1 week"));
  EXPECT_EQ(desktop.files.reads, 0);
  EXPECT_EQ(loader.getBillsDueSoonForExtensionWithBills(rows), 3);
  EXPECT_EQ(loader.getBillsDueSoonForExtensionWithBills({Dictionary(), {{"DueIcon", "blue5.png"}}}), 0);
  EXPECT_EQ(desktop.groupDefaults.synchronized, 1) << "another program may have written it";
  (void)loader.loadBillsInGroupWithTag("ArchivedBills", "");
  EXPECT_EQ(desktop.groupDefaults.object("ActiveBills"), Value(Array())) << "every list build replaces it";
}

TEST_F(WidgetSnapshot, ReadingLogsItsFixedLinesInOrder) {
  desktop.groupDefaults.content.set("ActiveBills", Array{bill("A", "Rent", daysFromToday(0))});
  (void)loader.loadBillsForExtension();
  EXPECT_THAT(desktop.log.lines, ElementsAre("Bills.count 1", "OK1", "Due Date 2027-03-10 17:00:00 +0000", "OK2",
                                             "Due Icon yellow5.png", "OK3", "OK4"));
}

TEST_F(WidgetSnapshot, TheNextBillIsToldWhileAnyNeedsAttention) {
  desktop.groupDefaults.content.set("NextBill", bill("A", "Rent", daysFromToday(5)));
  for (const int count : {0, -1}) {
    desktop.groupDefaults.content.set("NumberOfBillsDueSoon", count);
    EXPECT_EQ(loader.loadDataForExtension(), std::nullopt);
  }
  desktop.groupDefaults.content.set("NumberOfBillsDueSoon", 1);
  desktop.groupDefaults.content.set("QMDueSoonDays", 30);
  const auto next = loader.loadDataForExtension();
  ASSERT_TRUE(next);
  EXPECT_EQ(next->valueOr("DueIcon", std::string()), "green5.png") << "by the user's own horizon, here 0";
  EXPECT_EQ(next->size(), 19U + 5U);
}

TEST_F(WidgetSnapshot, WithoutAGroupContainerThereIsNone) {
  desktop.platform.groupDefaults = nullptr;
  putActiveBills(desktop, {bill("A", "Rent", daysFromToday(0))});
  EXPECT_EQ(loader.loadBills().size(), 1U);
  EXPECT_THAT(loader.loadBillsForExtension(), IsEmpty());
  EXPECT_EQ(loader.loadDataForExtension(), std::nullopt);
}

}  // namespace
}  // namespace tallyvane::testing
