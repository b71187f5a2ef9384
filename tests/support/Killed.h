// A program that is killed before its n-th change of files or settings.
#pragma once

#include "support/CliDesktop.h"

namespace tallyvane::testing {

/// Thrown where the program dies; nothing of it runs after that but destructors.
struct Killed {};

class KillingFileStore : public FailingFileStore {
 public:
  KillingFileStore(FileStore& inner, std::function<void()> beforeChange)
      : FailingFileStore(inner, 0), beforeChange_(std::move(beforeChange)) {}
  Result<> save(const std::string& path, std::string_view bytes, Durability durability) override {
    beforeChange_();
    return FailingFileStore::save(path, bytes, durability);
  }
  Result<> createFolder(const std::string& path) override {
    if (!isFolder(path)) beforeChange_();
    return FailingFileStore::createFolder(path);
  }
  Result<> copy(const std::string& from, const std::string& to) override {
    beforeChange_();
    return FailingFileStore::copy(from, to);
  }
  Result<> move(const std::string& from, const std::string& to) override {
    beforeChange_();
    return FailingFileStore::move(from, to);
  }
  Result<> remove(const std::string& path) override {
    beforeChange_();
    return FailingFileStore::remove(path);
  }

 private:
  std::function<void()> beforeChange_;
};

/// Runs a command that is killed before its n-th change (1 is the first); whether it came to that.
inline bool killedAt(CliDesktop& cli, int change, const std::vector<std::string>& arguments) {
  int changes = 0;
  const auto count = [&] {
    if (++changes >= change) throw Killed();
  };
  KillingFileStore store(cli.desktop.files, count);
  cli.desktop.defaults.beforeWrite = count;
  bool killed = false;
  try {
    (void)cli.runOn(store, arguments);
  } catch (const Killed&) {
    killed = true;
  }
  cli.desktop.defaults.beforeWrite = nullptr;
  return killed;
}

}  // namespace tallyvane::testing
