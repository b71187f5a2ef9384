// The file stores of the contract.
#pragma once

#include <gmock/gmock.h>

#include "freedesktop/PosixFileStore.h"
#include "support/InMemoryFileStore.h"
#include "support/Matchers.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {

struct FilesInMemory {
  InMemoryFileStore store;
  std::string root = "/root";
};
struct FilesOnDisk {
  TemporaryFolder folder;
  PosixFileStore store{folder.path + "/support"};
  std::string root = folder.path;
};

template <typename Subject>
class FileStoreContract : public ::testing::Test {
 protected:
  FileStoreContract() { (void)store.createFolder(root); }
  void save(const std::string& path, const std::string& bytes) {
    const Result<> saved = store.save(path, bytes);
    ASSERT_TRUE(saved) << saved.error();
  }
  std::string read(const std::string& path) {
    Result<std::string> bytes = store.read(path);
    return bytes ? *bytes : "error: " + bytes.error();
  }
  std::vector<std::string> names(const std::string& folder) {
    return store.list(folder) ? *store.list(folder) : std::vector<std::string>{"error"};
  }

  Subject subject;
  FileStore& store = subject.store;
  const std::string root = subject.root;
};
using Subjects = ::testing::Types<FilesInMemory, FilesOnDisk>;
TYPED_TEST_SUITE(FileStoreContract, Subjects);

}  // namespace tallyvane::testing
