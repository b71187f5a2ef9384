#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Result.h"

namespace tallyvane {

/// How safe a save is when it returns.
enum class Durability {
  synced,  ///< on the disk: survives a power failure
  cached,  ///< whole or absent for every reader, but a power failure may lose it
};

/// The files. Paths are absolute UTF-8 paths; an empty or relative path is refused with an error, so that nothing can
/// land in some other folder. Every failure is an error text that names the path and the system's reason.
class FileStore {
 public:
  virtual ~FileStore() = default;

  /// The whole content of a regular file.
  [[nodiscard]] virtual Result<std::string> read(const std::string& path) = 0;
  /// Replaces the file's content as one step: a reader sees the old content or the new, never a part, and after a
  /// failure the old stands as it was with nothing left beside it. The folder must exist. A symbolic link is followed:
  /// the file that it names is replaced. Permissions of a file that is there are kept.
  virtual Result<> save(const std::string& path, std::string_view bytes,
                        Durability durability = Durability::synced) = 0;

  /// Bytes of a regular file from `offset` on, at most `count`; none at its end or behind it. May be called from any
  /// thread.
  [[nodiscard]] virtual Result<std::string> readPart(const std::string& path, std::uint64_t offset,
                                                     std::size_t count) = 0;
  /// A new, empty file that is the user's alone, in the folder for what does not last. Whoever asked removes it.
  [[nodiscard]] virtual Result<std::string> makeTemporary() = 0;
  /// Adds to the end of a temporary file, in any number of steps: for these files alone, which nobody else reads.
  virtual Result<> append(const std::string& temporary, std::string_view bytes) = 0;

  [[nodiscard]] virtual bool exists(const std::string& path) = 0;
  [[nodiscard]] virtual bool isFolder(const std::string& path) = 0;
  /// Whether the path is the folder or lies in it, by what the two name and not by how they are written: symbolic
  /// links,
  /// ".." and slashes make no difference. What is not there yet lies where it would be.
  [[nodiscard]] virtual bool liesIn(const std::string& path, const std::string& folder) = 0;
  /// With all folders that lead to it; a folder that is there already is fine.
  virtual Result<> createFolder(const std::string& path) = 0;
  /// The names in a folder, sorted bytewise, without "." and ".." and without the store's own temporaries.
  [[nodiscard]] virtual Result<std::vector<std::string>> list(const std::string& folder) = 0;
  /// A file, or a folder with all that is in it, to a path at which nothing is. A failed copy leaves nothing behind.
  virtual Result<> copy(const std::string& from, const std::string& to) = 0;
  /// Likewise; across file systems it copies, compares, then removes.
  virtual Result<> move(const std::string& from, const std::string& to) = 0;
  /// Whom to tell, from now on, of the bytes that a copy, or a move that copies, has copied since it began: now and
  /// then while it goes on, within the call. An empty function is nobody.
  virtual void tellCopied(std::function<void(std::uint64_t bytes)> tell) = 0;
  /// The room that such a copy takes, in bytes; an error also where something in it cannot be copied.
  [[nodiscard]] virtual Result<std::uint64_t> copySize(const std::string& path) = 0;
  /// The room, in bytes, that the user may still fill where this folder is.
  [[nodiscard]] virtual Result<std::uint64_t> freeSpace(const std::string& folder) = 0;
  /// A file, or a folder with all that is in it. Nothing there is an error. A folder goes from its name in one step.
  /// Unless it is a file, what a killed program left beside it of a copy or a removal goes, too.
  virtual Result<> remove(const std::string& path) = 0;

  /// Absolute path of the user's folder for application data, without a slash at its end.
  [[nodiscard]] virtual std::string applicationSupportFolder() = 0;
};

}  // namespace tallyvane
