// The stores of keys and values: settings, and the mirror between devices.

#include <gmock/gmock.h>

#include <limits>

#include "freedesktop/LocalKeyValueStore.h"
#include "freedesktop/PlistUserDefaults.h"
#include "freedesktop/PosixFileStore.h"
#include "support/Fakes.h"
#include "support/SettingsHosts.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {
namespace {

TYPED_TEST(AnyStoreContract, EveryKindOfValueComesBackAsItWasSet) {
  auto& store = this->subject.store;
  const Dictionary values{{"bool", true},
                          {"integer", std::numeric_limits<std::int64_t>::min()},
                          {"real", 0.1},
                          {"text", " <Bücher & \"Musik\"> \n"},
                          {"date", distantPast},
                          {"data", Data{{0, 255, 10}}},
                          {"array", Array{1, "two", Array{}}},
                          {"", Dictionary{{"k", false}}}};
  for (const auto& [key, value] : values) EXPECT_TRUE(store.set(key, value)) << key;
  for (const auto& [key, value] : values) EXPECT_EQ(store.object(key), value) << key;
}

TYPED_TEST(AnyStoreContract, AKeyTakesItsLastValueAndGoesWhenRemoved) {
  auto& store = this->subject.store;
  EXPECT_TRUE(store.remove("never set"));
  EXPECT_FALSE(store.object("a"));
  (void)store.set("a", 1);
  (void)store.set("b", "stays");
  (void)store.set("a", true);
  EXPECT_EQ(store.object("a"), Value(true));
  EXPECT_TRUE(store.remove("a"));
  EXPECT_FALSE(store.object("a"));
  EXPECT_EQ(store.object("b"), Value("stays"));
}

template <typename Subject>
class UserDefaultsContract : public AnyStoreContract<Subject> {};
using Defaults = ::testing::Types<DefaultsInMemory, DefaultsOnDisk>;
TYPED_TEST_SUITE(UserDefaultsContract, Defaults);

TYPED_TEST(UserDefaultsContract, FirstValuesShowOnlyWhereNothingIsStored) {
  UserDefaults& store = this->subject.store;
  store.registerDefaults({{"days", 7}, {"title", true}});
  store.registerDefaults({{"days", 9}});
  EXPECT_EQ(store.object("days"), Value(9));
  EXPECT_TRUE(store.stored().empty());
  (void)store.set("days", 3);
  EXPECT_EQ(store.object("days"), Value(3));
  EXPECT_EQ(store.stored(), (Dictionary{{"days", 3}}));
  (void)store.remove("days");
  EXPECT_EQ(store.object("days"), Value(9));
  EXPECT_EQ(store.object("title"), Value(true));
  EXPECT_TRUE(store.synchronize());
}

TYPED_TEST(AnyStoreContract, KeysAreListedInTheOrderOfTheirBytes) {
  if constexpr (requires { this->subject.store.keys(); }) {
    for (const char* key : {"tagindex", "B2", "activebills"}) (void)this->subject.store.set(key, 1);
    EXPECT_THAT(this->subject.store.keys(), ElementsAre("B2", "activebills", "tagindex"));
  }
}

}  // namespace
}  // namespace tallyvane::testing
