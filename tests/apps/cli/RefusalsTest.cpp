#include <algorithm>

#include "support/CliDesktop.h"

namespace tallyvane::testing {
namespace {

class Refusals : public ::testing::Test {
 protected:
  Refusals() {
    (void)cli.run({"add", "Rent", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "900", "--remind", "2"});
    (void)cli.run({"add", "Rent garage", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "60"});
    (void)cli.run({"add", "Old phone", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "20"});
    (void)cli.run({"archive", "Old phone"});
  }
  CliDesktop cli;
};

TEST_F(Refusals, BadInputGetsOneClearSentenceAndChangesNothing) {
  const struct {
    Arguments arguments;
    int status;
    const char* says;
  } cases[] = {
      {{"add", "", "--due", "today", "--repeat", "weekly", "--amount", "1"}, 2, "must not be empty"},
      {{"add", "  ", "--due", "today", "--repeat", "weekly", "--amount", "1"}, 2, "must not be empty"},
      {{"add", "a\x1b[2J", "--due", "today", "--repeat", "weekly", "--amount", "1"}, 2, "control character"},
      {{"add", "\xff\xfe", "--due", "today", "--repeat", "weekly", "--amount", "1"}, 2, "not valid UTF-8"},
      {{"add", "A", "--due", "2027-02-30", "--repeat", "weekly", "--amount", "1"}, 2, "2027-02-30"},
      {{"add", "A", "--due", "today", "--repeat", "sometimes", "--amount", "1"}, 2, "sometimes"},
      {{"add", "A", "--due", "today", "--repeat", "weekly", "--amount", "-5"}, 2, "negative"},
      {{"add", "A", "--due", "today", "--repeat", "weekly", "--amount", "1e15"}, 2, "1e15"},
      {{"add", "A", "--due", "today", "--repeat", "weekly", "--amount", "1", "--icon", "spaceship"}, 2, "spaceship"},
      {{"add", "A", "--due", "today", "--repeat", "weekly", "--amount", "1", "--remind", "-1"}, 2, "from 0 to 366"},
      {{"add", "A", "--due", "today", "--repeat", "weekly", "--amount", "1", "--tag", " "}, 2, "A tag"},
      {{"add", "A", "--repeat", "weekly", "--amount", "1"}, 2, "--due is required"},
      {{"add", "Rent", "--due", "today", "--repeat", "weekly", "--amount", "1"}, 1, "an active bill \"Rent\" already"},
      {{"add", "Old phone", "--due", "today", "--repeat", "weekly", "--amount", "1"}, 1, "an archived bill"},
      {{"edit", "Rent"}, 2, "Say what to change"},
      {{"edit", "Rent", "--name", "Rent garage"}, 1, "already"},
      {{"edit", "Rent", "--remind", "1", "--no-remind"}, 2, "--no-remind"},
      {{"show", "Ren"}, 1, "fits 2 bills: \"Rent\""},
      {{"show", "Rnt"}, 1, "Did you mean \"Rent\"?"},
      {{"show", ""}, 1, "There is no bill"},
      {{"archive", "Old phone"}, 1, "is archived"},
      {{"restore", "Rent g"}, 1, "is active"},
      {{"overview", "--range", "7"}, 2, "--range"},
      {{"repeat", "weekly", "--count", "0"}, 2, "--count"},
      {{"settings", "set", "QMDueSoonDays", "soon"}, 2, "whole number from 0"},
      {{"settings", "set", "QMReminderTime", "24:00"}, 2, "09:30"},
      {{"settings", "set", "QMCustomLocationEnabled", "perhaps"}, 2, "yes or no"},
      {{"settings", "set", "QMCustomLocationEnabled", "yes"}, 1, "Name the folder first"},
      {{"settings", "set", "QMCustomLocationBookmark", "/nowhere"}, 1, "no folder /nowhere"},
      {{"settings", "get", "QMDueSonDays"}, 2, "Did you mean \"QMDueSoonDays\"?"},
      {{"tags", "--set", "a", "b\x07"}, 2, "line break"},
      {{"pay", "Rent", "--amount", "-1"}, 2, "negative"},
      {{"pay", "Rent", "--amount", "inf"}, 2, "not an amount"},
      {{"pay", "Rent", "--date", "tomorrow"}, 2, "lies ahead"},
      {{"pay", "Rent", "--receipt", "/none.pdf"}, 1, "no file \"/none.pdf\""},
      {{"pay", "Rent", "--receipt", "/home"}, 1, "is a folder"},
      {{"undo", "Rent"}, 1, "no payment to undo"},
      {{"payments", "Rent", "--remove", "1"}, 1, "has no payments"},
      {{"payments", "Rent", "--amount", "1"}, 2, "--edit N"},
      {{"payments", "Rent", "--edit", "1"}, 2, "what to correct"},
      {{"overviw"}, 2, "Did you mean \"overview\"?"},
  };
  for (const auto& c : cases) {
    const auto before = cli.desktop.files.content;
    const Outcome outcome = cli.run(c.arguments);
    EXPECT_EQ(outcome.status, c.status) << ::testing::PrintToString(c.arguments);
    EXPECT_THAT(outcome.err, HasSubstr(c.says)) << ::testing::PrintToString(c.arguments);
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_TRUE(cli.desktop.files.content == before) << ::testing::PrintToString(c.arguments);
    EXPECT_FALSE(cli.locked);
  }
}

TEST_F(Refusals, AnIndexThatCannotBeReadIsNeverTakenForNoBills) {
  const std::string oddList = writePropertyList(Dictionary{{"ActiveBills", "A1"}, {"ArchivedBills", Array{"B"}}});
  for (const std::string& index : {std::string("<plist>"), oddList}) {
    cli.desktop.files.content[cli.dataFolder + "/billindex.plist"] = index;
    const auto before = cli.desktop.files.content;
    for (const Arguments& command : std::vector<Arguments>{
             {"overview"}, {"add", "New", "--due", "today", "--repeat", "weekly", "--amount", "1"}}) {
      const Outcome outcome = cli.run(command);
      EXPECT_EQ(outcome.status, 1);
      EXPECT_THAT(outcome.err, HasSubstr("billindex.plist"));
    }
    EXPECT_TRUE(cli.desktop.files.content == before);
  }
}

TEST_F(Refusals, ALockThatCannotBeHadEndsTheCommandBeforeItWrites) {
  cli.lockFailure = "/state/lock: busy";
  const auto before = cli.desktop.files.content;
  const Outcome outcome = cli.run({"archive", "Rent"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("/state/lock: busy"));
  EXPECT_TRUE(cli.desktop.files.content == before);
}

TEST_F(Refusals, SettingsAreStoredInTheirTypeAndShownAsTyped) {
  const struct {
    const char* key;
    const char* typed;
    const char* shown;
  } cases[] = {{"QMDueSoonDays", "14", "14\n"},
               {"qmavoidweekends", "0", "0\n"},
               {"QMReminderTime", "9:30", "09:30\n"},
               {"QMCalendarList", "Home, Bills", "Home, Bills\n"},
               {"QMDontCountAuto", "ON", "yes\n"},
               {"QMCustomLocationBookmark", "/home/ada/Tallyvane.tvdata/", "/home/ada\n"}};
  for (const auto& c : cases) EXPECT_EQ(cli.run({"settings", "set", c.key, c.typed}).out, c.shown) << c.key;
  EXPECT_TRUE(cli.desktop.defaults.object("QMDueSoonDays") == Value(14));
  EXPECT_TRUE(cli.desktop.defaults.object("QMCalendarList") == Value(Array{"Home", "Bills"}));
  // A new folder is looked for anew.
  EXPECT_TRUE(cli.desktop.defaults.object("QMCusomLocationTempPath") == Value(""));
  EXPECT_EQ(cli.run({"settings", "unset", "QMDueSoonDays"}).out, "7\n");
  EXPECT_FALSE(cli.desktop.defaults.content.contains("QMDueSoonDays"));
}

}  // namespace
}  // namespace tallyvane::testing
