#include "payments/QMPaymentLogger.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <set>

#include "support/Bills.h"
#include "support/Payments.h"

namespace tallyvane::testing {
namespace {

TEST_F(Payments, TheNextDueDateFollowsTheRepeatRule) {
  const auto midnight = [](int year, unsigned month, unsigned day, int offset) {
    return Date(std::chrono::sys_days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}}) +
           std::chrono::hours{offset};
  };
  const auto hour = std::chrono::hours{1};
  const struct {
    Date due;
    Array repeat;
    std::int32_t modifier;
    Date next;
  } rows[] = {
      {noon(2027, 1, 31), {1, 2}, 1, noon(2027, 2, 28)},
      {noon(2027, 3, 31), {1, 2}, -1, noon(2027, 2, 28) + hour},
      {noon(2027, 3, 1), {2, 0}, 1, noon(2027, 3, 15) - hour},  // noon on the wall; summer time began on the 14th
      {noon(2027, 3, 15), {2, 0}, -1, noon(2027, 3, 1) + hour},
      {noon(2027, 1, 1), {10, 3}, 1, noon(2027, 1, 11)},
      {noon(2027, 1, 1), {0, 2}, 1, noon(2027, 1, 1)},
      {noon(2027, 1, 1), {std::int64_t{1} << 32 | 5, 3}, 1, noon(2027, 1, 6)},
      {noon(2027, 1, 1),
       {std::numeric_limits<std::int32_t>::min(), 0},
       -1,
       next(noon(2027, 1, 1), {std::numeric_limits<std::int32_t>::min(), 0})},  // the product keeps its 32 bits
      {noon(2027, 1, 1), {"2 weeks", 0.9}, 1, noon(2027, 1, 15)},
      {noon(2027, 2, 1), {7, 1}, 1, midnight(2027, 2, 15, 5)},
      {noon(2027, 2, 10), {7, 1}, -1, midnight(2027, 2, 15, 5)},  // forward when undoing, too
      {noon(2027, 2, 15), {7, 1}, 1, midnight(2027, 3, 1, 5)},
      {noon(2027, 12, 20), {7, 1}, 1, midnight(2028, 1, 1, 5)},
      {noon(2027, 1, 1), {0, 4}, -1, distantFuture},
      {noon(2027, 1, 1), {1, 5}, 1, Date()},
      {noon(2027, 1, 1), {1, -1}, 1, Date()},
      {noon(2027, 1, 1), {1}, 1, Date()},
      {noon(2027, 1, 1), {1, Array()}, 1, Date()},
  };
  for (const auto& row : rows)
    EXPECT_EQ(next(row.due, row.repeat, row.modifier), row.next) << writePropertyList(row.repeat) << row.modifier;
  EXPECT_EQ(logger.calculateNextDueDateForBill({{"DueDate", noon(2027, 1, 1)}}), noon(2027, 1, 1));
  EXPECT_EQ(logger.calculateNextDueDateForBill({{"Repeat", Array{1, 2}}}), std::nullopt);
  desktop.region.locale = "fa_IR";  // 30 Esfand 1399, the last day of its year
  EXPECT_EQ(next(noon(2021, 3, 20), {1, 1}), midnight(2021, 3, 21, 4));
  desktop.region.locale = "en_US@calendar=coptic";  // the short thirteenth month is passed over
  EXPECT_EQ(next(noon(2027, 8, 26), {1, 1}), midnight(2027, 9, 12, 4));
}

TEST_F(Payments, RecordingBringsAllOfTheBillUpToDateInACopy) {
  putActiveBills(desktop, {rent});
  const Dictionary before = with(with(with(rent, "Balance", 100), "Interest", 0.1), "Rev", 0);
  const Dictionary untouched = before;
  const Dictionary after = recorded(payment(30, noon(2027, 2, 27)), before);
  EXPECT_EQ(before, untouched);
  EXPECT_EQ(keysOf(after), keysOf(before));
  EXPECT_EQ(*after.find("DueDate"), Value(noon(2027, 4, 1) - std::chrono::hours{1}));
  EXPECT_EQ(*after.find("PaymentList"),
            Value(Array{
                Value(Dictionary{{"Amount", 30}, {"Date", noon(2027, 2, 27)}, {"Note", "by post"}, {"Receipt", ""}})}));
  EXPECT_EQ(*after.find("TotalPaid"), Value(30.0));
  EXPECT_EQ(*after.find("Average"), Value(30.0));
  EXPECT_EQ(*after.find("Balance"), Value(73.0));
  EXPECT_EQ(*after.find("LastPayment"), Value(noon(2027, 2, 27)));

  const Dictionary second = recorded(payment(0.1F, noon(2027, 1, 5)), after);
  EXPECT_EQ(*second.find("LastPayment"), Value(noon(2027, 2, 27)));
  EXPECT_EQ(*second.find("TotalPaid"), Value(30.0F + 0.1F));
  EXPECT_EQ(second.get<Array>("PaymentList")->back().get<Dictionary>()->valueOr("Date", Date()), noon(2027, 1, 5));

  logger.recordPaymentForBillAndUpdateDate(payment(30, noon(2027, 3, 1)), rent, false);
  EXPECT_EQ(*stored().find("DueDate"), Value(noon(2027, 3, 1)));

  const Dictionary bare = recorded(payment(30, noon(2027, 3, 1)), {{"Bid", "B1"}, {"Name", "Rent"}});
  EXPECT_THAT(keysOf(bare), ElementsAre("Bid", "Name", "PaymentList", "TotalPaid", "Average"));
}

