#include <gmock/gmock.h>

#include "freedesktop/PosixFileStore.h"
#include "support/FileStoreHosts.h"
#include "support/InMemoryFileStore.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {
namespace {

TYPED_TEST(FileStoreContract, ASaveReplacesTheWholeContent) {
  const std::string path = this->root + "/ä bill.plist";
  for (const std::string& bytes : {std::string(100'000, 'x'), std::string("short\0er", 8), std::string()}) {
    this->save(path, bytes);
    EXPECT_EQ(this->read(path), bytes);
  }
  EXPECT_THAT(this->names(this->root), ElementsAre("ä bill.plist"));
}

TYPED_TEST(FileStoreContract, TemporariesGrowAndFilesAreReadInParts) {
  Result<std::string> path = this->store.makeTemporary();
  ASSERT_TRUE(path) << path.error();
  const Result<std::string> other = this->store.makeTemporary();
  EXPECT_NE(*path, *other);
  EXPECT_TRUE(this->store.remove(*other));
  for (const char* bytes : {"", "0123", "456789"}) EXPECT_TRUE(this->store.append(*path, bytes));
  EXPECT_EQ(this->read(*path), "0123456789");
  EXPECT_EQ(*this->store.readPart(*path, 3, 4), "3456");
  EXPECT_EQ(*this->store.readPart(*path, 8, 100), "89");
  EXPECT_EQ(*this->store.readPart(*path, 10, 1), "");
  EXPECT_TRUE(this->store.remove(*path));
  EXPECT_FALSE(this->store.append(*path, "x"));
  EXPECT_FALSE(this->store.readPart(*path, 0, 1));
}

TYPED_TEST(FileStoreContract, ACopyTellsHowManyBytesItHasCopied) {
  this->save(this->root + "/one", std::string(70'000, '1'));
  std::uint64_t last = 0;
  this->store.tellCopied([&](std::uint64_t bytes) {
    EXPECT_GT(bytes, last);
    last = bytes;
  });
  ASSERT_TRUE(this->store.copy(this->root, this->root + "-copy"));
  EXPECT_EQ(last, 70'000U);
  this->store.tellCopied(nullptr);
  EXPECT_TRUE(this->store.copy(this->root + "/one", this->root + "/other"));
  EXPECT_EQ(last, 70'000U);
  EXPECT_TRUE(this->store.remove(this->root + "-copy"));
}

TYPED_TEST(FileStoreContract, EmptyAndRelativePathsAreRefused) {
  const std::string good = this->root + "/file";
  this->save(good, "x");
  for (const std::string bad : {"", "file", "./file", "~/file"}) {
    EXPECT_FALSE(this->store.read(bad)) << bad;
    EXPECT_FALSE(this->store.save(bad, "x")) << bad;
    EXPECT_FALSE(this->store.createFolder(bad)) << bad;
    EXPECT_FALSE(this->store.list(bad)) << bad;
    EXPECT_FALSE(this->store.copy(good, bad)) << bad;
    EXPECT_FALSE(this->store.copy(bad, good + "2")) << bad;
    EXPECT_FALSE(this->store.move(good, bad)) << bad;
    EXPECT_FALSE(this->store.remove(bad)) << bad;
    EXPECT_FALSE(this->store.liesIn(good, bad) || this->store.liesIn(bad, this->root)) << bad;
    EXPECT_FALSE(this->store.exists(bad) || this->store.isFolder(bad)) << bad;
  }
}

TYPED_TEST(FileStoreContract, FailuresNameThePath) {
  const std::string absent = this->root + "/absent";
  EXPECT_THAT(this->store.read(absent).error(), HasSubstr(absent));
  EXPECT_THAT(this->store.read(this->root).error(), HasSubstr(this->root));
  EXPECT_THAT(this->store.list(absent).error(), HasSubstr(absent));
  EXPECT_THAT(this->store.save(absent + "/file", "x").error(), HasSubstr(absent));
  EXPECT_THAT(this->store.save(this->root, "x").error(), HasSubstr(this->root));
  EXPECT_THAT(this->store.copy(absent, this->root + "/to").error(), HasSubstr(absent));
  EXPECT_THAT(this->store.move(absent, this->root + "/to").error(), HasSubstr(absent));
  EXPECT_THAT(this->store.remove(absent).error(), HasSubstr(absent));
  EXPECT_TRUE(this->names(this->root).empty());
}

TYPED_TEST(FileStoreContract, FoldersAreMadeWithAllThatLeadToThemAndListedInTheOrderOfBytes) {
  const std::string deep = this->root + "/a/b/c";
  EXPECT_TRUE(this->store.createFolder(deep));
  EXPECT_TRUE(this->store.createFolder(deep));
  EXPECT_TRUE(this->store.isFolder(deep) && this->store.isFolder(this->root + "/a"));
  for (const char* name : {"file", "ä", "B", "a10", "a9"}) this->save(this->root + "/" + name, "");
  EXPECT_THAT(this->names(this->root), ElementsAre("B", "a", "a10", "a9", "file", "ä"));
  EXPECT_TRUE(this->store.exists(this->root + "/file"));
  EXPECT_FALSE(this->store.isFolder(this->root + "/file"));
  EXPECT_FALSE(this->store.createFolder(this->root + "/file"));
  EXPECT_FALSE(this->store.createFolder(this->root + "/file/below"));
}

TYPED_TEST(FileStoreContract, TreesAreCopiedMovedAndRemovedWhole) {
  const std::string tree = this->root + "/tree";
  const std::string copy = this->root + "/copy";
  const std::string moved = this->root + "/moved";
  (void)this->store.createFolder(tree + "/empty");
  (void)this->store.createFolder(tree + "/full");
  this->save(tree + "/full/bill", "rent");

  EXPECT_TRUE(this->store.copy(tree, copy));
  this->save(tree + "/full/bill", "changed");
  EXPECT_TRUE(this->store.isFolder(copy + "/empty"));
  EXPECT_EQ(this->read(copy + "/full/bill"), "rent");
  EXPECT_TRUE(this->store.move(copy, moved));
  EXPECT_FALSE(this->store.exists(copy));
  EXPECT_EQ(this->read(moved + "/full/bill"), "rent");
  EXPECT_TRUE(this->store.remove(tree));
  EXPECT_THAT(this->names(this->root), ElementsAre("moved"));
}

TYPED_TEST(FileStoreContract, CopyAndMoveNeitherReplaceNorNest) {
  const std::string from = this->root + "/from";
  const std::string there = this->root + "/there";
  (void)this->store.createFolder(from);
  this->save(there, "old");
  for (const std::string& to : {there, from, from + "/inside", this->root + "/no folder/to"}) {
    EXPECT_FALSE(this->store.copy(from, to)) << to;
    EXPECT_FALSE(this->store.move(from, to)) << to;
  }
  EXPECT_EQ(this->read(there), "old");
  EXPECT_THAT(this->names(this->root), ElementsAre("from", "there"));
  EXPECT_TRUE(this->names(from).empty());
}

}  // namespace
}  // namespace tallyvane::testing
