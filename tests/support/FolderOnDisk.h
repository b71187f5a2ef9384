// A file store in a folder on disk.
#pragma once

#include <gtest/gtest.h>

#include <set>

#include "freedesktop/PosixFileStore.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {

/// Under this name a file is written before it is there.
inline constexpr const char* leftover = ".tallyvane-save.tmp";

/// All names in a folder, hidden ones too.
inline std::set<std::string> everythingIn(const std::string& folder) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) names.insert(entry.path().filename().string());
  return names;
}

class PosixFileStoreTest : public ::testing::Test {
 protected:
  std::string at(const std::string& name) const { return folder.path + "/" + name; }
  static unsigned modeOf(const std::string& path) {
    return static_cast<unsigned>(std::filesystem::status(path).permissions());
  }

  TemporaryFolder folder;
  PosixFileStore store{folder.path};
};

}  // namespace tallyvane::testing
