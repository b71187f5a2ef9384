#include "support/PaymentCommands.h"

namespace tallyvane::testing {
namespace {

TEST_F(PaymentCommands, PayingProposesTheAmountKeepsTheReceiptAndMovesTheDueDate) {
  cli.desktop.files.content["/home/ada/rent.pdf"] = "receipt";
  EXPECT_EQ(done({"pay", "rent", "--receipt", "/home/ada/rent.pdf", "--note", "by post"}),
            "Paid \"Rent\": $900.00 on Wed, Mar 10, 2027.\n"
            "Due\t2027-03-13 → 2027-04-13\nAverage\t0.00 → 900.00\n");
  const json payment = doneJson({"payments", "Rent"}).at("payments").at(0);
  EXPECT_EQ(payment.at("note"), "by post");
  EXPECT_EQ(cli.desktop.files.content[payment.at("receipt")], "receipt");
  const json part = doneJson({"pay", "Rent", "--amount", "100", "--date", "yesterday", "--keep-due-date"});
  EXPECT_EQ(part.at("dueDate"), "2027-04-13");
  EXPECT_EQ(part.at("lastPayment"), "2027-03-10");
  EXPECT_EQ(part.at("average"), 500.0);
  EXPECT_THAT(cli.sounds, IsEmpty());
}

TEST_F(PaymentCommands, WithoutAnAmountOfItsOwnTheLastPaymentsIsProposed) {
  change(rent, "Amount", 0);
  EXPECT_THAT(cli.run({"pay", "Rent"}).err, HasSubstr("--amount N"));
  change(rent, "PaymentList", Array{Value(Dictionary{{"Amount", 35}})});
  EXPECT_EQ(doneJson({"pay", "Rent"}).at("payments").at(1).at("amount"), 35);
}

TEST_F(PaymentCommands, ASoundIsPlayedOnlyWhereItIsAskedForAndChosen) {
  done({"pay", "Rent", "--sound"});
  cli.desktop.defaults.content.set("QMXPlayInterfaceSounds", true);
  done({"pay", "Rent"});
  EXPECT_THAT(cli.sounds, IsEmpty());
  done({"pay", "Rent", "--sound"});
  EXPECT_THAT(cli.sounds, ElementsAre("trumpet"));
}

TEST_F(PaymentCommands, UndoingTakesTheLastPaymentBackAndKeepsTheOthersInTheirOrder) {
  for (const char* amount : {"16777216", "1", "1"}) done({"pay", "Rent", "--amount", amount});
  const Dictionary before = cli.bill(rent);
  done({"pay", "Rent", "--amount", "4"});
  EXPECT_EQ(savesOfBill(rent, {"undo", "Rent"}), 1);
  EXPECT_EQ(cli.bill(rent), before);  // the total, too: a sum of floats depends on their order
  done({"pay", "Rent", "--amount", "5"});
  EXPECT_THAT(amounts("Rent"), ElementsAre(16777216, 1, 1, 5));
  change(rent, "Bid", std::nullopt);
  done({"undo", "Rent"});
  EXPECT_THAT(amounts("Rent"), ElementsAre(16777216, 1, 1));
}

TEST_F(PaymentCommands, UndoingSaysWhyItWillNotAndWhatStaysAsItIs) {
  done({"pay", "Rent"});
  done({"pay", "Rent", "--date", "2027-02-01"});
  EXPECT_THAT(cli.run({"undo", "Rent"}).err, AllOf(HasSubstr("Feb 1"), HasSubstr("Mar 10"), HasSubstr("--remove 2")));
  done({"payments", "Rent", "--remove", "2"});
  change(rent, "Balance", 50);
  change(rent, "Repeat", Array{1, 1});
  const Outcome undone = cli.run({"undo", "Rent"});
  EXPECT_EQ(undone.status, 0);
  EXPECT_THAT(undone.err, AllOf(HasSubstr("moves ahead here, too"), HasSubstr("balance stays")));
}

TEST_F(PaymentCommands, CorrectingAPaymentBringsTotalsAndLastPaymentUpToDate) {
  done({"pay", "Rent", "--amount", "10", "--date", "2027-02-01"});
  done({"pay", "Rent", "--amount", "20"});
  done({"payments", "Rent", "--edit", "1", "--amount", "30", "--note", "late"});
  EXPECT_EQ(*cli.bill(rent).find("TotalPaid"), Value(50.0));
  EXPECT_EQ(doneJson({"payments", "Rent"}).at("payments").at(0).at("note"), "late");
  EXPECT_THAT(cli.run({"payments", "Rent", "--remove", "3"}).err, HasSubstr("from 1 to 2"));
  done({"payments", "Rent", "--remove", "2"});
  EXPECT_EQ(doneJson({"show", "Rent"}).at("lastPayment"), "2027-02-01");
  done({"payments", "Rent", "--edit", "1", "--date", "2027-01-05"});
  EXPECT_EQ(doneJson({"show", "Rent"}).at("lastPayment"), "2027-01-05");
  EXPECT_EQ(doneJson({"show", "Rent"}).at("dueDate"), "2027-05-13");
}

TEST_F(PaymentCommands, AReceiptIsFoundAgainInAMovedFolderOrMarkedMissing) {
  const auto entry = [](const char* receipt) { return Value(Dictionary{{"Amount", 1}, {"Receipt", receipt}}); };
  change(rent, "PaymentList", Array{entry("/old/Tallyvane.tvdata/A.pdf"), entry("/old/Tallyvane.tvdata/B.pdf")});
  cli.desktop.files.content[cli.dataFolder + "/A.pdf"] = "here";
  const json payments = doneJson({"payments", "Rent"}).at("payments");
  EXPECT_EQ(payments.at(0).at("receipt"), cli.dataFolder + "/A.pdf");
  EXPECT_TRUE(payments.at(1).at("receiptMissing"));
  EXPECT_THAT(done({"payments", "Rent"}), HasSubstr("missing: /old/Tallyvane.tvdata/B.pdf"));
}

TEST_F(PaymentCommands, AutomaticBillsAreLoggedOnceARunOnTheDayTheyWereDue) {
  const std::string phone = add({"Phone", "--due", "2027-01-05", "--repeat", "monthly", "--amount", "20", "--auto"});
  add({"Later", "--due", "2027-03-11", "--repeat", "monthly", "--amount", "20", "--auto"});
  add({"Free", "--due", "2027-01-05", "--repeat", "monthly", "--amount", "0", "--auto"});
  change(add({"Stuck", "--due", "2027-01-05", "--repeat", "monthly", "--amount", "1", "--auto"}), "Repeat",
         Array{0, 2});
  const std::string first = "Phone\t2027-01-05\t20.00\t2027-02-05\n";
  const std::string rest = "Phone\t2027-02-05\t20.00\t2027-03-05\nPhone\t2027-03-05\t20.00\t2027-04-05\n";
  EXPECT_EQ(done({"autopay", "--dry-run"}), first);
  EXPECT_EQ(done({"autopay", "--dry-run", "--catch-up"}), first + rest);
  EXPECT_THAT(amounts("Phone"), IsEmpty());
  EXPECT_EQ(done({"autopay"}), first);
  EXPECT_EQ(savesOfBill(phone, {"autopay", "--catch-up"}), 1);
  EXPECT_EQ(done({"autopay"}), "");
  EXPECT_THAT(amounts("Phone"), ElementsAre(20, 20, 20));
  EXPECT_EQ(doneJson({"show", "Phone"}).at("lastPayment"), "2027-03-05");
}

TEST_F(PaymentCommands, OddPaymentsAreShownAndLostOnlyOnRequest) {
  const Array odd{Value(Dictionary{{"Amount", "7.5"}, {"Date", "May"}}), "text", Value(Dictionary{{"Date", Date()}})};
  change(rent, "PaymentList", odd);
  EXPECT_THAT(done({"payments", "Rent"}), HasSubstr("1\t\t7.50\t\t\n2\t\t0.00"));
  EXPECT_THAT(cli.run({"payments", "Rent", "--edit", "2", "--amount", "1"}).err, HasSubstr("only be removed"));
  EXPECT_THAT(doneJson({"pay", "Rent", "--amount", "1"}).at("totalPaid"), 8.5);
  EXPECT_EQ(cli.bill(rent).get<Array>("PaymentList")->size(), 4U);

  change(rent, "PaymentList", "none");
  add({"Phone", "--due", "2027-03-05", "--repeat", "monthly", "--amount", "20", "--auto"});
  change(rent, "PayType", 1);
  change(rent, "DueDate", Date());
  const auto before = cli.desktop.files.content;
  for (const char* command : {"pay", "undo", "payments"})
    EXPECT_THAT(cli.run({command, "Rent"}).err, HasSubstr("\"PaymentList\"")) << command;
  EXPECT_EQ(cli.desktop.files.content, before);
  const Outcome rest = cli.run({"autopay"});
  EXPECT_THAT(rest.err, HasSubstr("\"Rent\" was passed over"));
  EXPECT_THAT(rest.out, AllOf(HasSubstr("Phone"), Not(HasSubstr("Rent"))));
}

}  // namespace
}  // namespace tallyvane::testing
