#include <algorithm>

#include "support/Safekeeping.h"
#include "support/ShellWords.h"

namespace tallyvane::testing {
namespace {

TEST_F(Safekeeping, MovesToAFolderItsDropboxAndBack) {
  EXPECT_EQ(done({"location"}), "Data folder: " + usual + "\nKind: usual\nBills: 1\n");
  EXPECT_EQ(done({"location", "--set", onDisk}), "The data folder is now " + onDisk + " (1 bill).\n");
  EXPECT_FALSE(cli.desktop.files.exists(usual));
  const Dictionary& settings = cli.desktop.defaults.content;
  EXPECT_EQ(settings.valueOr("QMCustomLocationEnabled", false), true);
  EXPECT_EQ(*cli.desktop.bookmarks.resolve(settings.valueOr("QMCustomLocationBookmark", Data())), "/media/disk");
  EXPECT_FALSE(settings.contains("QMPlaceChange"));
  done({"settings", "unset", "QMCusomLocationTempPath"});
  EXPECT_THAT(done({"overview"}), HasSubstr("Rent"));
  const std::vector<std::string> receipts = receiptsIn(cli.desktop, onDisk);
  EXPECT_THAT(receipts, ElementsAre(HasSubstr(onDisk)));
  EXPECT_TRUE(cli.desktop.files.exists(receipts[0]));

  const std::string dropbox = "/media/disk/Apps/Tallyvane/Tallyvane.tvdata";
  done({"location", "--dropbox"});
  EXPECT_THAT(done({"location"}), HasSubstr("Data folder: " + dropbox + "\nKind: dropbox\nBills: 1"));
  EXPECT_THAT(receiptsIn(cli.desktop, dropbox), ElementsAre(HasSubstr(dropbox)));
  done({"location", "--reset"});
  EXPECT_EQ(settings.valueOr("QMCustomLocationEnabled", true), false);
  EXPECT_EQ(settings.valueOr("QMCusomLocationTempPath", std::string("?")), "");
  EXPECT_FALSE(cli.desktop.files.exists(dropbox));
  EXPECT_THAT(receiptsIn(cli.desktop, usual), ElementsAre(HasSubstr(usual)));
}

TEST_F(Safekeeping, TwoDataFoldersAreNeverMixed) {
  const auto refuses = [&](const Arguments& arguments, const char* why) {
    const auto before = cli.desktop.files.content;
    const Dictionary settings = cli.desktop.defaults.content;
    EXPECT_THAT(cli.run(arguments).err, HasSubstr(why));
    EXPECT_TRUE(cli.desktop.files.content == before && cli.desktop.defaults.content == settings) << why;
  };
  refuses({"location", "--reset"}, "is there already");
  EXPECT_EQ(cli.run({"location", "--set", ""}).status, 2);
  refuses({"location", "--dropbox"}, "Name the Dropbox folder");
  refuses({"location", "--set", "/nowhere"}, "no folder");
  refuses({"location", "--set", "/media/disk", "--adopt"}, "no data folder with bills");
  refuses({"location", "--finish"}, "No change of place");
  const std::string oldBackup = usual.substr(0, usual.rfind('/')) + "/0123456789ABCDEF0123456789ABCDEF";
  (void)cli.desktop.files.createFolder(oldBackup);
  refuses({"location", "--set", oldBackup}, "where backups go");
  (void)cli.desktop.files.createFolder(usual + "/inside");
  refuses({"location", "--set", usual + "/inside"}, "lie in one another");

  const auto before = contentOf(cli.desktop, usual);
  EXPECT_THAT(done({"location", "--set", "/media/disk", "--copy"}), HasSubstr("The one before stays in " + usual));
  EXPECT_EQ(contentOf(cli.desktop, usual), before);
  refuses({"location", "--reset"}, "1 bill in");
  EXPECT_THAT(done({"location", "--reset", "--adopt"}), HasSubstr("stays in " + onDisk));
  refuses({"location", "--set", "/media/disk"}, "Add --adopt");
  cli.desktop.files.content.erase(onDisk + "/billindex.plist");
  refuses({"location", "--set", "/media/disk"}, "Move it away first");
}

/// Commands that need the bills say in one sentence why they cannot have them, and write nothing anywhere.
void refusesAll(CliDesktop& cli, const std::string& why) {
  const auto before = cli.desktop.files.content;
  for (const char* line :
       {"overview", "show Rent", "add A --due today --repeat weekly --amount 1 --force", "edit Rent --amount 1",
        "pay Rent", "stats", "graph Rent", "paid", "income", "tags", "tags --set A", "menu", "widget", "mail",
        "mail queue", "backup", "autopay", "delete-all --yes"}) {
    const Outcome outcome = cli.run(wordsOf(line));
    EXPECT_EQ(outcome.status, 1) << line;
    EXPECT_THAT(outcome.err, HasSubstr(why)) << line;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_TRUE(cli.desktop.files.content == before) << line;
  }
}

TEST_F(Safekeeping, WithoutItsDataFolderEveryCommandSaysSoAndWritesNothing) {
  (void)cli.desktop.defaults.set("QMCustomLocationEnabled", true);
  refusesAll(cli, "cannot be told");
  (void)cli.desktop.defaults.set("QMCusomLocationTempPath", "/media/stick/Tallyvane.tvdata");
  refusesAll(cli, "data folder is not there: /media/stick/Tallyvane.tvdata.");
  done({"settings", "set", "QMCustomLocationEnabled", "no"});
  EXPECT_THAT(done({"overview"}), HasSubstr("Rent"));

  done({"location", "--set", "/media/disk"});
  (void)cli.desktop.files.remove("/media/disk");
  refusesAll(cli, "data folder is not there: " + onDisk + ". Connect the disk");
  EXPECT_THAT(cli.run({"location", "--reset"}).err, HasSubstr("add --adopt"));
  done({"location", "--reset", "--adopt"});
  EXPECT_THAT(done({"overview"}), HasSubstr("no active bills"));

  cli.desktop.defaults.content = Dictionary{{"QMCustomLocationEnabled", true}};
  EXPECT_THAT(cli.run({"location", "--reset"}).err, HasSubstr("cannot be told where"));
  EXPECT_EQ(done({"location", "--reset", "--adopt"}), "The data folder is now " + usual + " (0 bills).\n");
}

}  // namespace
}  // namespace tallyvane::testing
