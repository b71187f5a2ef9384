// A folder of the previous version, imported.
#pragma once

#include <gmock/gmock.h>

#include "foundation/NumberReading.h"
#include "import/QMImportManager.h"
#include "support/Bills.h"
#include "support/Matchers.h"

namespace tallyvane::testing {

const std::string oldFolder = "/media/old/Tallyvane";

struct Import : ::testing::Test {
  static Dictionary oldBill() {
    return {{"Icon", "bill_home.png"},
            {"Next_Due", noon(2015, 6, 1)},
            {"Repeat_a", 1},
            {"Repeat_b", "Months"},
            {"Average_Paid", "12.5"},
            {"Pay_Dates", Array{noon(2015, 5, 1), noon(2015, 4, 1)}},
            {"Pay_Amounts", Array{10, "1,250.50"}},
            {"Pay_Notes", Array{"5 in cash", "late"}},
            {"Pay_Attachment", Array{"Attach Receipt", "R1"}},
            {"Alarm_On", true},
            {"Pay_Location_a", "pay.example"},
            {"Alarm_Days", 3},
            {"Total_Balance", 7.5},
            {"Pay_Type", "Automatic"},
            {"Interest_Rate", 0.1},
            {"Pay_Bill_Note", "note"},
            {"Tags", Array{"Home"}},
            {"Amount_Due", "99.9 $"},
            {"Is_Active", true}};
  }
  void putOld(const std::string& name, const Value& record) {
    desktop.files.putPlist(oldFolder + "/Data/" + name, record);
  }
  /// The one bill of a list of the index.
  Dictionary imported(std::string_view list = "ActiveBills") { return importedOn(desktop, list); }
  static Dictionary importedOn(FakeDesktop& computer, std::string_view list = "ActiveBills") {
    EXPECT_TRUE(QMImportManager{computer.platform}.importDataFromPreviousVersionAtPath(oldFolder));
    const std::vector<std::string> bids = stringsOf(indexOf(computer).get<Array>(list));
    EXPECT_EQ(bids.size(), 1U);
    return bids.empty() ? Dictionary() : fileOf(computer, bids[0] + ".plist");
  }
  static const Dictionary& payment(const Dictionary& bill, std::size_t index) {
    return *bill.get<Array>("PaymentList")->at(index).get<Dictionary>();
  }
  FakeDesktop desktop;
  QMImportManager importer{desktop.platform};
};

}  // namespace tallyvane::testing
