#include "freedesktop/PlistUserDefaults.h"

#include <gmock/gmock.h>
#include <sys/wait.h>

#include "freedesktop/PosixFileStore.h"
#include "support/Fakes.h"
#include "support/Matchers.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {
namespace {

class PlistUserDefaultsTest : public ::testing::Test {
 protected:
  PlistUserDefaults open(FileStore& store) { return {path, store, log, Durability::cached}; }

  TemporaryFolder folder;
  PosixFileStore files{folder.path};
  RecordingLog log;
  std::string path = folder.path + "/settings.plist";
  PlistUserDefaults mine = open(files);
};

TEST_F(PlistUserDefaultsTest, WhatAnotherProgramWritesIsSeenAndMerged) {
  PlistUserDefaults other = open(files);
  ASSERT_TRUE(mine.set("a", 1));
  EXPECT_EQ(other.object("a"), Value(1));
  // Of the same size and in quick succession.
  for (int i = 2; i < 10; ++i) {
    ASSERT_TRUE(other.set("a", i));
    EXPECT_EQ(mine.object("a"), Value(i));
  }
  ASSERT_TRUE(other.set("b", "theirs"));
  ASSERT_TRUE(mine.remove("a"));
  EXPECT_EQ(other.stored(), (Dictionary{{"b", "theirs"}}));
  std::filesystem::remove(path);
  EXPECT_FALSE(mine.object("b"));
}

TEST_F(PlistUserDefaultsTest, AChangeOfNothingTouchesNothing) {
  ASSERT_TRUE(mine.remove("absent"));
  EXPECT_TRUE(std::filesystem::is_empty(folder.path));
  put(path, "<plist><dict><key>a</key><integer>1</integer></dict></plist>");
  ASSERT_TRUE(mine.set("a", 1));
  EXPECT_THAT(*files.list(folder.path), ElementsAre("settings.plist"));
  ASSERT_TRUE(mine.set("a", true));
  EXPECT_THAT(contentOf(path), HasSubstr("<true/>"));
}

TEST_F(PlistUserDefaultsTest, ReadingDoesNotReadTheFileAgainAndAgain) {
  InMemoryFileStore counted;
  counted.putPlist(path, Dictionary{{"a", 1}});
  PlistUserDefaults defaults = open(counted);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(defaults.object("a"), Value(1));
  EXPECT_EQ(counted.reads, 1);
  ASSERT_TRUE(defaults.synchronize());
  EXPECT_EQ(defaults.object("a"), Value(1));
  EXPECT_EQ(counted.reads, 2);
}

TEST_F(PlistUserDefaultsTest, AFileThatCannotBeReadIsKeptAsideAndSaidSo) {
  int kept = 0;
  for (const std::string content : {"", "rubbish", "<plist><array/></plist>"}) {
    put(path, content);
    EXPECT_FALSE(mine.object("a"));
    ASSERT_TRUE(mine.set("a", 1));
    EXPECT_EQ(mine.object("a"), Value(1));
    const std::string aside = path + ".unreadable-" + std::to_string(++kept);
    EXPECT_EQ(contentOf(aside), content);
    EXPECT_THAT(log.diagnostics, Contains(HasSubstr(aside)));
  }
}

TEST_F(PlistUserDefaultsTest, TheDeepestBillThatAFileMayHoldIsReadAgainFromASuite) {
  std::string nested = "<true/>";
  for (int level = 0; level < 64; ++level) nested = "<array>" + nested + "</array>";
  const Result<Value> deepest = readPropertyList("<plist>" + nested + "</plist>");
  ASSERT_TRUE(deepest);
  ASSERT_TRUE(mine.set("ActiveBills", Array{*deepest, "other"}));
  ASSERT_TRUE(mine.synchronize());
  const auto stored = mine.object("ActiveBills");
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->get<Array>()->back(), Value("other"));
}

TEST_F(PlistUserDefaultsTest, AFailedWriteLeavesTheSettingsAsTheyWere) {
  // The last one could not even be kept aside.
  for (const std::string content : {"<plist><dict><key>a</key><integer>1</integer></dict></plist>", "rubbish"}) {
    put(path, content);
    FailingFileStore failing(files, 1);
    PlistUserDefaults defaults = open(failing);
    EXPECT_THAT(defaults.set("a", 2).error(), HasSubstr("No space left"));
    EXPECT_NE(defaults.object("a"), Value(2));
    EXPECT_EQ(contentOf(path), content);
  }
  put(folder.path + "/file", "");
  EXPECT_FALSE(PlistUserDefaults(folder.path + "/file/settings.plist", files, log, Durability::synced).set("a", 1));
}

TEST_F(PlistUserDefaultsTest, TwoProgramsWritingAtOnceLoseNothing) {
  const auto writeAll = [&](const std::string& prefix) {
    bool written = true;
    for (int i = 0; i < 40; ++i) written = static_cast<bool>(mine.set(prefix + std::to_string(i), i)) && written;
    return written;
  };
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) ::_exit(writeAll("child") ? 0 : 1);
  EXPECT_TRUE(writeAll("parent"));
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(mine.stored().size(), 80U);
}

}  // namespace
}  // namespace tallyvane::testing
