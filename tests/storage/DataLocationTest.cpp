#include <gtest/gtest.h>

#include "storage/DataFolder.h"
#include "support/LoadedBills.h"

namespace tallyvane::testing {
namespace {

using DataLocation = LoadedBills;

Data bytes(const std::string& text) { return Data{{text.begin(), text.end()}}; }

TEST_F(DataLocation, TheDefaultFolderIsMadeAndASetterNeverChangesIt) {
  loader.setTallyvaneDirectory("/elsewhere");
  loader.setTallyvaneDropboxFolder("/elsewhere");
  EXPECT_EQ(loader.tallyvaneDirectory(), dataFolder);
  EXPECT_TRUE(desktop.files.isFolder(dataFolder));
  EXPECT_EQ(loader.tallyvaneDropboxFolder(), "");
  EXPECT_EQ(loader.tallyvaneBackupPath(), "/home/ada/.local/share/Tallyvane");
  EXPECT_EQ(loader.tallyvaneBackupPathPhone(), "/home/ada/.local/share/com.Quillmoor.Tallyvane-Touch");
  EXPECT_TRUE(desktop.files.isFolder("/home/ada/.local/share/com.Quillmoor.Tallyvane-Touch"));
}

TEST_F(DataLocation, ACustomLocationFollowsItsMisspelledCacheAndItsBookmark) {
  struct Case {
    std::optional<std::string> cache;
    std::string bookmark;
    bool dropbox;
    std::optional<std::string> path;
    std::optional<Value> cacheAfterwards;
    int resolved;
  };
  const Case cases[] = {
      {"/Volumes/X/Tallyvane.tvdata", "/Users/a", false, "/Volumes/X/Tallyvane.tvdata", "/Volumes/X/Tallyvane.tvdata",
       0},
      {std::nullopt, "/Users/a", false, std::nullopt, std::nullopt, 0},
      {"", "/Users/a/Dropbox", true, "/Users/a/Dropbox/Apps/Tallyvane/Tallyvane.tvdata",
       "/Users/a/Dropbox/Apps/Tallyvane/Tallyvane.tvdata", 1},
      {"", "/Users/a", false, "/Users/a/Tallyvane.tvdata", "/Users/a/Tallyvane.tvdata", 1},
      {"", "/Users/a/Tallyvane.tvdata", false, std::nullopt, std::nullopt, 1},
      {"", "/Users/a/Tallyvane.tvdata", true, "/Users/a/Tallyvane.tvdata/Apps/Tallyvane/Tallyvane.tvdata",
       "/Users/a/Tallyvane.tvdata/Apps/Tallyvane/Tallyvane.tvdata", 1},
      {"", "/", false, "/Tallyvane.tvdata", "/Tallyvane.tvdata", 1},
      {"", "not a bookmark", true, std::nullopt, std::nullopt, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.bookmark + " cached as " + c.cache.value_or("nothing"));
    FakeDesktop other;
    other.defaults.content.set("QMCustomLocationEnabled", true);
    other.defaults.content.set("QMCustomLocationBookmark", bytes(c.bookmark));
    other.defaults.content.set("QMDropboxSyncEnabled", c.dropbox);
    if (c.cache) other.defaults.content.set("QMCusomLocationTempPath", *c.cache);
    EXPECT_EQ(QMBillsLoader{other.platform}.tallyvaneDirectory(), c.path);
    EXPECT_EQ(other.defaults.object("QMCusomLocationTempPath"), c.cacheAfterwards);
    EXPECT_EQ(other.bookmarks.resolved, c.resolved);
    EXPECT_EQ(other.bookmarks.accessed.size(), c.resolved == 1 && c.bookmark.starts_with("/") ? 1U : 0U);
    EXPECT_TRUE(other.files.content.empty());
    if (c.path) {
      EXPECT_FALSE(other.files.exists(*c.path)) << "only the default folder is made";
    }
  }
}

TEST_F(DataLocation, TheChosenFolderIsToldAndLogged) {
  desktop.defaults.content.set("QMCustomLocationEnabled", true);
  desktop.defaults.content.set("QMCustomLocationBookmark", bytes("/Users/a/My Drop"));
  EXPECT_EQ(loader.tallyvaneDropboxFolder(), "/Users/a/My Drop");
  EXPECT_EQ(desktop.log.lines,
            (std::vector<std::string>{"Resolving Bookmark", "Final URL: file:///Users/a/My%20Drop/"}));
  EXPECT_TRUE(desktop.bookmarks.accessed.empty());
}

TEST_F(DataLocation, WithoutAPathNothingIsReadAndNoFileLandsElsewhere) {
  desktop.defaults.content.set("QMCustomLocationEnabled", true);
  billObject(desktop.platform, "A1", "Rent", daysFromToday(1)).writeBill(false);
  QMBill{desktop.platform}.archiveBillWithBid("A1");
  loader.saveListOfTagsWithTags({"x"});
  EXPECT_TRUE(desktop.files.content.empty());
  EXPECT_EQ(loader.getListOfBills("ActiveBills"), std::nullopt);
  EXPECT_TRUE(loader.loadBills().empty());
  EXPECT_EQ(desktop.log.lines[0], "Wrote File = 0");
}

TEST_F(DataLocation, AnIdentifierThatLeadsOutOfTheFolderOrToAnotherFileNamesNone) {
  for (const char* bid : {"", "../x", "a/b", ".hidden", "billindex", "tagindex", "incomeindex", "mailindex"}) {
    EXPECT_EQ(billPath(desktop.platform, bid), "") << bid;
    QMBill{desktop.platform}.rewriteSpecificBill(bill(bid, "Rent", daysFromToday(0)));
    billObject(desktop.platform, bid, "Rent", daysFromToday(0)).writeBill(false);
  }
  EXPECT_TRUE(desktop.files.content.empty());
  EXPECT_EQ(desktop.log.diagnostics.size(), 16U);
  EXPECT_EQ(billPath(desktop.platform, "A1"), inDataFolder("A1.plist"));
}

}  // namespace
}  // namespace tallyvane::testing