TEST_F(Payments, BalancesAreReducedUnclampedAndOnlyAboveZero) {
  const struct {
    double balance, interest, rev, amount, left;
  } rows[] = {{100, 0.1, 0, 30, 73}, {10, 0, 0, 30, -20},    {0, 0, 0, 30, 0},
              {-5, 0, 0, 30, -5},    {100, 0.5, 10, 30, 90}, {0.3, 0, 0, 0.1, 0.3F - 0.1F}};
  for (const auto& row : rows) {
    const Dictionary before = with(with(with(rent, "Balance", row.balance), "Interest", row.interest), "Rev", row.rev);
    EXPECT_EQ(*recorded(payment(row.amount, noon(2027, 3, 1)), before).find("Balance"), Value(row.left)) << row.balance;
  }
}

TEST_F(Payments, ARuleThatLeadsNowhereLeavesTheDueDateAndTheLogSaysSo) {
  const Dictionary after = recorded(payment(30, noon(2027, 3, 1)), with(rent, "Repeat", Array{1, 7}));
  EXPECT_EQ(*after.find("DueDate"), *rent.find("DueDate"));
  EXPECT_EQ(after.get<Array>("PaymentList")->size(), 1U);
  EXPECT_THAT(desktop.log.diagnostics, ElementsAre(::testing::HasSubstr("B1")));
}

TEST_F(Payments, WhatTheCallerGotWrongIsSaidBeforeAnythingIsWritten) {
  QMPayment incomplete = payment(1, noon(2027, 3, 1));
  incomplete.note.reset();
  EXPECT_THROW(logger.recordPaymentForBill(incomplete, rent), std::invalid_argument);
  EXPECT_THROW(
      logger.recordPaymentForBill(payment(1, noon(2027, 3, 1), "/bill.pdf"), with(rent, "PaymentList", "none")),
      std::invalid_argument);
  Dictionary target = rent;
  EXPECT_THROW((void)logger.addNewRecordToPaymentListInBill({1, noon(2027, 3, 1), ""}, target), std::invalid_argument);
  EXPECT_TRUE(desktop.files.content.empty());
  EXPECT_TRUE(desktop.log.lines.empty());
}

TEST_F(Payments, AnEntryIsAppendedToTheListThatTheBillHoldsUnlessThatIsEmpty) {
  Dictionary empty = rent;
  const Array one = logger.addNewRecordToPaymentListInBill({5, noon(2027, 3, 1), "", "Attach Receipt"}, empty);
  EXPECT_EQ(empty, rent);
  EXPECT_EQ(one, Array{entry(5, noon(2027, 3, 1))});
  Dictionary paid = with(rent, "PaymentList", one);
  const Array two = logger.addNewRecordToPaymentListInBill({6, noon(2027, 1, 1), "", ""}, paid);
  EXPECT_EQ(*paid.find("PaymentList"), Value(two));
  EXPECT_EQ(two.back(), entry(6, noon(2027, 1, 1)));
}

TEST_F(Payments, TotalsAddFloatsInTheOrderOfTheList) {
  const float infinity = std::numeric_limits<float>::infinity();
  const Array odd{entry("7.5 or so", Date()), "no entry", Dictionary(), entry(true, Date())};
  const Array many{entry(16777216, Date()), entry(1, Date()), entry(1, Date())};
  EXPECT_THAT(numbers(logger.recalculateAveragePaidForData(odd)), ElementsAre(8.5F, 2.125F));
  EXPECT_THAT(numbers(logger.recalculateAveragePaidForData(many)), ElementsAre(16777216.0F, 16777216.0F / 3));
  EXPECT_THAT(numbers(logger.recalculateAveragePaidForData({})), ElementsAre(0.0F, 0.0F));
  const auto withNew = [&](const Array& list, const Value& amount) {
    return numbers(logger.calculateAveragePaidForBillWithNewPayment(with(rent, "PaymentList", list), amount));
  };
  EXPECT_THAT(withNew({entry(20, Date()), entry(30, Date())}, 40), ElementsAre(90.0F, 45.0F));
  EXPECT_THAT(withNew({}, 40), ElementsAre(40.0F, infinity));
  EXPECT_TRUE(std::isnan(withNew({}, 0)[1]));
}

