#include "import/QMImportManager.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "support/Bills.h"
#include "support/OldFolder.h"

namespace tallyvane::testing {
namespace {

TEST_F(Import, EachOldKeyBecomesItsFieldOfToday) {
  putOld("Rent.plist", oldBill());
  desktop.files.putPlist(oldFolder + "/receipts/R1/a.pdf", "receipt");
  const Dictionary bill = imported();
  EXPECT_EQ(keysOf(bill), keysOf(testing::bill("", "", Date())));
  const Dictionary expected{{"Name", "Rent"},
                            {"Icon", "32x32-house"},
                            {"DueDate", noon(2015, 6, 1)},
                            {"Repeat", Array{1, 2}},
                            {"Average", 12.5},
                            {"LastPayment", noon(2015, 5, 1)},
                            {"TotalPaid", 5.0},
                            {"RemindMe", true},
                            {"PaySite", "http://pay.example"},
                            {"ReminderDays", 3},
                            {"Balance", 7.5},
                            {"Interest", 0.1},
                            {"Notes", "note"},
                            {"Tags", Array{"Home"}},
                            {"Amount", 99.9F},
                            {"PayType", 1},
                            {"Rev", 0.0}};
  for (const auto& [key, value] : expected) EXPECT_EQ(*bill.find(key), value) << key;
  EXPECT_EQ(payment(bill, 0),
            (Dictionary{{"Amount", 10}, {"Date", noon(2015, 5, 1)}, {"Note", "5 in cash"}, {"Receipt", ""}}));
  EXPECT_EQ(*payment(bill, 1).find("Amount"), Value(1250.5));
  EXPECT_THAT(payment(bill, 1).valueOr("Receipt", std::string()), HasSubstr(dataFolder));
  EXPECT_TRUE(desktop.files.exists(payment(bill, 1).valueOr("Receipt", std::string())));
  EXPECT_TRUE(desktop.files.exists(oldFolder + "/Data/Rent.plist"));
  EXPECT_THAT(desktop.log.lines, Contains("Data Folder Exists at Selected Location: 1"));
  EXPECT_THAT(desktop.log.lines, Contains("URL of Folder to Import From: file:///media/old/Tallyvane/Data/"));
  EXPECT_THAT(desktop.log.lines, Contains("Files found: (a.pdf)"));
}

TEST_F(Import, OldTextsMapExactlyToTodaysNumbersAndNames) {
  const std::pair<const char*, int> units[] = {{"Weeks", 0}, {"Twice", 1},  {"Months", 2}, {"Days", 3},
                                               {"Never", 4}, {"Yearly", 0}, {"never", 0}};
  for (const auto& [text, unit] : units) EXPECT_EQ(importer.calculateRepeatBWithString(text), unit) << text;
  const std::pair<const char*, int> types[] = {{"Online", 0}, {"Automatic", 1}, {"Check", 4}, {"", 4}};
  for (const auto& [text, type] : types) EXPECT_EQ(importer.calculatePayTypeWithString(text), type) << text;
  const std::pair<const char*, const char*> icons[] = {{"bill_couch.png", "32x32-Furtinure"},
                                                       {"bill_card2.png", "32x32-Credticard-B"},
                                                       {"bill_water", "32x32-Shopping"}};
  for (const auto& [old, icon] : icons) EXPECT_EQ(importer.convertIconWithIcon(old), icon) << old;
}

TEST_F(Import, ABillForOnceThatWasPaidIsNeverDueAgain) {
  const Dictionary once = with(oldBill(), "Repeat_b", "Never");
  const struct {
    Dictionary old;
    Date due;
  } cases[] = {{once, distantFuture},
               {without(once, "Pay_Amounts"), noon(2015, 6, 1)},
               {without(once, "Repeat_a"), noon(2015, 6, 1)}};  // without a count there is no rule
  for (const auto& c : cases) {
    FakeDesktop computer;
    computer.files.putPlist(oldFolder + "/Data/Once.plist", c.old);
    EXPECT_EQ(*importedOn(computer).find("DueDate"), Value(c.due)) << keysOf(c.old).size();
  }
}

TEST_F(Import, PaymentsOfAnOldBillWithoutNotesHaveEmptyOnes) {
  putOld("Rent.plist", without(oldBill(), "Pay_Notes"));
  const Dictionary bill = imported();
  EXPECT_EQ(*payment(bill, 0).find("Note"), Value(""));
  EXPECT_EQ(*bill.find("TotalPaid"), Value(0.0));
}

TEST_F(Import, PaymentsWithoutAReadableDateOrReceiptKeepTheirAmounts) {
  const Date unknown = std::chrono::sys_days{std::chrono::year{2003} / 12 / 31} + std::chrono::hours{19};
  putOld("Rent.plist", with(with(with(oldBill(), "Pay_Dates", Array{"1 May"}), "Pay_Amounts", Array{"ten", 2}),
                            "Pay_Attachment", Array{"gone", "../Data"}));
  const Dictionary bill = imported();
  EXPECT_EQ(payment(bill, 0),
            (Dictionary{{"Amount", 0}, {"Date", unknown}, {"Note", "5 in cash"}, {"Receipt", "gone"}}));
  EXPECT_EQ(payment(bill, 1), (Dictionary{{"Amount", 2}, {"Date", unknown}, {"Note", "late"}, {"Receipt", "../Data"}}));
  EXPECT_EQ(*bill.find("LastPayment"), Value("1 May"));
}

TEST_F(Import, AmountsGivenAsTextBecomeNumbers) {
  // Of the amount that is due the leading number; of a payment the whole text, as a number of the locale.
  const struct {
    const char* text;
    double due;
    double paid;
  } rows[] = {{"12.50", 12.5, 12.5}, {"$12.50", 0, 0}, {"1E3", 1000, 1000}, {"1,250.5", 1, 1250.5},
              {"12 or so", 12, 0},   {" -7 ", -7, -7}, {"", 0, 0}};
  for (const auto& row : rows) {
    FakeDesktop other;
    const Dictionary old = with(with(oldBill(), "Amount_Due", row.text), "Pay_Amounts", Array{row.text});
    other.files.putPlist(oldFolder + "/Data/Rent.plist", old);
    const Dictionary bill = importedOn(other);
    EXPECT_EQ(doubleValue(bill, "Amount"), row.due) << row.text;
    EXPECT_EQ(doubleValue(payment(bill, 0), "Amount"), row.paid) << row.text;
  }
}

TEST_F(Import, WhatHasAnotherTypeThanItShouldIsKeptAsItIs) {
  putOld("Rent.plist", with(with(with(with(with(oldBill(), "Next_Due", "soon"), "Pay_Bill_Note", 7), "Tags", "Home"),
                                 "Pay_Location_a", 5),
                            "Pay_Dates", Array{"1 May", noon(2015, 4, 1)}));
  const Dictionary bill = imported();
  const Dictionary expected{{"DueDate", "soon"}, {"LastPayment", "1 May"}, {"PaySite", 5},
                            {"Notes", 7},        {"Tags", "Home"},         {"Rev", 0.0}};
  for (const auto& [key, value] : expected) EXPECT_EQ(*bill.find(key), value) << key;
}

TEST_F(Import, OfSeveralReceiptsTheFirstThatIsNotHiddenIsTaken) {
  putOld("Rent.plist", with(oldBill(), "Pay_Attachment", Array{"", "2015/R1"}));
  for (const char* name : {".DS_Store", "b.pdf", "a.pdf"})
    desktop.files.content[oldFolder + "/receipts/2015/R1/" + name] = name;
  (void)desktop.files.createFolder(oldFolder + "/receipts/2015/R1");
  importer.performImportWithBillsAtPath({oldFolder + "/Data/Rent.plist"}, oldFolder + "/Data/");
  EXPECT_THAT(desktop.log.lines, Contains("Files found: (a.pdf, b.pdf, .DS_Store)"));
  const Dictionary bill = fileOf(desktop, stringsOf(indexOf(desktop).get<Array>("ActiveBills")).at(0) + ".plist");
  EXPECT_EQ(desktop.files.content[payment(bill, 1).valueOr("Receipt", std::string())], "a.pdf");
}

TEST_F(Import, AShorterListOfNotesEndsTheImportAndWhatWasWrittenStays) {
  putOld("A.plist", oldBill());
  putOld("B.plist", with(oldBill(), "Pay_Notes", Array{"one"}));
  EXPECT_THROW((void)importer.importDataFromPreviousVersionAtPath(oldFolder), std::out_of_range);
  EXPECT_EQ(indexOf(desktop).get<Array>("ActiveBills")->size(), 1U);
}

TEST_F(Import, ForeignFilesAndFoldersBecomeArchivedBillsAndHiddenOnesNothing) {
  desktop.files.putPlist(oldFolder + "/Data/x", "y");
  desktop.files.content[oldFolder + "/Data/x"] = "no property list";
  desktop.files.content[oldFolder + "/Data/.hidden"] = "";
  const Dictionary bill = imported("ArchivedBills");
  EXPECT_THAT(keysOf(bill), ElementsAre("Name", "Bid", "Icon"));
  EXPECT_EQ(*bill.find("Icon"), Value("32x32-Shopping"));
  EXPECT_THAT(*indexOf(desktop).get<Array>("ActiveBills"), IsEmpty());
}

TEST_F(Import, OnlyAFolderOfTheOldNameWithDataInItIsTaken) {
  (void)desktop.files.createFolder("/media/Tallyvane2/Data");
  (void)desktop.files.createFolder("/media/Tallyvane");
  (void)desktop.files.createFolder("/media/b/Tallyvane");
  desktop.files.content["/media/b/Tallyvane/Data"] = "no folder";
  for (const char* path : {"/media/Tallyvane2", "/media/Tallyvane", "/media/tallyvane", "/media/b/Tallyvane", ""})
    EXPECT_FALSE(importer.importDataFromPreviousVersionAtPath(path)) << path;
  EXPECT_EQ(desktop.files.content.size(), 1U);
}

TEST_F(Import, ImportingPutsTheDataFolderBackToItsDefaultPlace) {
  desktop.files.putPlist("/home/ada/.local/share/Tallyvane/Data/Rent.plist", oldBill());
  EXPECT_TRUE(importer.shouldImportData());
  EXPECT_EQ(desktop.log.lines.back(), "Tallyvane 5 Data Status: 0");
  desktop.log.lines.clear();
  importer.importDataFromPreviousVersion();
  std::vector<std::string> told = desktop.log.lines;
  told.erase(std::find(told.begin(), told.end(), "Imported Bill: Rent") + 1, told.end());  // writing it tells its own
  EXPECT_THAT(told, ElementsAre("Starting Import", "Default Location Path: /home/ada/.local/share/Tallyvane",
                                "Data Folder Exists at Selected Location: 1",
                                "URL of Folder to Import From: file:///home/ada/.local/share/Tallyvane/Data/",
                                "Name: Rent", "Count: 2", "Imported Bill: Rent"));
  EXPECT_FALSE(importer.shouldImportData());
  EXPECT_EQ(*desktop.defaults.content.find("QMCustomLocationEnabled"), Value(false));
  EXPECT_EQ(*desktop.defaults.content.find("QMCusomLocationTempPath"), Value(""));
  desktop.defaults.content = Dictionary{{"QMCusomLocationTempPath", "/kept"}};
  importer.importDataInDefaultLocation();
  EXPECT_EQ(*desktop.defaults.content.find("QMCusomLocationTempPath"), Value("/kept"));
  EXPECT_EQ(indexOf(desktop).get<Array>("ActiveBills")->size(), 2U);
}

}  // namespace
}  // namespace tallyvane::testing
