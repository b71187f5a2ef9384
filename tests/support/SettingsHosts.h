// The settings stores of the contract.
#pragma once

#include <gmock/gmock.h>

#include <limits>

#include "freedesktop/LocalKeyValueStore.h"
#include "freedesktop/PlistUserDefaults.h"
#include "freedesktop/PosixFileStore.h"
#include "support/Fakes.h"
#include "support/Matchers.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {

struct OnDisk {
  TemporaryFolder folder;
  PosixFileStore files{folder.path};
  RecordingLog log;
  std::string path = folder.path + "/made/at first write/store.plist";
};
struct DefaultsInMemory {
  InMemoryUserDefaults store;
};
struct DefaultsOnDisk : OnDisk {
  PlistUserDefaults store{path, files, log, Durability::cached};
};
struct MirrorInMemory {
  InMemoryKeyValueStore store;
};
struct MirrorOnDisk : OnDisk {
  LocalKeyValueStore store{path, files, log};
};

template <typename Subject>
class AnyStoreContract : public ::testing::Test {
 protected:
  Subject subject;
};
using AnyStore = ::testing::Types<DefaultsInMemory, DefaultsOnDisk, MirrorInMemory, MirrorOnDisk>;
TYPED_TEST_SUITE(AnyStoreContract, AnyStore);

}  // namespace tallyvane::testing
