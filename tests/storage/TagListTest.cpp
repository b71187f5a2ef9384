#include <gtest/gtest.h>

#include <tuple>

#include "storage/QMBillsLoader.h"
#include "support/Bills.h"

namespace tallyvane::testing {
namespace {

using Tags = std::vector<std::string>;

TEST(TagList, MergingKeepsTheSortedOldTagsAndAppendsTheNew) {
  const std::tuple<Array, Tags, Array> cases[] = {
      {{"b", "A"}, {"c", "a"}, {"A", "b", "c", "a"}},
      {{}, {"x", "x"}, {"x", "x"}},
      {{"Été", "eta", "Zoo"}, {"zoo", "Zoo"}, {"eta", "Été", "Zoo", "zoo"}},
  };
  for (const auto& [stored, saved, result] : cases) {
    FakeDesktop desktop;
    desktop.defaults.content.set("iCloudSyncEnabled", true);
    desktop.files.putPlist(inDataFolder("tagindex.plist"), stored);
    QMBillsLoader{desktop.platform}.saveListOfTagsWithTags(saved);
    EXPECT_EQ(desktop.files.plist(inDataFolder("tagindex.plist")), Value(result));
    EXPECT_EQ(desktop.cloud.object("tagindex"), Value(result));
  }
}

TEST(TagList, OverwritingMirrorsAnEmptyListTooButOneFromTheCloudIsNotSentBack) {
  FakeDesktop desktop;
  desktop.defaults.content.set("iCloudSyncEnabled", true);
  QMBillsLoader loader{desktop.platform};
  EXPECT_EQ(loader.getListOfTags(), std::nullopt);
  loader.updateListOfTagsFromiCloudWithTags({"z", "a"});
  EXPECT_EQ(loader.getListOfTags(), (Tags{"a", "z"}));
  EXPECT_EQ(desktop.files.plist(inDataFolder("tagindex.plist")), Value(Array{"z", "a"}));
  EXPECT_TRUE(desktop.cloud.content.empty());
  loader.overwriteListOfTagsWithTags({});
  EXPECT_EQ(desktop.files.plist(inDataFolder("tagindex.plist")), Value(Array()));
  EXPECT_EQ(desktop.cloud.object("tagindex"), Value(Array()));
}

}  // namespace
}  // namespace tallyvane::testing
