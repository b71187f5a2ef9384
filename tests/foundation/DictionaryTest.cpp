#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/Matchers.h"
#include "support/PropertyLists.h"

namespace tallyvane::testing {
namespace {

TEST(Dictionary, aChangeLeavesThoseAloneThatShareItsKeys) {
  const Dictionary original{{"a", 1}, {"b", 2}, {"c", 3}};
  const std::pair<std::function<void(Dictionary&)>, Entries> rows[] = {
      {[](Dictionary& d) { d.set("d", 4); }, {{"a", 1}, {"b", 2}, {"c", 3}, {"d", 4}}},
      {[](Dictionary& d) { d.set("b", 5); }, {{"a", 1}, {"b", 5}, {"c", 3}}},
      {[](Dictionary& d) { d.erase("a"); }, {{"b", 2}, {"c", 3}}},
      {[](Dictionary& d) { d.erase("x"); }, {{"a", 1}, {"b", 2}, {"c", 3}}},
      {[](Dictionary& d) {
         d.erase("c");
         d.set("e", 6);
       },
       {{"a", 1}, {"b", 2}, {"e", 6}}},
      {[](Dictionary& d) {
         d = std::exchange(d, Dictionary());
         d.set("a", 7);
       },
       {{"a", 7}, {"b", 2}, {"c", 3}}},
      {[](Dictionary& d) {
         (void)std::exchange(d, Dictionary());
         d.set("f", 8);
       },
       {{"f", 8}}},
  };
  for (const auto& [change, result] : rows) {
    Dictionary changed = original;
    const Dictionary other = changed;
    change(changed);
    EXPECT_EQ(entriesOf(changed), result);
    EXPECT_EQ(entriesOf(other), entriesOf(original));
    EXPECT_EQ(changed.keys().size(), changed.values().size());
  }
}

// Each is read after each of the others, whose keys are then the ones that are expected.
TEST(Dictionary, isReadAsItIsWrittenWhateverWasReadBefore) {
  const std::vector<std::vector<std::string>> all{{"a", "b", "c"}, {"a", "b"},         {"a", "b", "c", "d"},
                                                  {"b", "a"},      {"a", "c"},         {},
                                                  {"ab", "b"},     {"a", "", "b c\t"}, {"Miete", "für", "Juni"}};
  for (const auto& before : all) {
    for (const auto& keys : all) {
      const auto read = readPropertyList(listOf("<array>" + written(before) + written(keys) + "</array>"));
      ASSERT_TRUE(read) << read.error();
      const auto& dictionary = *(*read->get<Array>())[1].get<Dictionary>();
      EXPECT_THAT(dictionary.keys(), ElementsAreArray(keys));
      EXPECT_EQ(dictionary.find("z"), nullptr);
      for (std::size_t i = 0; i < keys.size(); ++i) EXPECT_EQ(*dictionary.find(keys[i]), Value(i));
      EXPECT_EQ(readPropertyList(listOf(written(before)))->get<Dictionary>()->size(), before.size());
    }
  }
}

// What a key means is no reason to accept it in another writing.
TEST(Dictionary, keysThatWereReadBeforeAreCheckedAgain) {
  const std::pair<const char*, const char*> refused[] = {{"a&amp;b", "a&b"}, {"x]]&gt;", "x]]>"}, {"&lt;", "<"}};
  for (const auto& [right, wrong] : refused)
    EXPECT_FALSE(readPropertyList(listOf("<array>" + written({right}) + written({wrong}) + "</array>"))) << wrong;
  EXPECT_THAT(readPropertyList(listOf("<array>" + written({"a"}) + "<dict><key>a</kay><true/></dict></array>")).error(),
              HasSubstr("<key> is not closed"));
  const auto read = readPropertyList(listOf("<array>" + written({"a&#13;"}) + written({"a\r"}) + "</array>"));
  EXPECT_EQ((*read->get<Array>())[1].get<Dictionary>()->keys()[0], "a\n");
  const auto twice = readPropertyList(listOf("<array>" + written({"a", "b"}) + written({"a", "a", "b"}) + "</array>"));
  EXPECT_EQ(entriesOf(*(*twice->get<Array>())[1].get<Dictionary>()), (Entries{{"a", 1}, {"b", 2}}));
}

}  // namespace
}  // namespace tallyvane::testing
