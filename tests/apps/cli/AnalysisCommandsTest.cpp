#include "support/CliCommands.h"

namespace tallyvane::testing {
namespace {

/// Rent was paid in March and, again, in February 2027; the phone is paid automatically and overdue.
struct AnalysisCommands : CliCommands {
  AnalysisCommands() {
    add({"Rent", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "900"});
    add({"Phone", "--due", "2027-03-01", "--repeat", "monthly", "--amount", "20", "--auto"});
    done({"pay", "Rent", "--amount", "100", "--date", "2027-02-03", "--keep-due-date"});
    done({"pay", "Rent", "--amount", "300", "--date", "2027-03-03", "--keep-due-date"});
  }
};

TEST_F(AnalysisCommands, StatisticsCountBillsAndSumPayments) {
  const json all = doneJson({"stats"});
  EXPECT_EQ(all.at("bills").at("overdueOrDueSoon"), (json{{"count", 2}, {"amount", 920.0}}));
  EXPECT_EQ(all.at("bills").at("overdue"), (json{{"count", 0}, {"amount", 0.0}}));
  EXPECT_EQ(all.at("paid").at("winter"), 400.0);
  EXPECT_THAT(done({"stats", "Rent"}),
              AllOf(HasSubstr("Highest payment\t300.00 on 2027-03-03\n"),
                    HasSubstr("Lowest payment\t100.00 on 2027-02-03\n"), HasSubstr("Paid in 2027\t400.00\n")));
  EXPECT_THAT(done({"stats", "Phone"}), HasSubstr("Highest payment\tNo Payments Yet\n"));
}

TEST_F(AnalysisCommands, AGraphHasABarPerMonthOrPaymentAndIsDrawnToAFile) {
  const std::string byMonth = done({"graph", "Rent", "--by", "month"});
  EXPECT_THAT(byMonth, ::testing::StartsWith("Mar\t1.0000\t300.00\nFeb\t0.3333\t100.00\n"));
  EXPECT_EQ(std::count(byMonth.begin(), byMonth.end(), '\n'), 24);
  (void)cli.desktop.files.createFolder("/home/ada");
  done({"graph", "Rent", "--svg", "/home/ada/rent.svg"});
  EXPECT_THAT(cli.desktop.files.content["/home/ada/rent.svg"], AllOf(HasSubstr("<svg"), HasSubstr("$300.00")));
  EXPECT_EQ(cli.run({"graph", "Rent", "--svg", "/home/ada/rent.txt"}).status, 2);
}

TEST_F(AnalysisCommands, AMonthOfThePastLeavesOutBillsThatWerePaidAgainUnlessAllIsAsked) {
  EXPECT_THAT(done({"paid"}), HasSubstr("300.00"));
  const Outcome past = cli.run({"paid", "2027-02"});
  EXPECT_THAT(past.out + past.err, AllOf(HasSubstr("paid again later"), Not(HasSubstr("100.00"))));
  EXPECT_THAT(done({"paid", "2027-02", "--all"}), HasSubstr("100.00"));
}

TEST_F(AnalysisCommands, SourcesOfIncomeAreKeptCountedAndListed) {
  done({"income", "add", "Wages", "--amount", "2000", "--repeat", "monthly", "--day", "1"});
  done({"income", "add", "Bonus", "--amount", "50", "--repeat", "monthly", "--day", "20"});
  EXPECT_THAT(done({"income", "this-month"}), AllOf(HasSubstr("2000.00"), HasSubstr("2050.00")));
  EXPECT_THAT(done({"income", "dates"}), AllOf(HasSubstr("2027-03-01"), HasSubstr("2027-04-20")));
  done({"income", "remove", "Bonus"});
  EXPECT_THAT(done({"income"}), AllOf(HasSubstr("Wages"), Not(HasSubstr("Bonus"))));
  cli.desktop.files.content[cli.dataFolder + "/incomeindex.plist"] = "rubbish";
  EXPECT_EQ(cli.run({"income"}).status, 1);
  EXPECT_EQ(cli.desktop.files.content[cli.dataFolder + "/incomeindex.plist"], "rubbish");
}

TEST_F(AnalysisCommands, OddPaymentsNeitherEndNorFalsifyTheAnswers) {
  const std::string rent = doneJson({"show", "Rent"}).at("id");
  change(rent, "PaymentList",
         Array{Value(Dictionary{{"Amount", "7.5"}, {"Date", "May"}}), "text", Value(Dictionary{{"Amount", 5}})});
  EXPECT_EQ(doneJson({"stats", "Rent"}).at("paid").at("total"), 12.5);
  for (const char* command : {"graph", "stats"}) done({command, "Rent"});
  for (const char* command : {"paid", "stats"}) done({command});
  change(rent, "PaymentList", "none");
  for (const char* command : {"paid", "stats"}) {
    const Outcome told = cli.run({command});
    EXPECT_EQ(told.status, 0);
    EXPECT_THAT(told.err, HasSubstr("\"Rent\" cannot be read")) << command;
  }
}

}  // namespace
}  // namespace tallyvane::testing
