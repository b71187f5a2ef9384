#pragma once

#include <memory>
#include <string>
#include <vector>

#include "common/GuardedFileStore.h"
#include "freedesktop/FileBookmarks.h"
#include "freedesktop/InstalledResources.h"
#include "freedesktop/LocalKeyValueStore.h"
#include "freedesktop/PlistUserDefaults.h"
#include "freedesktop/PosixFileStore.h"
#include "freedesktop/SystemRandom.h"
#include "platform/Platform.h"
#include "support/Fakes.h"

namespace tallyvane::bench {

/// A folder that is removed with everything in it.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

/// The files of the machine, with a note of which were read and saved.
class CountingFileStore : public PosixFileStore {
 public:
  using PosixFileStore::PosixFileStore;
  [[nodiscard]] Result<std::string> read(const std::string& path) override {
    readPaths.push_back(path);
    return PosixFileStore::read(path);
  }
  Result<> save(const std::string& path, std::string_view bytes, Durability durability) override {
    savedPaths.push_back(path);
    return PosixFileStore::save(path, bytes, durability);
  }
  std::vector<std::string> readPaths;
  std::vector<std::string> savedPaths;
};

class FixedClock : public Clock {
 public:
  [[nodiscard]] Date now() override { return today; }
  static constexpr Date today = std::chrono::sys_days{std::chrono::year{2027} / 3 / 10} + std::chrono::hours{17};
};

/// Lines cost nothing here: what a journal makes of them is not the model's.
class SilentLog : public Log {
 public:
  void line(std::string_view /*text*/) override {}
  void diagnostic(std::string_view /*text*/) override {}
};

/// The adapters that the programs use for files and settings, and the same guard, over a folder; the rest of the
/// desktop is not measured and lives in memory. The clock stands still.
struct Desktop {
  explicit Desktop(const std::string& folder);

  testing::FakeDesktop rest;
  FixedClock clock;
  SystemRandom random;
  SilentLog log;
  CountingFileStore files;
  programs::GuardedFileStore guardedFiles{files, log};
  InstalledResources resources;
  FileBookmarks bookmarks;
  PlistUserDefaults defaults;
  PlistUserDefaults groupDefaults;
  LocalKeyValueStore cloud;
  Platform platform;
};

}  // namespace tallyvane::bench
