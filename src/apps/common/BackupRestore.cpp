#include "common/BackupRestore.h"

#include <string>

#include "common/DataFolderState.h"
#include "common/ReceiptPaths.h"
#include "common/Sentences.h"
#include "freedesktop/PosixPaths.h"
#include "storage/DataFolder.h"
#include "storage/NewestBackup.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::programs {

namespace {

Result<> requireRoom(const Platform& platform, const std::string& backup, const std::string& target) {
  const Result<std::uint64_t> size = platform.files.copySize(backup);
  if (!size) return Error{sentence("the backup cannot be copied: {}", size.error())};
  const Result<std::uint64_t> space = platform.files.freeSpace(parentOf(target));
  if (!space) return Error{space.error()};
  return *size <= *space ? Result<>() : Error{sentence("{}: No room for a copy of the backup", parentOf(target))};
}

/// An empty folder is nothing to be kept.
Result<> setReplacedFolderAside(FileStore& files, const std::string& target, const std::string& kept) {
  if (files.exists(kept) || !files.exists(target) || isEmptyFolder(files, target)) return {};
  return files.move(target, kept);
}

Result<> putBack(FileStore& files, const std::string& target, const std::string& kept) {
  if (!files.exists(kept)) return {};
  if (files.exists(target)) {
    if (Result<> removed = files.remove(target); !removed) return removed;
  }
  return files.move(kept, target);
}

}  // namespace

Result<> restoreNewestBackup(const Platform& platform) {
  FileStore& files = platform.files;
  QMBillsLoader loader{platform};
  const std::optional<std::string> backup = newestBackup(platform);
  const std::string target = dataFolder(platform);
  const std::string kept = replacedFolder(platform);
  if (!backup || !billsListedIn(platform, *backup)) return Error{translated("there is no complete backup")};
  if (target.empty()) return Error{translated("it cannot be told where the data folder lies")};
  if (Result<> room = requireRoom(platform, *backup, target); !room) return room;
  if (Result<> aside = setReplacedFolderAside(files, target, kept); !aside) return aside;

  if (!loader.restoreDatabase()) {
    const Result<> back = putBack(files, target, kept);
    return Error{sentence("the backup could not be copied to {}", target) + (back ? "" : "; " + back.error())};
  }
  const Result<> followed = haveReceiptsFollow(platform, target);
  const Result<> removed = files.exists(kept) ? files.remove(kept) : Result<>();
  return followed ? removed : followed;
}

Result<> putReplacedFolderBack(const Platform& platform) {
  const auto target = QMBillsLoader{platform}.tallyvaneDirectory();
  const std::string kept = replacedFolder(platform);
  if (!target || !platform.files.exists(kept)) return Error{translated("no restore was interrupted")};
  return putBack(platform.files, *target, kept);
}

}  // namespace tallyvane::programs
