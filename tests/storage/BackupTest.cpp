#include <gmock/gmock.h>

#include "storage/QMBillsLoader.h"
#include "storage/QMDatabaseMover.h"
#include "support/Backups.h"
#include "support/Bills.h"

namespace tallyvane::testing {
namespace {

TEST_F(Backup, IsMadeOnceADayAndReplacesThePreviousOne) {
  EXPECT_EQ(loader.lastBackedUpNaturalDate(), "Never");
  loader.backupDatabase();
  const std::string first = recorded();
  EXPECT_THAT(backups(), ElementsAre(first));
  EXPECT_EQ(desktop.files.content[inBackup("B1.plist")], desktop.files.content[inDataFolder("B1.plist")]);
  desktop.clock.moment += std::chrono::hours{6};
  loader.backupDatabase();
  EXPECT_THAT(desktop.log.lines, ElementsAre("Starting Backup", "Database backed up.", "Starting Backup",
                                             "Database already backed Up today"));
  EXPECT_EQ(recorded(), first);
  desktop.clock.moment += std::chrono::hours{24};
  loader.backupDatabase();
  EXPECT_NE(recorded(), first);
  EXPECT_THAT(backups(), ElementsAre(recorded()));
  EXPECT_EQ(loader.lastBackedUpNaturalDate(), "Thu, Mar 11, 2027");
}

TEST_F(Backup, AFailedCopyCountsAsTodaysAndCostsThePreviousOne) {
  loader.backupDatabase();
  desktop.clock.moment += std::chrono::hours{24};
  FailingFileStore failing(desktop.files, 1);
  const Platform platform = desktop.over(failing);
  QMBillsLoader{platform}.backupDatabase();
  EXPECT_THAT(backups(), IsEmpty());
  EXPECT_EQ(*desktop.defaults.content.find("QMLastBackup"), Value(desktop.clock.moment));
}

TEST_F(Backup, OneThatTheSettingsCannotNameDoesNotStay) {
  loader.backupDatabase();
  const auto before = backups();
  desktop.clock.moment += std::chrono::hours{24};
  desktop.defaults.failing = true;
  loader.backupDatabase();
  EXPECT_EQ(backups(), before);
}

TEST_F(Backup, NothingButABackupIsEverRemoved) {
  for (const char* odd : {"", ".", "..", "/", "Tallyvane.tvdata", "0123"}) {
    desktop.defaults.content = Dictionary{{"QMLastBackupUID", odd}};
    loader.backupDatabase();
    EXPECT_TRUE(desktop.files.exists(inDataFolder("B1.plist"))) << odd;
    EXPECT_TRUE(desktop.files.exists(backupFolder)) << odd;
    desktop.defaults.content.set("QMLastBackupUID", odd);
    EXPECT_FALSE(loader.restoreDatabase()) << odd;
  }
  const std::string file = backupFolder + "/0123456789ABCDEF0123456789ABCDEF";
  desktop.files.content[file] = "a file of the user's";
  desktop.defaults.content = Dictionary{{"QMLastBackupUID", "0123456789ABCDEF0123456789ABCDEF"}};
  loader.backupDatabase();
  EXPECT_TRUE(desktop.files.exists(file));
}

TEST_F(Backup, RestoringPutsTheWholeFolderBackAndKeepsTheBackup) {
  const auto before = desktop.files.content;
  loader.backupDatabase();
  desktop.files.content[inDataFolder("B2.plist")] = "later";
  desktop.log.lines.clear();
  EXPECT_TRUE(loader.restoreDatabase());
  EXPECT_FALSE(desktop.files.exists(inDataFolder("B2.plist")));
  EXPECT_EQ(desktop.files.content[inDataFolder("B1.plist")], before.at(inDataFolder("B1.plist")));
  EXPECT_THAT(backups(), SizeIs(1));
  EXPECT_THAT(desktop.log.lines,
              ElementsAre("Starting Restore...", "Trying to Restore", "Removed 1", "Error: (null)", "Error: (null)"));
}

TEST_F(Backup, RestoringTellsThatTheOldFolderCouldNotBeRemoved) {
  loader.backupDatabase();
  desktop.log.lines.clear();
  FailingFileStore failing(desktop.files, 1);
  const Platform platform = desktop.over(failing);
  EXPECT_FALSE(QMBillsLoader{platform}.restoreDatabase());
  EXPECT_THAT(desktop.log.lines, ElementsAre("Starting Restore...", "Trying to Restore", "Removed 0",
                                             HasSubstr("No space left on device"), StartsWith("Error: ")));
  EXPECT_TRUE(desktop.files.exists(inDataFolder("B1.plist")));
}

TEST_F(Backup, WithoutACompleteBackupRestoringChangesNothing) {
  EXPECT_FALSE(loader.restoreDatabase());
  loader.backupDatabase();
  ASSERT_TRUE(desktop.files.remove(inBackup("billindex.plist")));
  const auto before = desktop.files.content;
  EXPECT_FALSE(loader.restoreDatabase());
  EXPECT_EQ(desktop.files.content, before);
}

TEST_F(Mover, MovesToAFolderOrToTheNameItself) {
  EXPECT_TRUE(mover.moveDatabaseToNewLocationFromOriginalLocationOverwrite("/media/disk/", dataFolder, false));
  EXPECT_THAT(desktop.log.lines, ElementsAre("Adding Tallyvane..."));
  EXPECT_TRUE(isAt("/media/disk/Tallyvane.tvdata"));
  EXPECT_FALSE(isAt(dataFolder));
  EXPECT_TRUE(mover.loadDatabaseFromAnotherLocation("/media/disk"));
  EXPECT_TRUE(mover.databaseExistsWithDataAtLocation("/media/disk"));
  EXPECT_FALSE(mover.databaseExistsWithDataAtLocation("/media/disk/Tallyvane.tvdata"));
  EXPECT_EQ(desktop.log.lines.back(), "Tallyvane 5 Data Exists Already: 0");
  EXPECT_TRUE(mover.resetDatabaseFromStartLocation("/media/disk/Tallyvane.tvdata"));
  EXPECT_TRUE(isAt(dataFolder));
  EXPECT_FALSE(mover.resetDatabaseFromStartLocation("/media/disk/gone"));
  EXPECT_THAT(desktop.log.lines.back(), StartsWith("Error: "));
}

TEST_F(Mover, ReplacesWhatIsThereOnlyWhenAskedTo) {
  (void)desktop.files.createFolder("/media/disk/Tallyvane.tvdata");
  const std::string target = "/media/disk/Tallyvane.tvdata";
  EXPECT_FALSE(mover.moveDatabaseToNewLocationFromOriginalLocationOverwrite(target, dataFolder, false));
  EXPECT_FALSE(mover.copyDatabaseToNewLocationFromOriginalLocationOverwrite(target, dataFolder, false));
  EXPECT_TRUE(isAt(dataFolder));
  EXPECT_TRUE(mover.copyDatabaseToNewLocationFromOriginalLocationOverwrite(target, dataFolder, true));
  EXPECT_TRUE(isAt(target));
  ASSERT_TRUE(desktop.files.remove(target));
  desktop.log.lines.clear();
  EXPECT_FALSE(mover.copyDatabaseToNewLocationFromOriginalLocationOverwrite(target, dataFolder, true));
  EXPECT_THAT(desktop.log.lines, ElementsAre(StartsWith(target)));
  EXPECT_TRUE(isAt(target)) << "the copy is made all the same";
  EXPECT_TRUE(mover.moveDatabaseToNewLocationFromOriginalLocationOverwrite(target, dataFolder, true));
  EXPECT_FALSE(isAt(dataFolder));
}

TEST_F(Mover, NeverRemovesWhatItIsToMove) {
  const auto before = desktop.files.content;
  for (const std::string& place :
       {dataFolder, dataFolder + "/", dataFolder + "/inner", std::string("/home/ada/.local/share/Tallyvane"),
        std::string("/home/ada/.local//share/Tallyvane/../Tallyvane/./")}) {
    EXPECT_FALSE(mover.moveDatabaseToNewLocationFromOriginalLocationOverwrite(place, dataFolder, true)) << place;
    EXPECT_FALSE(mover.copyDatabaseToNewLocationFromOriginalLocationOverwrite(place, dataFolder, true)) << place;
  }
  EXPECT_FALSE(mover.resetDatabaseFromStartLocation("/home/ada/.local/./share/Tallyvane/Tallyvane.tvdata"));
  EXPECT_EQ(desktop.files.content, before);
}

}  // namespace
}  // namespace tallyvane::testing
