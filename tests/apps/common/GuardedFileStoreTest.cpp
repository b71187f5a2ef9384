#include "common/GuardedFileStore.h"

#include <gmock/gmock.h>

#include "freedesktop/PosixFileStore.h"
#include "support/Fakes.h"
#include "support/Matchers.h"
#include "support/SmallDisk.h"

namespace tallyvane::programs {
namespace {

using namespace tallyvane::testing;

const std::string bill = "/data/bill.plist";

class GuardedFileStoreTest : public ::testing::Test {
 protected:
  GuardedFileStoreTest() {
    (void)files.createFolder("/data");
    files.content = {{bill, "rubbish"}, {"/data/note", "old"}, {"/data/gone", "old"}, {"/data/here", "old"}};
  }
  InMemoryFileStore files;
  RecordingLog log;
};

TEST_F(GuardedFileStoreTest, AnUnreadablePropertyListIsKeptAsideBeforeItIsReplaced) {
  GuardedFileStore guarded(files, log);
  ASSERT_TRUE(guarded.save(bill, writePropertyList(Dictionary{})));
  ASSERT_TRUE(guarded.save("/data/note", "new"));
  EXPECT_EQ(files.content.at(bill + ".unreadable-1"), "rubbish");
  EXPECT_THAT(log.diagnostics, ElementsAre(HasSubstr(bill + ".unreadable-1")));
  // What is no property list does not replace one unseen, and a second copy does not take the place of the first.
  ASSERT_TRUE(guarded.save(bill, "anything"));
  EXPECT_EQ(files.plist(bill + ".unreadable-2"), Value(Dictionary{}));
  // A list of another kind is none that the product could have written; one of the same kind is simply replaced.
  files.putPlist(bill, Array{"A"});
  ASSERT_TRUE(guarded.save(bill, writePropertyList(Dictionary{{"ActiveBills", Array()}})));
  EXPECT_EQ(files.plist(bill + ".unreadable-3"), Value(Array{"A"}));
  ASSERT_TRUE(guarded.save(bill, writePropertyList(Dictionary{})));
  EXPECT_FALSE(files.exists(bill + ".unreadable-4"));
}

TEST_F(GuardedFileStoreTest, WhatCannotBeKeptAsideIsNotReplaced) {
  const auto before = files.content;
  FailingFileStore failing(files, 1);
  EXPECT_THAT(GuardedFileStore(failing, log).save(bill, "new").error(), HasSubstr("No space left"));
  EXPECT_EQ(files.content, before);
}

TEST_F(GuardedFileStoreTest, WithoutAnOperationAFailedSaveStopsNothing) {
  FailingFileStore failing(files, 1);
  GuardedFileStore guarded(failing, log);
  EXPECT_FALSE(guarded.save("/data/note", "1"));
  EXPECT_TRUE(guarded.save("/data/note", "2"));
  EXPECT_EQ(files.content.at("/data/note"), "2");
}

/// Changes files in every way that there is; the model goes on after failures.
void operate(FileStore& store) {
  (void)store.save("/data/new", "1");
  (void)store.save("/data/new", "12");
  (void)store.save("/data/note", "1");
  (void)store.save("/data/note", "12");
  (void)store.save("/data/note", "1");
  (void)store.copy("/data/note", "/data/copy");
  (void)store.move("/data/here", "/data/there");
  (void)store.remove("/data/gone");
  (void)store.save("/data/note", "2");
  (void)store.save("/data/gone", "2");
  (void)store.save("/data/last", "2");
}

TEST_F(GuardedFileStoreTest, AnOperationIsDoneWholeOrNotAtAllWhicheverSaveFails) {
  InMemoryFileStore whole = files;
  operate(whole);
  constexpr int changes = 11;
  for (int call = 1; call <= changes + 1; ++call) {
    InMemoryFileStore inner = files;
    FailingFileStore failing(inner, call);
    GuardedFileStore guarded(failing, log);
    guarded.begin();
    operate(guarded);
    const Result<> finished = guarded.finish();
    const bool saveFails = call <= 5 || (call >= 9 && call <= changes);
    EXPECT_EQ(static_cast<bool>(finished), !saveFails) << call;
    if (saveFails || call > changes) {
      EXPECT_EQ(inner.content, saveFails ? files.content : whole.content) << call;
    }
  }
}

TEST_F(GuardedFileStoreTest, FinishTellsTheFirstFailureAndWhatCouldNotBePutBack) {
  FailingFileStore full(files, 2, Failing::fromThereOn);
  GuardedFileStore guarded(full, log);
  guarded.begin();
  ASSERT_TRUE(guarded.save("/data/note", "new"));
  EXPECT_FALSE(guarded.save("/data/first", "x"));
  EXPECT_THAT(guarded.save("/data/second", "x").error(), HasSubstr("an earlier save failed"));
  EXPECT_EQ(guarded.finish().error(),
            "/data/first: No space left on device; could not be put back: /data/note: No space left on device");
  guarded.begin();
  EXPECT_TRUE(guarded.finish());
}

TEST(GuardedFileStoreOnAFullDisk, PutsBackWhatAnOperationChanged) {
  const SmallDisk disk;
  if (!disk.mounted) GTEST_SKIP() << "mounting a small file system is not allowed here";
  PosixFileStore files(disk.path);
  RecordingLog log;
  GuardedFileStore guarded(files, log);
  ASSERT_TRUE(files.save(disk.path + "/index", std::string(20'000, 'i')));
  guarded.begin();
  EXPECT_TRUE(guarded.save(disk.path + "/bill", std::string(8'000, 'b')));
  EXPECT_TRUE(guarded.save(disk.path + "/index", std::string(24'000, 'j')));
  EXPECT_FALSE(guarded.save(disk.path + "/tags", std::string(40'000, 't')));
  EXPECT_THAT(guarded.finish().error(), ::testing::EndsWith("No space left on device"));
  EXPECT_THAT(*files.list(disk.path), ElementsAre("index"));
  EXPECT_EQ(contentOf(disk.path + "/index"), std::string(20'000, 'i'));
}

}  // namespace
}  // namespace tallyvane::programs
