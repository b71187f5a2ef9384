#pragma once

#include <string>
#include <string_view>

#include "foundation/Result.h"
#include "freedesktop/FileDescriptor.h"
#include "platform/FileStore.h"

namespace tallyvane {

/// The one name under which a folder's next file is written before it is renamed into place. It is fixed, so that what
/// a killed program left is used up by the next save, and locked, so that programs that save in one folder take turns.
inline constexpr std::string_view saveTemporaryName = ".tallyvane-save.tmp";
/// Likewise for a copy; only who holds the folder's turn uses it.
inline constexpr std::string_view copyTemporaryName = ".tallyvane-copy.tmp";

[[nodiscard]] inline bool isTemporaryName(std::string_view name) {
  return name == saveTemporaryName || name == copyTemporaryName;
}

/// The right to write in one folder, held by one program at a time: the folder and its locked temporary file. The
/// temporary goes when the turn ends.
class FolderTurn {
 public:
  /// Waits for its turn. The folder must exist.
  [[nodiscard]] static Result<FolderTurn> take(const std::string& folderPath);

  FolderTurn(FolderTurn&& other) noexcept = default;
  FolderTurn& operator=(FolderTurn&&) = delete;
  ~FolderTurn();

  /// Puts the bytes in the place of the regular file `name` of the folder, or makes it.
  Result<> replace(const std::string& name, std::string_view bytes, Durability durability);

  /// Waits until everything written below the folder is on the disk; one wait for many files.
  Result<> syncContents();
  /// Waits until the folder's list of names is on the disk.
  Result<> syncFolder();

 private:
  FolderTurn(std::string folderPath, FileDescriptor folder, FileDescriptor temporary);
  /// Empties the temporary and gives it the owner and permissions of the file that it replaces. One that was left
  /// behind may hold anything and carry the permissions of another file.
  [[nodiscard]] Result<> prepareFor(const std::string& name);
  [[nodiscard]] Error failed(const std::string& name) const { return systemError(folderPath_ + "/" + name); }

  std::string folderPath_;
  FileDescriptor folder_;
  FileDescriptor temporary_;
};

/// Waits until a folder's list of names is on the disk. File systems that cannot do that are not waited for.
Result<> syncFolder(int folder, const std::string& path);

}  // namespace tallyvane