TEST_F(Payments, TheLastPaymentMovesForwardByWholeSecondsWithin32Bits) {
  using std::chrono::milliseconds;
  const Date day = noon(2027, 3, 1);
  const struct {
    std::optional<Date> stored;
    bool moves;
  } rows[] = {{day, false},         {day - milliseconds{999}, false},  {day - milliseconds{1000}, true},
              {distantPast, true},  {day + milliseconds{1000}, false}, {distantFuture, true},
              {std::nullopt, false}};
  for (const auto& row : rows) EXPECT_EQ(logger.shouldUpdateLastPaidDateWithNewDate(row.stored, day), row.moves);
  EXPECT_FALSE(recorded(payment(1, day), without(rent, "LastPayment")).contains("LastPayment"));
}

TEST_F(Payments, TheProposedAmountIsTheBillsElseTheLastPaymentsElseZero) {
  const Array paid{entry(20, Date()), entry(35, Date())};
  const auto proposed = [&](const Value& amount, const Array& list) {
    return logger.amountPrefilValueForBill(with(with(rent, "Amount", amount), "PaymentList", list));
  };
  EXPECT_EQ(proposed(0.1, paid), Value(0.1F));
  EXPECT_EQ(proposed(0, paid), Value(35));
  EXPECT_EQ(proposed(-1, {}), Value(0.0));
  EXPECT_EQ(proposed(0, {"no entry"}), Value(0.0));
}

TEST_F(Payments, OnlyAutomaticBillsWithAnAmountThatAreDueAreLoggedSilently) {
  const struct {
    Value payType, amount, sortNumber;
    bool logs;
  } rows[] = {{1, 50, 0, true},   {1, 50, -86400, true}, {1, 50, 1, false},
              {1, 0, 0, false},   {0, 50, 0, false},     {2, 50, 0, false},
              {1.9, 50, 0, true}, {1, "50", 0, true},    {std::int64_t{1} << 32 | 1, 50, 0, false}};
  for (const auto& row : rows) {
    const Dictionary shown{{"PayType", row.payType}, {"Amount", row.amount}, {"SortableDueDate", row.sortNumber}};
    EXPECT_EQ(logger.checkIfBillShouldSilentlyLog(shown), row.logs) << writePropertyList(shown);
  }
  EXPECT_TRUE(logger.checkIfBillShouldSilentlyLog({{"PayType", 1}, {"Amount", 50}}));
}

TEST_F(Payments, UndoingStepsBackAndStoresTheRestInTheOrderGiven) {
  Array newestFirst{entry(3, noon(2027, 3, 1)), entry(2, noon(2027, 2, 1)), entry(1, noon(2027, 1, 1))};
  const Dictionary paid = with(with(rent, "LastPayment", noon(2027, 3, 1) + std::chrono::hours{9}), "DueDate",
                               noon(2027, 4, 1) - std::chrono::hours{1});
  putActiveBills(desktop, {with(paid, "PaymentList", newestFirst)});
  EXPECT_TRUE(logger.reverseLastPaymentForBillAndPayments("B1", newestFirst));
  EXPECT_EQ(newestFirst, (Array{entry(2, noon(2027, 2, 1)), entry(1, noon(2027, 1, 1))}));
  EXPECT_EQ(stored(), with(with(with(with(with(paid, "PaymentList", newestFirst), "LastPayment", noon(2027, 2, 1)),
                                     "DueDate", noon(2027, 3, 1)),
                                "TotalPaid", 3.0),
                           "Average", 1.5));

  EXPECT_TRUE(logger.reverseLastPaymentForBillAndPayments("B1", newestFirst));
  EXPECT_EQ(*stored().find("LastPayment"), Value(noon(2027, 1, 1)));
  EXPECT_TRUE(logger.reverseLastPaymentForBillAndPayments("B1", newestFirst));
  EXPECT_EQ(*stored().find("LastPayment"), Value(distantPast));
  EXPECT_EQ(*stored().find("PaymentList"), Value(Array()));
  EXPECT_EQ(*stored().find("Average"), Value(0.0));
}

