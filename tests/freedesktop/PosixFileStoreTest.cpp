// What only a real file system can show: permissions, links, pipes, killed programs and full disks.
#include "freedesktop/PosixFileStore.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <set>
#include <thread>

#include "freedesktop/PosixPaths.h"
#include "support/FolderOnDisk.h"
#include "support/Matchers.h"
#include "support/SmallDisk.h"

namespace tallyvane::testing {
namespace {

namespace fs = std::filesystem;

TEST_F(PosixFileStoreTest, NewFilesAreTheUsersAloneAndOldOnesKeepTheirPermissions) {
  put(at(leftover), "left by a program that was killed");
  fs::permissions(at(leftover), fs::perms(0644));
  ASSERT_TRUE(store.save(at("new"), "x"));
  EXPECT_EQ(modeOf(at("new")), 0600U);
  put(at("old"), "old");
  fs::permissions(at("old"), fs::perms(0640));
  ASSERT_TRUE(store.save(at("old"), "x"));
  EXPECT_EQ(modeOf(at("old")), 0640U);
  ASSERT_TRUE(store.createFolder(at("a/b")));
  EXPECT_EQ(modeOf(at("a")), 0700U);
  if (::geteuid() != 0) return;
  // The administrator's save leaves a file to its user.
  ASSERT_EQ(::chown(at("old").c_str(), 1234, 5678), 0);
  ASSERT_TRUE(store.save(at("old"), "y"));
  struct stat status {};
  EXPECT_EQ(::stat(at("old").c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 1234U);
}

TEST_F(PosixFileStoreTest, OldTemporaryFilesOfKilledProgramsGoWhenAnotherIsMade) {
  const std::string usual = fs::temp_directory_path().string();
  ::setenv("TMPDIR", folder.path.c_str(), 1);
  const auto age = [&](const std::string& path) {
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours{25});
  };
  const std::string left = *store.makeTemporary();
  age(left);
  const std::string inUse = *store.makeTemporary();
  for (const char* name : {"tallyvane-notes.txt", "tallyvane-notes", "another-XYZXYZ"}) {
    put(at(name), "somebody's");
    age(at(name));
  }
  fs::create_directory(at("tallyvane-folder"));
  age(at("tallyvane-folder"));
  const std::string next = *store.makeTemporary();
  ::setenv("TMPDIR", usual.c_str(), 1);
  EXPECT_EQ(everythingIn(folder.path),
            (std::set<std::string>{nameOf(inUse), nameOf(next), "tallyvane-notes.txt", "tallyvane-notes",
                                   "another-XYZXYZ", "tallyvane-folder"}));
}

TEST_F(PosixFileStoreTest, WhatAKilledProgramLeftIsNeverListedOrCopiedAndGoesAtTheNextSave) {
  put(at(leftover), std::string(10'000, 'x'));
  EXPECT_TRUE(store.list(folder.path)->empty());
  TemporaryFolder elsewhere;
  ASSERT_TRUE(store.copy(folder.path, elsewhere.path + "/copy"));
  EXPECT_TRUE(fs::is_empty(elsewhere.path + "/copy"));
  ASSERT_TRUE(store.save(at("bill"), "rent"));
  EXPECT_EQ(contentOf(at("bill")), "rent");
  EXPECT_THAT(everythingIn(folder.path), ElementsAre("bill"));
}

TEST_F(PosixFileStoreTest, ASaveThroughALinkReplacesTheFileThatItNames) {
  ASSERT_TRUE(store.createFolder(at("real")));
  put(at("real/bill"), "old");
  fs::create_symlink("real/bill", at("link"));
  fs::create_symlink(at("link"), at("link to link"));
  fs::create_symlink("real/new", at("dangling"));
  fs::create_symlink("loop", at("loop"));
  EXPECT_TRUE(store.save(at("link to link"), "rent"));
  EXPECT_TRUE(store.save(at("dangling"), "made"));
  EXPECT_FALSE(store.save(at("loop"), "x"));
  EXPECT_EQ(contentOf(at("real/bill")), "rent");
  EXPECT_EQ(contentOf(at("real/new")), "made");
  for (const char* link : {"link", "link to link", "dangling", "loop"}) EXPECT_TRUE(fs::is_symlink(at(link))) << link;
}

TEST_F(PosixFileStoreTest, WhatIsNoOrdinaryFileNeitherBlocksNorGetsReplaced) {
  ASSERT_EQ(::mkfifo(at("pipe").c_str(), 0600), 0);
  EXPECT_THAT(store.read(at("pipe")).error(), HasSubstr("not a regular file"));
  EXPECT_THAT(store.read("/dev/zero").error(), HasSubstr("not a regular file"));
  EXPECT_FALSE(store.save(at("pipe"), "x"));
  EXPECT_FALSE(store.copy(at("pipe"), at("copy")));
  // The system would cut such a path short and use another file.
  EXPECT_FALSE(store.save(at(std::string("bill\0.plist", 11)), "x"));
  ASSERT_EQ(::mkfifo(at(leftover).c_str(), 0600), 0);
  EXPECT_FALSE(store.save(at("bill"), "x"));
  EXPECT_TRUE(fs::is_fifo(at("pipe")));
  put(at("huge"), "");
  fs::resize_file(at("huge"), std::uintmax_t{1} << 40);
  EXPECT_THAT(store.read(at("huge")).error(), HasSubstr("too large"));
}

TEST_F(PosixFileStoreTest, RemovingATreeLeavesAloneWhatItsLinksName) {
  put(at("precious"), "x");
  ASSERT_TRUE(store.createFolder(at("tree")));
  fs::create_symlink("../precious", at("tree/link"));
  fs::create_symlink("tree", at("link to tree"));
  ASSERT_TRUE(store.copy(at("link to tree"), at("copy")));
  EXPECT_EQ(fs::read_symlink(at("copy/link")), "../precious");
  EXPECT_TRUE(store.remove(at("link to tree/")));
  EXPECT_TRUE(fs::is_symlink(at("tree/link")));
  EXPECT_TRUE(store.remove(at("tree")));
  EXPECT_EQ(contentOf(at("precious")), "x");
}

TEST_F(PosixFileStoreTest, PlacesAreToldApartByWhatTheyAreNotByHowTheyAreWritten) {
  ASSERT_TRUE(store.createFolder(at("disk/data/inner")));
  fs::create_directory_symlink(at("disk"), at("link"));
  const std::pair<const char*, bool> rows[] = {{"disk/data", true},
                                               {"disk//data///", true},
                                               {"link/data", true},
                                               {"link/data/inner/.", true},
                                               {"link/data/not/yet/", true},
                                               {"disk/none/../data/new", true},
                                               {"link", false},
                                               {"disk/data2", false},
                                               {"link/data/../other", false},
                                               {"link/data/..", false},
                                               {"link/data/inner/../../", false}};
  for (const auto& [path, lies] : rows) {
    EXPECT_EQ(store.liesIn(at(path), at("disk/data")), lies) << path;
    EXPECT_EQ(store.liesIn(at(path), at("link/data/")), lies) << path;
  }
  EXPECT_FALSE(store.copy(at("disk"), at("link/data/inner/copy")));
  EXPECT_FALSE(store.liesIn(at("disk/data"), ""));
}

TEST_F(PosixFileStoreTest, OfAFolderBehindALinkThatMovesTheContentArrives) {
  ASSERT_TRUE(store.createFolder(at("real")) && store.createFolder(at("new/place")));
  put(at("real/bill"), "rent");
  fs::create_directory_symlink("real", at("link"));
  ASSERT_TRUE(store.move(at("link"), at("new/place/data")));
  EXPECT_EQ(contentOf(at("new/place/data/bill")), "rent");
  EXPECT_THAT(everythingIn(folder.path), ElementsAre("new", "real"));
}

TEST_F(PosixFileStoreTest, ACopyThatFailsHalfWayLeavesNothing) {
  ASSERT_TRUE(store.createFolder(at("tree/a")));
  put(at("tree/a/bill"), "rent");
  ASSERT_EQ(::mkfifo(at("tree/b").c_str(), 0600), 0);
  EXPECT_THAT(store.copy(at("tree"), at("copy")).error(), HasSubstr(at("tree/b")));
  EXPECT_THAT(everythingIn(folder.path), ElementsAre("tree"));
}

TEST_F(PosixFileStoreTest, SavesOfSeveralThreadsInOneFolderTakeTurns) {
  const auto saveOften = [&](char letter) {
    for (int i = 0; i < 50; ++i) {
      EXPECT_TRUE(store.save(at("same"), std::string(5000, letter), Durability::cached));
      EXPECT_TRUE(store.save(at(std::string(1, letter)), "own", Durability::cached));
    }
  };
  std::thread other(saveOften, 'a');
  saveOften('b');
  other.join();
  const std::string content = contentOf(at("same"));
  EXPECT_EQ(content, std::string(5000, content.at(0)));
  EXPECT_THAT(everythingIn(folder.path), ElementsAre("a", "b", "same"));
}

TEST(PosixFileStoreOnASmallDisk, AFailedSaveCopyOrMoveLeavesTheOldFilesAndNothingElse) {
  const SmallDisk disk;
  if (!disk.mounted) GTEST_SKIP() << "mounting a small file system is not allowed here";
  PosixFileStore store(disk.path);
  const std::string bill = disk.path + "/bill";
  TemporaryFolder elsewhere;
  put(elsewhere.path + "/large", std::string(100'000, 'x'));
  ASSERT_TRUE(store.save(bill, "old"));
  EXPECT_THAT(store.save(bill, std::string(100'000, 'x')).error(), HasSubstr(bill + ": No space left"));
  EXPECT_THAT(store.copy(elsewhere.path, disk.path + "/copy").error(), HasSubstr("No space left"));
  EXPECT_THAT(store.move(elsewhere.path, disk.path + "/moved").error(), HasSubstr("No space left"));
  EXPECT_EQ(contentOf(bill), "old");
  EXPECT_THAT(everythingIn(disk.path), ElementsAre("bill"));
  // What has room moves to the other file system.
  fs::resize_file(elsewhere.path + "/large", 3);
  EXPECT_TRUE(store.move(elsewhere.path, disk.path + "/moved"));
  EXPECT_EQ(contentOf(disk.path + "/moved/large"), "xxx");
  EXPECT_FALSE(fs::exists(elsewhere.path));

  ASSERT_TRUE(disk.makeReadOnly());
  EXPECT_THAT(store.save(bill, "new").error(), HasSubstr(bill));
  EXPECT_FALSE(store.createFolder(disk.path + "/new"));
  EXPECT_FALSE(store.remove(bill));
  EXPECT_EQ(contentOf(bill), "old");
}

}  // namespace
}  // namespace tallyvane::testing
