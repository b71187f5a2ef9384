#include "support/CliCommands.h"

namespace tallyvane::testing {
namespace {

struct ImportCommand : CliCommands {
  void putOld(const std::string& name, const Value& record, const std::string& folder = "/media/Tallyvane") {
    cli.desktop.files.putPlist(folder + "/Data/" + name, record);
  }
  static Dictionary oldBill(bool active) {
    return {{"Next_Due", Date()},         {"Repeat_a", 2},
            {"Repeat_b", "Weeks"},        {"Pay_Amounts", Array{1, 2}},
            {"Pay_Notes", Array{"", ""}}, {"Pay_Attachment", Array{"", ""}},
            {"Is_Active", active}};
  }
};

TEST_F(ImportCommand, ADryRunListsWhatEachFileBecomesAndChangesNothing) {
  putOld("Rent.plist", oldBill(true));
  putOld("Gym.plist", oldBill(false));
  Dictionary once = oldBill(true);
  once.set("Repeat_b", "Never");
  putOld("Once.plist", once);
  cli.desktop.files.content["/media/Tallyvane/Data/scrap"] = "?";
  done({"tags"});
  const auto before = cli.desktop.files.content;
  EXPECT_EQ(done({"import", "/media/Tallyvane/", "--dry-run"}),
            "Gym.plist\tGym\t1969-12-31\tEvery 2 weeks\t2\tarchived\n"
            "Once.plist\tOnce\t4000-12-31\tNever\t2\tactive\n"
            "Rent.plist\tRent\t1969-12-31\tEvery 2 weeks\t2\tactive\n"
            "scrap\tscrap\t\t\t0\tarchived; not readable\n");
  EXPECT_EQ(cli.desktop.files.content, before);
}

TEST_F(ImportCommand, ImportsOnceAndAgainOnlyOnRequest) {
  putOld("Rent.plist", oldBill(true));
  EXPECT_EQ(done({"import", "/media/Tallyvane"}), "Imported 1 bill. The old files stay where they are.\n");
  EXPECT_EQ(cli.listed("ActiveBills").size(), 1U);
  EXPECT_THAT(cli.run({"import", "/media/Tallyvane"}).err, AllOf(HasSubstr("\"Rent\""), HasSubstr("--force")));
  done({"import", "/media/Tallyvane", "--force"});
  EXPECT_EQ(cli.listed("ActiveBills").size(), 2U);
}

TEST_F(ImportCommand, AnErrorEndsTheImportAndWhatCameInBeforeStays) {
  putOld("A.plist", oldBill(true));
  Dictionary broken = oldBill(true);
  broken.set("Pay_Notes", Array());
  putOld("B.plist", broken);
  const Outcome outcome = cli.run({"import", "/media/Tallyvane"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("at \"B\" after 1 bill,"), HasSubstr("fewer notes")));
  EXPECT_EQ(cli.listed("ActiveBills").size(), 1U);
}

TEST_F(ImportCommand, WhenNothingCameInTheLocationStaysAsItWas) {
  const std::string usual = "/home/ada/.local/share/Tallyvane";
  (void)cli.desktop.files.createFolder(usual + "/Data");
  (void)cli.desktop.files.createFolder("/media/disk/Tallyvane.tvdata");
  cli.desktop.defaults.content =
      Dictionary{{"QMCustomLocationEnabled", true}, {"QMCusomLocationTempPath", "/media/disk/Tallyvane.tvdata"}};
  const Dictionary before = cli.desktop.defaults.content;
  EXPECT_EQ(done({"import"}), "Imported 0 bills. The old files stay where they are.\n");
  EXPECT_EQ(cli.desktop.defaults.content, before);
  putOld("Rent.plist", oldBill(true), usual);
  done({"import"});
  EXPECT_EQ(cli.desktop.defaults.content.valueOr("QMCustomLocationEnabled", true), false);
  EXPECT_EQ(cli.listed("ActiveBills").size(), 1U);
}

TEST_F(ImportCommand, WithoutAFolderNoBillsAreLeftOutOfSightOrMixed) {
  const std::string usual = "/home/ada/.local/share/Tallyvane";
  putOld("Rent.plist", oldBill(true), usual);
  (void)cli.desktop.files.createFolder("/media/disk");
  (void)add({"Gym", "--due", "2027-03-20", "--repeat", "weekly", "--amount", "5"});
  done({"location", "--set", "/media/disk", "--copy"});
  const auto refusesFor = [&](const std::string& place) {
    const auto before = cli.desktop.files.content;
    const Outcome outcome = cli.run({"import"});
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("there are bills in " + place), HasSubstr("tallyvane import " + usual)));
    EXPECT_EQ(cli.desktop.files.content, before);
    EXPECT_EQ(cli.desktop.defaults.content.valueOr("QMCustomLocationEnabled", false), true);
  };
  refusesFor("/media/disk/Tallyvane.tvdata");
  cli.desktop.files.content.erase("/media/disk/Tallyvane.tvdata/billindex.plist");
  refusesFor(usual + "/Tallyvane.tvdata");
  cli.desktop.files.content.erase(usual + "/Tallyvane.tvdata/billindex.plist");
  EXPECT_THAT(done({"import"}), HasSubstr("The data folder is now " + usual + "/Tallyvane.tvdata."));
}

TEST_F(ImportCommand, OnlyAnOldFolderOutsideTheDataFolderIsTaken) {
  (void)cli.desktop.files.createFolder("/media/Other/Data");
  (void)cli.desktop.files.createFolder(cli.dataFolder + "/Tallyvane/Data");
  EXPECT_THAT(cli.run({"import", ""}).err, HasSubstr("must not be empty"));
  EXPECT_THAT(cli.run({"import", "/media/Other"}).err, HasSubstr("named \"Tallyvane\""));
  EXPECT_THAT(cli.run({"import", "/nowhere/Tallyvane"}).err, HasSubstr("folder \"Data\""));
  EXPECT_THAT(cli.run({"import", cli.dataFolder + "/Tallyvane"}).err, HasSubstr("lies in the data folder"));
}

}  // namespace
}  // namespace tallyvane::testing
