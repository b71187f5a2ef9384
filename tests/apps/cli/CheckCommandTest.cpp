#include "support/CheckCommands.h"

namespace tallyvane::testing {
namespace {

TEST_F(CheckCommand, ASoundFolderHasNoFindings) {
  add({"Rent", "--due", "2027-03-13", "--repeat", "never", "--amount", "9", "--tag", "Home"});
  cli.desktop.files.content["/home/ada/rent.pdf"] = "receipt";
  done({"pay", "Rent", "--receipt", "/home/ada/rent.pdf"});
  done({"income", "add", "Pay", "--amount", "5", "--repeat", "weekly", "--from", "2027-03-12"});
  cli.desktop.files.content[inDataFolder(".hidden")] = "?";
  EXPECT_THAT(cli.findings(), IsEmpty());
  EXPECT_EQ(done({"check"}), "");
  cli.terminal.interactive = true;
  EXPECT_EQ(done({"check"}), "7 files read, nothing found.\n");
}

TEST_F(CheckCommand, SaysWhatIsWrongInABill) {
  const Dictionary payment{{"Amount", 1}, {"Date", Date()}, {"Note", ""}, {"Receipt", ""}};
  const auto paid = [&](std::string_view key, Value value) { return Value(Array{Value(with(payment, key, value))}); };
  const struct {
    const char* key;
    std::optional<Value> value;  ///< none takes the key out
    const char* kind;
    const char* text;
  } cases[] = {
      {"DueDate", std::nullopt, "noDueDate", "\"DueDate\" is missing"},
      {"DueDate", Value("soon"), "noDueDate", "is a text where a date should be"},
      {"Repeat", std::nullopt, "invalidRepeat", "is missing"},
      {"Repeat", Value(Array{1, 5}), "invalidRepeat", "a unit that there is not"},
      {"Repeat", Value(Array{0, 2}), "invalidRepeat", "never moves"},
      {"Repeat", Value(Array{1}), "invalidRepeat", "two whole numbers"},
      {"Rev", std::nullopt, "oddKey", "\"Rev\" is missing"},
      {"Amount", Value("9.50"), "oddKey", "\"Amount\" is a text where a number should be"},
      {"Average", Value(std::nan("")), "oddKey", "no finite number"},
      {"RemindMe", Value("yes"), "oddKey", "where yes or no should be"},
      {"Tags", Value(Array{"Home", 1}), "oddKey", "entries that are no texts"},
      {"PaymentList", Value("none"), "oddKey", "where a list should be"},
      {"PaymentList", Value(Array{"text"}), "oddPayment", "payment 1: is no payment"},
      {"PaymentList", paid("Date", "May"), "oddPayment", "payment 1: \"Date\" is a text"},
      {"PaymentList", paid("Receipt", "/old/R.pdf"), "receiptGone", "/old/R.pdf"},
  };
  for (const auto& row : cases) {
    putBill(b, row.value ? with(billOf(b), row.key, *row.value) : without(billOf(b), row.key));
    const Outcome outcome = cli.run({"check", "--json"});
    EXPECT_EQ(outcome.status, 1);
    const auto findings = json::parse(outcome.out).at("findings");
    ASSERT_EQ(findings.size(), 1U) << row.key << outcome.out;
    EXPECT_EQ(findings[0].at("kind"), row.kind);
    EXPECT_EQ(findings[0].at("bill"), "Bill B");
    EXPECT_THAT(findings[0].at("problem").get<std::string>(), HasSubstr(row.text));
  }
}

TEST_F(CheckCommand, SaysWhatIsWrongWithTheListsAndTheOtherFiles) {
  putBill(c, billOf(c));
  putIndex(cli.desktop,
           {{"ActiveBills", Array{a, a, b, std::string(32, 'D'), "../up", 7}}, {"DeletedBills", Array{b}}});
  putBill(c + " (copy)", billOf(c));
  cli.desktop.files.putPlist(inDataFolder("notes.plist"), Dictionary{{"Other", 1}});
  for (const char* name : {"broken.plist", "tagindex.plist"}) cli.desktop.files.content[inDataFolder(name)] = "rubbish";
  cli.desktop.files.putPlist(inDataFolder("incomeindex.plist"), Array());
  cli.desktop.files.putPlist(inDataFolder("mailindex.plist"), Dictionary{{"PendingMessages", Array{"Rent"}}});
  cli.desktop.files.content[inDataFolder("x.plist.unreadable-1")] = "rubbish";
  const std::string index = "billindex.plist ";
  EXPECT_THAT(cli.findings(),
              UnorderedElementsAre("oddEntry " + index + "ActiveBills", "oddKey " + index + "ArchivedBills",
                                   "repeated " + index + "ActiveBills", "inSeveralLists " + index,
                                   "withoutFile " + index + "ActiveBills", "oddEntry " + index + "ActiveBills",
                                   "inNoList " + c + ".plist ", "otherBill " + c + " (copy).plist Bid",
                                   "foreignFile notes.plist ", "unreadable broken.plist ", "unreadable tagindex.plist ",
                                   "unreadable incomeindex.plist ", "oddEntry mailindex.plist Rent",
                                   "keptCopy x.plist.unreadable-1 "));
  EXPECT_THAT(cli.run({"check"}).out, HasSubstr("Bill C\tis in no list\t" + c + ".plist\n"));
  cli.desktop.files.content[inDataFolder("billindex.plist")] = "rubbish";
  EXPECT_THAT(cli.findings(), AllOf(Contains("unreadable " + index), Not(Contains("inNoList " + c + ".plist "))));
}

TEST_F(Repairs, TakeDoublesOffAndPutABillWhereThePersonSays) {
  answering("a");
  const std::string before = cli.desktop.files.content[inDataFolder("billindex.plist")];
  EXPECT_THAT(done({"check", "--repair"}),
              AllOf(HasSubstr("2 double entries"), HasSubstr("\"Bill C\" is active now"), HasSubstr(copy)));
  EXPECT_THAT(questions, ElementsAre(HasSubstr("\"Bill C\" is in no list (due 2027-03-13, 0 payments)")));
  EXPECT_THAT(cli.listed("ActiveBills"), ElementsAre(a, b, c));
  EXPECT_THAT(cli.listed("DeletedBills"), IsEmpty());
  EXPECT_EQ(cli.desktop.files.content[copy + "/billindex.plist"], before);
  EXPECT_EQ(cli.desktop.notifications.scheduledList.size(), 1U);
  EXPECT_EQ(done({"check", "--repair"}), "There was nothing to repair.\n");
}

TEST_F(Repairs, BringNoBillBackByThemselves) {
  const Outcome outcome = cli.run({"check", "--repair"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("1 bill is in no list: nobody can be asked"), HasSubstr("1 problem left")));
  answering("");
  EXPECT_EQ(cli.run({"check", "--repair"}).status, 1);
  answering(std::nullopt);
  EXPECT_EQ(cli.run({"check", "--repair"}).status, 1);
  EXPECT_THAT(cli.listed("ActiveBills"), ElementsAre(a, b));
  answering("d");
  done({"check", "--repair"});
  EXPECT_THAT(cli.listed("DeletedBills"), ElementsAre(c));
  EXPECT_TRUE(cli.desktop.files.exists(copy + "-2"));
}

TEST_F(Repairs, ThatCannotBeMadeLeaveEverythingAsItWas) {
  answering("a");
  const auto before = cli.desktop.files.content;
  for (const int call : {1, 2}) {  // the copy, the index
    FailingFileStore failing(cli.desktop.files, call);
    EXPECT_EQ(cli.runOn(failing, {"check", "--repair"}).status, 1);
    EXPECT_EQ(failing.calls() >= call, true);
    EXPECT_EQ(cli.desktop.files.content, before) << call;
    EXPECT_THAT(cli.desktop.notifications.scheduledList, IsEmpty());
  }
  putIndex(cli.desktop, {{"ActiveBills", "all"}});
  EXPECT_THAT(cli.run({"check", "--repair"}).err, HasSubstr("\"ActiveBills\" is not a list"));
}

}  // namespace
}  // namespace tallyvane::testing