TEST_F(Payments, UndoingRefusesAPaymentThatIsNotOfTheLastPaidDay) {
  const Array list{entry(3, noon(2027, 2, 28))};
  const Dictionary paid = with(with(rent, "PaymentList", list), "LastPayment", noon(2027, 3, 1));
  for (const Dictionary& before : {paid, without(paid, "LastPayment")}) {
    putActiveBills(desktop, {before});
    Array payments = list;
    EXPECT_FALSE(logger.reverseLastPaymentForBillAndPayments("B1", payments));
    EXPECT_EQ(payments, list);
    EXPECT_EQ(stored(), before);
  }
  for (Array payments : {Array(), Array{"no entry"}})
    EXPECT_FALSE(logger.reverseLastPaymentForBillAndPayments("B1", payments));
  Array payments = list;
  EXPECT_FALSE(logger.reverseLastPaymentForBillAndPayments("unknown", payments));
}

TEST_F(Payments, AReceiptIsCopiedUnderANewNameAndItsPathStoredWhateverBecomesOfTheCopy) {
  (void)desktop.files.createFolder("/home/ada");
  const struct {
    const char* file;
    const char* extension;
  } rows[] = {
      {"/home/ada/bill.pdf", ".pdf"}, {"/home/ada/a.tar.gz", ".gz"}, {"/home/ada/.scan", ""}, {"/home/ada.d/x", ""}};
  for (const auto& row : rows) {
    ASSERT_TRUE(desktop.files.createFolder(InMemoryFileStore::parent(row.file)));
    ASSERT_TRUE(desktop.files.save(row.file, row.file, Durability::synced));
    const std::string copy = logger.copyAttachment(row.file);
    EXPECT_EQ(copy, dataFolder + copy.substr(dataFolder.size(), 33) + row.extension);
    EXPECT_EQ(desktop.files.content[copy], row.file);
    EXPECT_TRUE(desktop.files.exists(row.file));
    EXPECT_EQ(desktop.log.lines.back(), "Final Path " + copy);
  }
  desktop.log.lines.clear();
  const std::string planned = logger.copyAttachment("/gone.pdf");
  EXPECT_THAT(desktop.log.lines, ElementsAre("Error: No such file or directory", "Final Path " + planned));
  EXPECT_FALSE(desktop.files.exists(planned));
  for (const char* title : {"", "Attach", "Attach Receipt"}) EXPECT_EQ(logger.copyAttachment(title), title);
  desktop.defaults.content.set("QMCustomLocationEnabled", true);  // no such folder is known
  EXPECT_EQ(logger.copyAttachment("/home/ada/bill.pdf"), "");
}

TEST_F(Payments, TitlesOfTheReceiptButtonStandForNoReceipt) {
  desktop.region.words = bracketed;
  EXPECT_EQ(logger.cleanReceiptTitle("Attach Receipt"), "");
  EXPECT_EQ(logger.cleanReceiptTitle("Attach"), "");
  EXPECT_EQ(logger.cleanReceiptTitle("attach"), "attach");
  EXPECT_EQ(logger.reverseCleanReceiptTitleWithString(""), "Attach");
  EXPECT_EQ(logger.reverseCleanReceiptTitleWithString("/a.pdf"), "/a.pdf");
  EXPECT_EQ(logger.resetTitleForReceiptButton(1), "[Attach Receipt]");
  EXPECT_EQ(logger.resetTitleForReceiptButton(2), "[Attach]");
  EXPECT_EQ(logger.resetTitleForReceiptButton(3), "");
}

TEST_F(Payments, TheChosenSoundIsNamedWhereSoundsAreWanted) {
  EXPECT_EQ(logger.getSpecifiedSound(), std::nullopt);
  desktop.defaults.content.set("QMXPlayInterfaceSounds", true);
  EXPECT_EQ(logger.getSpecifiedSound(), "trumpet");
  const struct {
    int choice;
    std::optional<std::string> sound;
  } rows[] = {{1, "triumph2"}, {2, "harp"}, {3, "applause"}, {5, std::nullopt}, {-1, std::nullopt}};
  for (const auto& row : rows) {
    desktop.defaults.content.set("QMXWhichSoundEffect", row.choice);
    EXPECT_EQ(logger.getSpecifiedSound(), row.sound) << row.choice;
  }
  desktop.defaults.content.set("QMXWhichSoundEffect", 4);
  std::set<std::string> heard;
  for (int i = 0; i < 200; ++i) heard.insert(*logger.getSpecifiedSound());
  EXPECT_THAT(heard, ElementsAre("bravo", "congrats", "fantastic", "ter", "welldone", "youdid"));
}

}  // namespace
}  // namespace tallyvane::testing
