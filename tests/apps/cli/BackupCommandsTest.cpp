#include "support/Killed.h"
#include "support/Safekeeping.h"

namespace tallyvane::testing {
namespace {

TEST_F(Safekeeping, BacksUpOnceADayAndTellsOfIt) {
  EXPECT_EQ(done({"backup", "--status"}), "No backup has been made yet.\n");
  EXPECT_EQ(done({"backup"}), "Backed up 1 bill.\n");
  EXPECT_EQ(done({"backup"}), "Today's backup was made already; it has 1 bill.\n");
  EXPECT_EQ(contentOf(cli.desktop, backup()), contentOf(cli.desktop, usual));
  EXPECT_THAT(done({"backup", "--status"}), AllOf(HasSubstr("Wed, Mar 10, 2027"), HasSubstr("Place: " + backup()),
                                                  HasSubstr("Bills: 1"), HasSubstr(" kB")));
}

TEST_F(Safekeeping, WhatCannotBeCopiedNeverCostsThePreviousBackup) {
  done({"backup"});
  cli.desktop.clock.moment += std::chrono::hours{24};
  const std::string earlier = backup();
  const auto refuses = [&](const char* why) {
    const Outcome outcome = cli.run({"backup"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr(why));
    EXPECT_EQ(backup(), earlier);
    EXPECT_TRUE(cli.desktop.files.exists(earlier + "/billindex.plist"));
  };
  cli.desktop.files.space = 10;
  refuses("has only 0.0 kB left");
  cli.desktop.files.space = 1'000'000;
  const std::string index = std::exchange(cli.desktop.files.content[usual + "/billindex.plist"], "rubbish");
  refuses("list of bills");
  cli.desktop.files.content.erase(usual + "/billindex.plist");
  refuses("no bills yet");
  cli.desktop.files.content[usual + "/billindex.plist"] = index;
  EXPECT_EQ(done({"backup"}), "Backed up 1 bill.\n");
  EXPECT_FALSE(cli.desktop.files.exists(earlier));
}

TEST_F(Safekeeping, RestoresAfterAQuestionWithRemindersOfWhatIsThere) {
  EXPECT_THAT(cli.run({"restore-backup", "--yes"}).err, HasSubstr("no complete backup"));
  cli.desktop.defaults.content.set("QMEnableNotificationCenter", true);
  done({"backup"});
  const auto before = contentOf(cli.desktop, usual);
  done({"add", "Gym", "--due", "2027-03-20", "--repeat", "weekly", "--amount", "5", "--remind", "1"});
  EXPECT_THAT(cli.run({"restore-backup"}).err,
              HasSubstr("add --yes to restore the backup of Wed, Mar 10, 2027 with 1"));
  cli.asker = [](const std::string&) { return "n"; };
  EXPECT_THAT(cli.run({"restore-backup"}).err, HasSubstr("Nothing was changed"));
  cli.desktop.files.content[usual + "/billindex.plist"] = "damaged";
  EXPECT_THAT(cli.run({"overview"}).err, HasSubstr("\"tallyvane restore-backup\" brings back the last backup."));
  cli.asker = [](const std::string&) { return "y"; };
  EXPECT_EQ(done({"restore-backup"}), "Restored the backup of Wed, Mar 10, 2027 with 1 bill.\n");
  EXPECT_EQ(contentOf(cli.desktop, usual), before);
  EXPECT_FALSE(cli.desktop.files.exists(usual + ".replaced"));
  EXPECT_EQ(cli.snapshot(), std::vector<std::string>{"Rent"});
}

TEST_F(Safekeeping, AfterARestoreThatWasKilledTheNextCommandSaysWhatToDo) {
  done({"backup"});
  const auto kept = contentOf(cli.desktop, usual);
  done({"edit", "Rent", "--amount", "1"});
  const auto old = contentOf(cli.desktop, usual);
  const auto files = cli.desktop.files;
  int interrupted = 0;
  bool killed = true;
  for (int change = 1; killed; ++change) {
    cli.desktop.files = files;
    killed = killedAt(cli, change, {"restore-backup", "--yes"});
    const auto atKill = cli.desktop.files;
    if (!cli.desktop.files.exists(usual + ".replaced")) {
      EXPECT_TRUE(contentOf(cli.desktop, usual) == old || contentOf(cli.desktop, usual) == kept) << change;
      continue;
    }
    ++interrupted;
    EXPECT_EQ(contentOf(cli.desktop, usual + ".replaced"), old) << change;
    for (const char* command : {"overview", "backup", "tags", "widget", "mail", "location"})
      EXPECT_THAT(cli.run({command}).err + cli.run({command}).out, HasSubstr("whole in " + usual + ".replaced"));
    EXPECT_TRUE(json::parse(done({"location", "--json"}))["bills"].is_null());
    done({"restore-backup", "--undo"});
    EXPECT_EQ(contentOf(cli.desktop, usual), old) << change;
    cli.desktop.files = atKill;
    done({"restore-backup", "--yes"});
    EXPECT_EQ(contentOf(cli.desktop, usual), kept) << change;
    EXPECT_FALSE(cli.desktop.files.exists(usual + ".replaced"));
  }
  EXPECT_GE(interrupted, 2);
}

}  // namespace
}  // namespace tallyvane::testing
