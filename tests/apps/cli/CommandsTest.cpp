#include "platform/PropertyListFile.h"
#include "support/Bills.h"
#include "support/CliCommands.h"

namespace tallyvane::testing {
namespace {

class Commands : public CliCommands {
 protected:
  void addHousehold() {
    add({"Rent", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "1450", "--tag", "Home"});
    add({"電気と水道の料金", "--due", "2027-03-08", "--repeat", "monthly", "--amount", "84.5", "--tag", "Home"});
    add({"Internet", "--due", "2027-03-21", "--repeat", "every 2 weeks", "--amount", "39.90", "--auto"});
    add({"Never again", "--due", "4001-01-01", "--repeat", "never", "--amount", "0"});
  }
};

TEST_F(Commands, OverviewInAPipeIsTabSeparatedWithPlainDatesAndNumbers) {
  addHousehold();
  // The clock change of the 14th makes a day short, which does not count.
  EXPECT_EQ(done({}),
            "Overdue\t電気と水道の料金\tOverdue by 2 days\t2027-03-08\t84.50\tEvery month\n"
            "Due Soon\tRent\tDue in 3 days\t2027-03-13\t1450.00\tEvery month\n"
            "Due Later\tInternet\tDue in 10 days\t2027-03-21\t39.90\tEvery 2 weeks\n"
            "Due Later\tNever again\tNever\t4001-01-01\t0.00\tNever\n");
}

TEST_F(Commands, OverviewOnATerminalFitsItsWidth) {
  addHousehold();
  cli.terminal = {.interactive = true, .width = 60};
  EXPECT_THAT(done({"overview"}), ::testing::StartsWith("Bill              Due                   Amount\n"));
  cli.terminal.width = 31;
  EXPECT_EQ(done({"overview"}),
            "Bill          Due\n"
            "Overdue\n"
            "電気と水道…   Overdue by 2 days\n"
            "\n"
            "Due Soon\n"
            "Rent          Due in 3 days\n"
            "\n"
            "Due Later\n"
            "Internet      Due in 10 days\n"
            "Never again   Never\n");
}

TEST_F(Commands, OverviewNarrowsByRangeTagAndPayment) {
  addHousehold();
  const struct {
    Arguments options;
    std::vector<std::string> shown;
  } cases[] = {{{"--range", "5"}, {"電気と水道の料金", "Rent"}},
               {{"--range", "14"}, {"電気と水道の料金", "Rent", "Internet"}},
               {{"--range", "30", "--hide-automatic"}, {"電気と水道の料金", "Rent"}},
               {{"--tag", "Home"}, {"電気と水道の料金", "Rent"}},
               {{"--group", "archived"}, {}}};
  for (const auto& c : cases) {
    Arguments arguments = c.options;
    arguments.insert(arguments.begin(), "overview");
    std::vector<std::string> names;
    const json overview = doneJson(arguments);
    for (const json& section : overview.at("sections")) {
      for (const json& bill : section.at("bills")) names.push_back(bill.at("name"));
    }
    EXPECT_EQ(names, c.shown) << c.options[0] << c.options.back();
    // Whatever was listed, the panel's widget shows the active bills.
    EXPECT_EQ(cli.snapshot().size(), 4U) << c.options[0];
  }
}

TEST_F(Commands, AddFillsEveryPropertySoThatTheFileHasAllKeysInOrder) {
  const std::string bid =
      add({"Credit card", "--due",     "2027-03-16", "--repeat", "monthly", "--amount",         "120",
           "--balance",   "2,400",     "--interest", "18.9",     "--site",  "card.example/pay", "--tag",
           "Card",        "--tag",     "Home",       "--remind", "3",       "--icon",           "1",
           "--notes",     "two\nlines"});
  const Dictionary bill = cli.bill(bid);
  const Dictionary expected{
      {"Name", "Credit card"},
      {"Bid", bid},
      {"Icon", "32x32-Credticard-A"},
      {"DueDate", noon(2027, 3, 16) - std::chrono::hours{13}},  // midnight in New York, summer time
      {"Repeat", Array{1, 2}},
      {"Average", 0.0},
      {"LastPayment", Date(std::chrono::sys_days{std::chrono::year{1} / 1 / 1})},
      {"TotalPaid", 0.0},
      {"RemindMe", true},
      {"PaySite", "http://card.example/pay"},
      {"PaymentList", Array()},
      {"ReminderDays", 3},
      {"Balance", 2400.0},
      {"Interest", 18.9 / 100},
      {"Notes", "two\nlines"},
      {"Tags", Array{"Card", "Home"}},
      {"Amount", 120.0},
      {"PayType", 0},
      {"Rev", 0.0}};
  EXPECT_EQ(writePropertyList(bill), writePropertyList(expected));
  EXPECT_THAT(cli.listed("ActiveBills"), ElementsAre(bid));
  EXPECT_EQ(done({"tags"}), "Card\nHome\n");
  EXPECT_THAT(cli.snapshot(), ElementsAre("Credit card"));
}

TEST_F(Commands, EditChangesOnlyWhatIsNamedAndKeepsTheStoredDueDate) {
  (void)cli.desktop.defaults.set("QMAvoidWeekends", 1);  // rows show the Monday
  const std::string bid = add({"Rent", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "900", "--auto"});
  Dictionary before = cli.bill(bid);
  done({"edit", "rent", "--amount", "950", "--tag", "Flat", "--no-auto"});
  before.set("Amount", 950.0);
  before.set("Tags", Array{"Flat"});
  before.set("PayType", 0);
  EXPECT_TRUE(cli.bill(bid) == before) << writePropertyList(cli.bill(bid));
  EXPECT_EQ(done({"tags"}), "Flat\n");
}

TEST_F(Commands, RenamingTakesTheRemindersOfTheOldNameAway) {
  cli.desktop.calendars.calendarList = {{"home", "Tallyvane", "here"}};
  (void)cli.desktop.defaults.set("QMReminderEvents", true);
  add({"Rent", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "900", "--remind", "2"});
  done({"edit", "Rent", "--name", "Flat"});
  std::vector<std::string> titles;
  for (const CalendarEvent& event : cli.desktop.calendars.eventList) titles.push_back(event.title);
  EXPECT_THAT(titles, ElementsAre("Pay Flat"));
}

TEST_F(Commands, AnArchivedBillStaysArchivedAndSilentWhenEdited) {
  (void)cli.desktop.defaults.set("QMEnableNotificationCenter", true);
  const std::string bid =
      add({"Rent", "--due", "2027-03-20", "--repeat", "monthly", "--amount", "900", "--remind", "2"});
  EXPECT_EQ(cli.desktop.notifications.scheduledList.size(), 1U);
  done({"archive", "Rent"});
  done({"edit", "Rent", "--amount", "1"});
  EXPECT_THAT(cli.listed("ArchivedBills"), ElementsAre(bid));
  EXPECT_THAT(cli.listed("ActiveBills"), IsEmpty());
  EXPECT_THAT(cli.snapshot(), IsEmpty());
  EXPECT_THAT(cli.desktop.notifications.scheduledList, IsEmpty());
  EXPECT_EQ(doneJson({"show", "Rent"}).at("amount"), 1.0);
}

TEST_F(Commands, RestoreBringsBackArchivedAndDeletedBillsWithTheirReminders) {
  (void)cli.desktop.defaults.set("QMEnableNotificationCenter", true);
  const std::string bid =
      add({"Rent", "--due", "2027-03-20", "--repeat", "monthly", "--amount", "900", "--remind", "2"});
  for (const char* away : {"archive", "delete"}) {
    done({away, "Rent"});
    EXPECT_THAT(cli.listed("ActiveBills"), IsEmpty()) << away;
    EXPECT_THAT(cli.desktop.notifications.scheduledList, IsEmpty()) << away;
    done({"restore", "Rent"});
    EXPECT_THAT(cli.listed("ActiveBills"), ElementsAre(bid)) << away;
    EXPECT_THAT(cli.listed("ArchivedBills"), IsEmpty()) << away;
    EXPECT_THAT(cli.listed("DeletedBills"), IsEmpty()) << away;
    EXPECT_EQ(cli.desktop.notifications.scheduledList.size(), 1U) << away;
    EXPECT_THAT(cli.snapshot(), ElementsAre("Rent")) << away;
  }
}

TEST_F(Commands, DeleteAllAsksWithoutHoldingTheLock) {
  addHousehold();
  EXPECT_EQ(cli.run({"delete-all"}).status, 2);  // nobody to ask
  std::string answer = "no";
  cli.asker = [&](const std::string&) {
    EXPECT_FALSE(cli.locked);
    return answer;
  };
  EXPECT_EQ(cli.run({"delete-all"}).status, 1);
  EXPECT_EQ(cli.listed("ActiveBills").size(), 4U);
  answer = "y";
  done({"delete-all"});
  EXPECT_THAT(cli.listed("ActiveBills"), IsEmpty());
  EXPECT_THAT(cli.snapshot(), IsEmpty());
}

TEST_F(Commands, ABillIsNamedByIdentifierNameOrBeginning) {
  const std::string rent = add({"Rent", "--due", "today", "--repeat", "monthly", "--amount", "1"});
  const std::string garage = add({"Rent garage", "--due", "today", "--repeat", "monthly", "--amount", "2"});
  const std::string cafe = add({"Cafe\u0301", "--due", "today", "--repeat", "monthly", "--amount", "3"});
  const std::string old = add({"Rent old", "--due", "today", "--repeat", "monthly", "--amount", "4"});
  done({"archive", "Rent old"});
  const struct {
    std::string named;
    std::string bid;
  } cases[] = {{"Rent", rent},     {"rent", rent}, {rent, rent},   {"Rent g", garage},
               {"RENT G", garage}, {"CAFÉ", cafe}, {"rent o", old}};
  for (const auto& c : cases) EXPECT_EQ(doneJson({"show", c.named}).at("id"), c.bid) << c.named;
}

TEST_F(Commands, TheWidgetReadsTheSnapshotOnlyAndEscapesForThePanel) {
  add({"Gas <b>& water", "--due", "2027-03-09", "--repeat", "monthly", "--amount", "1"});
  cli.desktop.files.reads = 0;
  EXPECT_EQ(done({"widget", "--waybar"}),
            "{\"text\":\"1\",\"tooltip\":\"Gas &lt;b&gt;&amp; water: Overdue by 1 day\",\"class\":\"overdue\","
            "\"alt\":\"overdue\"}\n");
  EXPECT_EQ(doneJson({"widget"}).at("count"), 1);
  EXPECT_EQ(cli.desktop.files.reads, 0);
}

TEST_F(Commands, TheMenuIsShownAsTextUnlessItIsSwitchedOff) {
  addHousehold();
  EXPECT_EQ(done({"menu"}),
            "title\t2\ncommand\tShow Tallyvane\t\nseparator\t\t\n"
            "bill\t電気と水道の料金\tOverdue by 2 days\nbill\tRent\tDue in 3 days\n");
  done({"settings", "set", "EnableStartAtLoginMenu", "no"});
  EXPECT_THAT(done({"menu"}), HasSubstr("switched off"));
}

TEST_F(Commands, ARepeatRuleIsSaidInWordsWithItsNextDates) {
  EXPECT_EQ(done({"repeat", "every 2 weeks", "--from", "2027-03-01", "--count", "2"}),
            "Every 2 weeks\n2027-03-15\n2027-03-29\n");
}

TEST_F(Commands, EveryCommandHasHelpWithAnExample) {
  for (const char* command : {"overview", "show", "add", "edit", "archive", "restore", "delete", "delete-all", "tags",
                              "icons", "repeat", "settings", "menu", "widget"}) {
    const std::string help = done({command, "--help"});
    EXPECT_THAT(help, HasSubstr(std::string("Example:\n  tallyvane ") + command));
    EXPECT_THAT(help, HasSubstr("--json"));
  }
  EXPECT_THAT(done({"--version"}), HasSubstr("5.0.0 (build "));
}

TEST_F(Commands, TextsOfBillsNeverReachTheTerminalRaw) {
  const std::string bid = add({"Rent", "--due", "today", "--repeat", "monthly", "--amount", "1"});
  change(bid, "Notes", "\u009b31mred\u202e");
  change(bid, "Name", "a\tb\nc");
  for (const bool interactive : {false, true}) {
    cli.terminal = {.interactive = interactive, .width = 80};
    for (const auto& arguments : std::vector<Arguments>{{"show", bid}, {"show", bid, "--json"}, {}}) {
      for (const char* raw : {"\u009b", "\u202e", "a\tb"}) EXPECT_THAT(done(arguments), Not(HasSubstr(raw)));
    }
  }
}

}  // namespace
}  // namespace tallyvane::testing
