// The desktop's file types in memory and on disk, for the contract of their port.
#pragma once

#include <gtest/gtest.h>

#include "freedesktop/PosixFileStore.h"
#include "freedesktop/SharedMimeTypes.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {

struct TypesInMemory {
  FakeMimeTypes types;
};
struct TypesOnDisk {
  TemporaryFolder folder;
  PosixFileStore files{folder.path};
  XdgFolders folders{.dataHome = folder.path + "/own",
                     .configHome = {},
                     .stateHome = {},
                     .dataDirs = {folder.path + "/none", folder.path + "/system"}};
  SharedMimeTypes types{folders, files};
  TypesOnDisk() {
    for (const char* name : {"/own/mime", "/system/mime"}) (void)files.createFolder(folder.path + name);
    put(folder.path + "/own/mime/globs2", "50:image/png:*.png\n");
    put(folder.path + "/system/mime/globs2",
        "# comment\n60:text/x-c++:*.pdf:cs\n50:application/pdf:*.pdf\n40:application/x-other:*.pdf\n"
        "80:image/own:*.PNG\nbad line\n:::\n50:x/y:*.\n50:x/y:pdf\n50:x/y:*.od[ts]\n");
  }
};
template <typename Host>
struct MimeTypesContract : ::testing::Test, Host {};
using TypeHosts = ::testing::Types<TypesInMemory, TypesOnDisk>;
TYPED_TEST_SUITE(MimeTypesContract, TypeHosts);

}  // namespace tallyvane::testing
