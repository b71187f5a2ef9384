#pragma once

#include <functional>
#include <list>
#include <map>
#include <string>
#include <string_view>

#include "platform/FileStore.h"
#include "platform/Log.h"

namespace tallyvane::programs {

/// The file store that a program hands to the model. It guards the user's files in three ways:
///
/// - A "*.plist" that is there but cannot be read as a property list of the kind that replaces it is copied aside, and
///   said so, before the save; when that copy fails, so does the save.
/// - Between `begin` and `finish` lies one operation, done whole or not at all: after its first failed save every later
///   change is refused, and `finish` puts back what the operation had changed, the last change first. On a full disk
///   that order always has room, since each step gives back what its change took. Of a file that grows with every save,
///   as a list does, only its first content is kept, and put back where its last one would be. Folders that were made,
///   copied, moved or removed stay so: who replaces one keeps the old one until the new one is whole. A copy, move or
///   removal that fails is the model's affair and ends nothing.
/// - A file that could not be read in the same operation, or when it was last read outside of one, is not replaced: the
///   model goes on as if it held nothing.
class GuardedFileStore : public FileStore {
 public:
  GuardedFileStore(FileStore& inner, Log& log) : inner_(inner), log_(log) {}

  void begin();
  /// Whether the operation has changed anything that would be put back.
  [[nodiscard]] bool hasChanged() const { return !undo_.empty(); }
  /// The first save that failed, if any did; then the files are as they were at `begin`, or the error also says which
  /// could not be put back.
  Result<> finish();
  /// Puts everything back as at `begin`, whether or not a save failed; what could not be put back is the error.
  Result<> abandon();

  [[nodiscard]] Result<std::string> read(const std::string& path) override;
  Result<> save(const std::string& path, std::string_view bytes, Durability durability = Durability::synced) override;
  [[nodiscard]] Result<std::string> readPart(const std::string& path, std::uint64_t offset,
                                             std::size_t count) override {
    return inner_.readPart(path, offset, count);
  }
  /// Temporaries are no files of the user's: nothing is put back.
  [[nodiscard]] Result<std::string> makeTemporary() override { return inner_.makeTemporary(); }
  Result<> append(const std::string& temporary, std::string_view bytes) override {
    return inner_.append(temporary, bytes);
  }
  [[nodiscard]] bool exists(const std::string& path) override { return inner_.exists(path); }
  [[nodiscard]] bool isFolder(const std::string& path) override { return inner_.isFolder(path); }
  [[nodiscard]] bool liesIn(const std::string& path, const std::string& folder) override {
    return inner_.liesIn(path, folder);
  }
  Result<> createFolder(const std::string& path) override { return inner_.createFolder(path); }
  [[nodiscard]] Result<std::vector<std::string>> list(const std::string& folder) override {
    return inner_.list(folder);
  }
  Result<> copy(const std::string& from, const std::string& to) override;
  Result<> move(const std::string& from, const std::string& to) override;
  void tellCopied(std::function<void(std::uint64_t)> tell) override { inner_.tellCopied(std::move(tell)); }
  [[nodiscard]] Result<std::uint64_t> copySize(const std::string& path) override { return inner_.copySize(path); }
  [[nodiscard]] Result<std::uint64_t> freeSpace(const std::string& folder) override { return inner_.freeSpace(folder); }
  Result<> remove(const std::string& path) override;
  [[nodiscard]] std::string applicationSupportFolder() override { return inner_.applicationSupportFolder(); }

 private:
  using Undo = std::function<Result<>()>;
  /// What a file held before the operation saved it.
  struct Earlier {
    std::list<Undo>::iterator undo;
    std::size_t size;
  };

  void forget();
  [[nodiscard]] std::string putBack();
  [[nodiscard]] Result<> saveGuarded(const std::string& path, std::string_view bytes, Durability durability);
  [[nodiscard]] bool hasFailed() const { return !firstError_.empty(); }
  [[nodiscard]] Undo savingAgain(const std::string& path, std::string bytes);
  [[nodiscard]] Undo removing(const std::string& path);
  /// Passes the outcome of a change on, and keeps its undo when it worked and belongs to an operation.
  Result<> changed(Result<> outcome, Undo undo);
  /// Likewise of a save over that many bytes.
  Result<> changedBySave(Result<> outcome, const std::string& path, std::size_t earlierSize, const Undo& undo);

  FileStore& inner_;
  Log& log_;
  bool operating_ = false;
  std::string firstError_;
  std::map<std::string, std::string, std::less<>> unread_;  ///< why files that are there could not be read, by path
  std::list<Undo> undo_;
  std::map<std::string, Earlier, std::less<>> earlier_;  ///< of files saved since anything was moved or removed
};

}  // namespace tallyvane::programs
