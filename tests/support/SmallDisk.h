#pragma once

#include <sys/mount.h>

#include "support/TemporaryFolder.h"

namespace tallyvane::testing {

/// A folder on a file system of its own with room for 64 KiB. Where a test may not mount one, it is not `mounted`, and
/// the test says so and is skipped.
struct SmallDisk : TemporaryFolder {
  const bool mounted = ::mount("tmpfs", path.c_str(), "tmpfs", 0, "size=64k") == 0;

  SmallDisk() = default;
  ~SmallDisk() {
    if (mounted) ::umount2(path.c_str(), MNT_DETACH);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  [[nodiscard]] bool makeReadOnly() const {
    return ::mount(nullptr, path.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
  }
};

}  // namespace tallyvane::testing
