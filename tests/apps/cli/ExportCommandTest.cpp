#include "cli/input/NextDueDates.h"
#include "foundation/Calendar.h"
#include "freedesktop/EventText.h"
#include "support/Bills.h"
#include "support/ChildProcess.h"
#include "support/CliCommands.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {
namespace {

Value payment(Value amount, Date date, const std::string& note) {
  return Dictionary{{"Amount", std::move(amount)}, {"Date", date}, {"Note", note}, {"Receipt", ""}};
}

struct ExportCommand : CliCommands {
  Dictionary paidBill(const std::string& bid, const std::string& name, const Array& payments) {
    return with(bill(bid, name, noon(2027, 3, 13)), "PaymentList", payments);
  }
};

TEST_F(ExportCommand, TheTableHasARowForEachBillAndPayment) {
  putActiveBills(cli.desktop, {paidBill("B1", "Rent, \"east\"", {payment(39.9F, noon(2027, 3, 1), "late,\nby post")}),
                               without(bill("B2", "Gym", noon(2027, 3, 13)), "Repeat")});
  EXPECT_EQ(done({"export", "--csv"}),
            "record,id,name,state,date,amount,note,receipt,repeats,average,totalPaid,balance,interest,automatic,"
            "remind,reminderDays,site,tags,icon,lastPayment\r\n"
            "bill,B1,\"Rent, \"\"east\"\"\",active,2027-03-13,100,by post,,Every month,1.5,2.5,3.5,0.25,no,"
            "no,3,http://pay,Home,32x32-House,\r\n"
            "payment,B1,\"Rent, \"\"east\"\"\",active,2027-03-01,39.9,\"late,\nby post\",,,,,,,,,,,,,\r\n"
            "bill,B2,Gym,active,2027-03-13,100,by post,,Every 0 weeks,1.5,2.5,3.5,0.25,no,"
            "no,3,http://pay,Home,32x32-House,\r\n");
}

TEST_F(ExportCommand, TheCalendarFallsOnTheDaysThatPaymentsComeTo) {
  const struct {
    Date due;
    Array repeat;
    bool hasRule;
  } cases[] = {
      {noon(2027, 3, 13), {1, 2}, true},  {noon(2027, 1, 31), {1, 2}, false}, {noon(2027, 3, 13), {12, 2}, true},
      {noon(2027, 3, 13), {2, 0}, true},  {noon(2027, 3, 13), {10, 3}, true}, {noon(2027, 3, 15), {1, 1}, true},
      {noon(2027, 3, 10), {1, 1}, false}, {noon(2027, 3, 13), {0, 4}, false}, {noon(2027, 3, 13), {0, 2}, false}};
  const Platform& platform = cli.desktop.platform;
  for (const auto& row : cases) {
    putActiveBills(cli.desktop, {with(bill("B1", "Rent; \"east\"", row.due), "Repeat", row.repeat)});
    const std::string text = done({"export", "--ics"});
    EXPECT_EQ(text.find("RRULE") != std::string::npos, row.hasRule) << text;
    std::vector<Date> expected{row.due};
    for (const Date next : cli::nextDueDates(platform, row.due, row.repeat, 12)) expected.push_back(next);
    const Calendar& calendar = Calendar::of(platform.region);
    std::vector<PlacedEvent> events = eventsIn(platform.region, text)->single;
    if (events.empty())
      events = repetitionsIn(platform.region, text, calendar.startOfDay(row.due), calendar.startOfDay(expected.back()));
    ASSERT_EQ(events.size(), expected.size()) << text;
    for (std::size_t i = 0; i < expected.size(); ++i) {
      EXPECT_EQ(events[i].event.start, calendar.startOfDay(expected[i])) << text;
      EXPECT_TRUE(events[i].event.allDay);
      EXPECT_EQ(events[i].event.title, "Rent; \"east\"");
    }
  }
  putActiveBills(cli.desktop, {bill("B1", "Paid for good", distantFuture)});
  EXPECT_THAT(cli.run({"export", "--ics"}).err, HasSubstr("nothing to export"));
}

TEST_F(ExportCommand, HledgerTakesTheJournalWhateverStandsInIt) {
  const std::string hledger = "/usr/bin/hledger";
  if (!std::filesystem::exists(hledger)) GTEST_SKIP() << "hledger is not installed";
  const std::string odd = "date:foo [2027-99-99]\n; \"q\": x\n\n  end";
  std::vector<Dictionary> bills;
  for (const char* name :
       {"Miete \"Ost\"; 2. Stock", "電気　代", "(old) * rent: car | x", "=5", "a\u00a0b  c ", "", "* !"}) {
    bills.push_back(paidBill("B" + std::to_string(bills.size()), name,
                             {payment(-12.5, noon(2027, 3, 9), odd), payment(0.001, noon(2024, 2, 29), ""),
                              payment(39.9F, noon(2027, 1, 1), "ü"), payment("7.5", distantPast, odd),
                              payment(1e12, distantFuture, ""), payment(std::nan(""), Date(), ""), "none"}));
  }
  putActiveBills(cli.desktop, bills);
  const TemporaryFolder folder;
  const std::string path = folder.path + "/bills.journal";
  const auto said = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {hledger, "-f", path});
    ChildProcess process(arguments, {"LANG=C.UTF-8", "PATH=/usr/bin", "HOME=" + folder.path}, folder.path + "/said");
    EXPECT_EQ(process.ended(), 0) << process.said();
    return process.said();
  };
  for (const char* locale : {"en_US", "de_DE", "ja_JP", "fr_CH", "ar_EG", "th_TH", "eo"}) {
    cli.desktop.region.locale = locale;
    put(path, done({"export", "--hledger"}));
    EXPECT_THAT(said({"check", "--strict", "ordereddates", "parseable"}), IsEmpty()) << locale << contentOf(path);
    // Of each bill -12.5 + 0.001 + 39.9 + 7.5 + 10^12, to the hundredth.
    const std::string balance = said({"balance", "expenses", "--depth", "1", "-N", "-c", "1000.000 USD"});
    EXPECT_THAT(balance, HasSubstr("7000000000244.3")) << locale;
    EXPECT_THAT(contentOf(path), HasSubstr("left out, without a date or an amount: payment 6 of"));
  }
}

TEST_F(ExportCommand, TheSameDataGivesTheSameTextWheneverItIsExported) {
  putActiveBills(cli.desktop, {paidBill("B1", "Rent", {payment(1, noon(2027, 3, 1), "")})});
  for (const char* form : {"--json", "--csv", "--ics", "--hledger"}) {
    const std::string text = done({"export", form});
    EXPECT_THAT(text, HasSubstr("Rent"));
    cli.desktop.clock.moment += std::chrono::hours{24 * 40};
    EXPECT_EQ(done({"export", form, "--output", "/home/ada/out"}), "");
    EXPECT_EQ(cli.desktop.files.content["/home/ada/out"], text) << form;
  }
}

TEST_F(ExportCommand, WritesNothingWhereItCouldDoHarmOrWithoutAForm) {
  const auto before = cli.desktop.files.content;
  for (const std::string& path : {cli.dataFolder + "/billindex.plist", std::string("/home"), std::string("")})
    EXPECT_NE(cli.run({"export", "--csv", "--output", path}).status, 0) << path;
  EXPECT_EQ(cli.run({"export"}).status, 2);
  EXPECT_EQ(cli.run({"export", "--csv", "--json"}).status, 2);
  EXPECT_EQ(cli.desktop.files.content, before);
}

}  // namespace
}  // namespace tallyvane::testing
