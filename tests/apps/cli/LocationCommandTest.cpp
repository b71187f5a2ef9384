#include "support/Killed.h"
#include "support/Safekeeping.h"

namespace tallyvane::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using Arguments = std::vector<std::string>;

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
  EXPECT_THAT(receiptIn(cli, onDisk), HasSubstr(onDisk));
  EXPECT_TRUE(cli.desktop.files.exists(receiptIn(cli, onDisk)));

  const std::string dropbox = "/media/disk/Apps/Tallyvane/Tallyvane.tvdata";
  done({"location", "--dropbox"});
  EXPECT_THAT(done({"location"}), HasSubstr("Data folder: " + dropbox + "\nKind: dropbox\nBills: 1"));
  EXPECT_THAT(receiptIn(cli, dropbox), HasSubstr(dropbox));
  done({"location", "--reset"});
  EXPECT_EQ(settings.valueOr("QMCustomLocationEnabled", true), false);
  EXPECT_EQ(settings.valueOr("QMCusomLocationTempPath", std::string("?")), "");
  EXPECT_FALSE(cli.desktop.files.exists(dropbox));
  EXPECT_THAT(receiptIn(cli, usual), HasSubstr(usual));
}

TEST_F(Safekeeping, TwoDataFoldersAreNeverMixed) {
  const auto refuses = [&](const Arguments& arguments, const char* why) {
    const auto before = cli.desktop.files.content;
    const Dictionary settings = cli.desktop.defaults.content;
    EXPECT_THAT(cli.run(arguments).err, HasSubstr(why));
    EXPECT_TRUE(cli.desktop.files.content == before && cli.desktop.defaults.content == settings) << why;
  };
  refuses({"location", "--reset"}, "is there already");
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

TEST_F(Safekeeping, AnUnpluggedDiskGivesOneClearSentence) {
  done({"location", "--set", "/media/disk"});
  (void)cli.desktop.files.remove("/media/disk");
  const Arguments commands[] = {{"overview"},
                                {"show", "Rent"},
                                {"add", "A", "--due", "today", "--repeat", "weekly", "--amount", "1"},
                                {"pay", "Rent"},
                                {"stats"},
                                {"graph", "Rent"},
                                {"paid"},
                                {"income"},
                                {"tags"},
                                {"menu"},
                                {"widget"},
                                {"mail"},
                                {"mail", "queue"},
                                {"backup"},
                                {"autopay"},
                                {"delete-all", "--yes"}};
  for (const Arguments& arguments : commands) {
    const Outcome outcome = cli.run(arguments);
    EXPECT_EQ(outcome.status, 1) << arguments[0];
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("data folder is not there: " + onDisk), HasSubstr("Connect the disk")))
        << arguments[0];
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  }
  EXPECT_THAT(cli.run({"location", "--reset"}).err, HasSubstr("add --adopt"));
  done({"location", "--reset", "--adopt"});
  EXPECT_THAT(done({"overview"}), HasSubstr("no active bills"));

  cli.desktop.defaults.content = Dictionary{{"QMCustomLocationEnabled", true}};
  EXPECT_THAT(cli.run({"location", "--reset"}).err, HasSubstr("cannot be told where"));
  EXPECT_EQ(done({"location", "--reset", "--adopt"}), "The data folder is now " + usual + " (0 bills).\n");
}

/// Whichever change of files or settings it is killed at, the bills are whole in the folder that the next command names
/// or uses, and the change can be ended.
TEST_F(Safekeeping, AChangeOfPlaceThatWasKilledIsBroughtToItsEnd) {
  const struct {
    Arguments before;
    Arguments change;
  } cases[] = {{{"tags"}, {"location", "--set", "/media/disk"}},
               {{"tags"}, {"location", "--set", "/media/disk", "--copy"}},
               {{"location", "--set", "/media/disk", "--copy"}, {"location", "--reset", "--adopt"}},
               {{"location", "--set", "/media/disk"}, {"location", "--reset"}},
               {{"location", "--set", "/media/disk"}, {"location", "--dropbox"}}};
  int points = 0;
  for (const auto& c : cases) {
    bool killed = true;
    for (int change = 1; killed; ++change) {
      CliDesktop other;
      setUp(other);
      ASSERT_EQ(other.run(c.before).status, 0);
      killed = killedAt(other, change, c.change);
      points += killed ? 1 : 0;
      const std::string where = ::testing::PrintToString(c.change) + std::to_string(change);
      const Outcome next = other.run({"overview"});
      if (next.status != 0) {
        const std::size_t at = next.err.find("whole in ") + 9;
        const std::string whole = next.err.substr(at, next.err.find(". \"", at) - at);
        EXPECT_EQ(contentOf(other.desktop, whole).size(), 4U) << where << next.err;
        EXPECT_EQ(other.run({"settings", "unset", "QMCustomLocationBookmark"}).status, 1) << where;
        const Outcome finished = other.run({"location", "--finish"});
        EXPECT_EQ(finished.status, 0) << where << finished.err;
      }
      EXPECT_THAT(other.run({"overview"}).out, HasSubstr("Rent")) << where;
      const std::string folder = nlohmann::json::parse(other.run({"location", "--json"}).out).at("folder");
      EXPECT_EQ(receiptIn(other, folder).rfind(folder, 0), 0U) << where;
      EXPECT_TRUE(other.desktop.files.exists(receiptIn(other, folder))) << where;
      const bool isMove = c.change.back() != "--copy" && c.change.back() != "--adopt";
      int folders = 0;
      for (const auto& [path, bytes] : other.desktop.files.content)
        folders += path.ends_with("/billindex.plist") ? 1 : 0;
      if (isMove) {
        EXPECT_EQ(folders, 1) << where;
      }
    }
  }
  std::printf("killed at %d points\n", points);
  EXPECT_GT(points, 30);
}

}  // namespace
}  // namespace tallyvane::testing
