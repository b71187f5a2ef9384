// One picture and one text, in memory and on disk.
#pragma once

#include "freedesktop/InstalledResources.h"
#include "freedesktop/PosixFileStore.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {

struct ResourcesInMemory : FakeResources {
  std::string rent = "/pictures/rent.png";
  ResourcesInMemory() {
    pictures["rent"] = rent;
    texts["template.html"] = "<p>";
  }
};
struct ResourcesOnDisk {
  TemporaryFolder folder;
  std::string rent = folder.path + "/pictures/rent.png";
};
struct ResourcesInstalled : ResourcesOnDisk, PosixFileStore, InstalledResources {
  ResourcesInstalled()
      : PosixFileStore(folder.path), InstalledResources({folder.path + "/no such folder", folder.path}, *this) {
    for (const char* name : {"/pictures", "/Contents/Resources"}) (void)createFolder(folder.path + name);
    put(rent, "PNG");
    put(folder.path + "/Contents/Resources/template.html", "<p>");
  }
};

}  // namespace tallyvane::testing
