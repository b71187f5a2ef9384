#include <gtest/gtest.h>

#include <tuple>

#include "support/LoadedBills.h"

namespace tallyvane::testing {
namespace {

using TagList = LoadedBills;

using Tags = std::vector<std::string>;

TEST_F(TagList, MergingKeepsTheSortedOldTagsAndAppendsTheNew) {
  const std::tuple<Array, Tags, Array> cases[] = {
      {{"b", "A"}, {"c", "a"}, {"A", "b", "c", "a"}},
      {{}, {"x", "x"}, {"x", "x"}},
      {{"Été", "eta", "Zoo"}, {"zoo", "Zoo"}, {"eta", "Été", "Zoo", "zoo"}},
  };
  desktop.defaults.content.set("iCloudSyncEnabled", true);
  for (const auto& [stored, saved, result] : cases) {
    desktop.files.putPlist(inDataFolder("tagindex.plist"), stored);
    loader.saveListOfTagsWithTags(saved);
    EXPECT_EQ(desktop.files.plist(inDataFolder("tagindex.plist")), Value(result));
    EXPECT_EQ(desktop.cloud.object("tagindex"), Value(result));
  }
}

TEST_F(TagList, OverwritingMirrorsAnEmptyListTooButOneFromTheCloudIsNotSentBack) {
  desktop.defaults.content.set("iCloudSyncEnabled", true);
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
