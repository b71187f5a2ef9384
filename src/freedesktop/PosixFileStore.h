#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/FileStore.h"

namespace tallyvane {

/// The files of the machine. New files are the user's alone (0600), new folders too (0700), copies included. A save may
/// wait for another program's save in the same folder. Only regular files are read, and none above `maximumFileBytes`;
/// a pipe or a device never blocks. A copy follows a symbolic link that is copied itself and keeps those inside a
/// folder as links. A temporary file that a killed program left goes when one is made a day later.
class PosixFileStore : public FileStore {
 public:
  static constexpr std::size_t maximumFileBytes = std::size_t{1} << 30;

  explicit PosixFileStore(std::string applicationSupportFolder)
      : applicationSupportFolder_(std::move(applicationSupportFolder)) {}

  [[nodiscard]] Result<std::string> read(const std::string& path) override;
  Result<> save(const std::string& path, std::string_view bytes, Durability durability = Durability::synced) override;

  [[nodiscard]] Result<std::string> readPart(const std::string& path, std::uint64_t offset, std::size_t count) override;
  [[nodiscard]] Result<std::string> makeTemporary() override;
  Result<> append(const std::string& temporary, std::string_view bytes) override;
  [[nodiscard]] bool exists(const std::string& path) override;
  [[nodiscard]] bool isFolder(const std::string& path) override;
  [[nodiscard]] bool liesIn(const std::string& path, const std::string& folder) override;
  Result<> createFolder(const std::string& path) override;
  [[nodiscard]] Result<std::vector<std::string>> list(const std::string& folder) override;
  Result<> copy(const std::string& from, const std::string& to) override;
  Result<> move(const std::string& from, const std::string& to) override;
  void tellCopied(std::function<void(std::uint64_t)> tell) override { tellCopied_ = std::move(tell); }
  [[nodiscard]] Result<std::uint64_t> copySize(const std::string& path) override;
  [[nodiscard]] Result<std::uint64_t> freeSpace(const std::string& folder) override;
  Result<> remove(const std::string& path) override;

  [[nodiscard]] std::string applicationSupportFolder() override { return applicationSupportFolder_; }

 private:
  Result<> copyTo(const std::string& from, const std::string& to, bool compares);

  std::string applicationSupportFolder_;
  std::function<void(std::uint64_t)> tellCopied_;
};

}  // namespace tallyvane
