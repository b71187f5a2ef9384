// Copying, moving and removing files and folders with all that is in them.
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "freedesktop/FileDescriptor.h"
#include "freedesktop/FolderTurn.h"
#include "freedesktop/PosixFileStore.h"
#include "freedesktop/PosixPaths.h"

namespace tallyvane {

namespace {

namespace fs = std::filesystem;

Result<> outcome(const fs::path& path, const std::error_code& error) {
  return error ? Result<>(systemError(path.string(), error.value())) : Result<>();
}

/// With its permissions. Errors name the file that could not be copied.
Result<> copyFile(const std::string& from, const std::string& to) {
  // Should the file have become a pipe by now, opening it must not block.
  const FileDescriptor source(::open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  struct stat status {};
  if (!source || ::fstat(source.number(), &status) != 0) return systemError(from);
  const FileDescriptor target(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!target) return systemError(from);
  std::string block(std::size_t{1} << 16, '\0');
  for (;;) {
    const ssize_t count = uninterrupted([&] { return ::read(source.number(), block.data(), block.size()); });
    if (count < 0) return systemError(from);
    if (count == 0) break;
    if (const int code = writeAll(target, {block.data(), static_cast<std::size_t>(count)}))
      return systemError(from, code);
  }
  return ::fchmod(target.number(), status.st_mode & 07777) == 0 ? Result<>() : systemError(from);
}

Result<> copyTree(const fs::path& from, const fs::path& to);

Result<> copyFolder(const fs::path& from, const fs::path& to) {
  std::error_code error;
  fs::create_directory(to, from, error);
  if (error) return outcome(from, error);
  for (fs::directory_iterator entry(from, error), end; !error && entry != end; entry.increment(error)) {
    const fs::path name = entry->path().filename();
    if (isTemporaryName(name.string())) continue;
    if (Result<> copied = copyTree(entry->path(), to / name); !copied) return copied;
  }
  return outcome(from, error);
}

Result<> copyTree(const fs::path& from, const fs::path& to) {
  std::error_code error;
  switch (fs::symlink_status(from, error).type()) {
    case fs::file_type::directory:
      return copyFolder(from, to);
    case fs::file_type::symlink:
      fs::copy_symlink(from, to, error);
      break;
    case fs::file_type::regular:
      return copyFile(from, to);
    default:
      if (!error) return Error{from.string() + ": neither a file nor a folder"};
  }
  return outcome(from, error);
}

/// Renames to a name at which nothing may be. Gives 0 or the reason.
int renamedToFreeName(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS) return errno;
  // The file system cannot refuse by itself.
  struct stat there {};
  if (::lstat(to.c_str(), &there) == 0) return EEXIST;
  return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

bool liesInside(const fs::path& path, const fs::path& folder) {
  const auto [inFolder, inPath] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
  return inFolder == folder.end();
}

/// What is on its way into place; it goes when it does not get there.
struct CopyTemporary {
  std::string path;
  CopyTemporary(const CopyTemporary&) = delete;
  CopyTemporary& operator=(const CopyTemporary&) = delete;
  explicit CopyTemporary(std::string temporary) : path(std::move(temporary)) { clear(); }
  ~CopyTemporary() { clear(); }
  void clear() const {
    std::error_code ignored;
    fs::remove_all(path, ignored);
  }
};

Result<> syncFolderAt(const std::string& path) {
  const FileDescriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return folder ? syncFolder(folder.number(), path) : systemError(path);
}

}  // namespace

Result<> PosixFileStore::copy(const std::string& from, const std::string& to) {
  for (const std::string& path : {from, to}) {
    if (auto error = refusal(path)) return *error;
  }
  std::error_code error;
  const fs::path source = fs::canonical(from, error);
  if (error) return outcome(from, error);
  const std::string target = withoutTrailingSlashes(to);
  if (fs::symlink_status(target, error).type() != fs::file_type::not_found) return systemError(target, EEXIST);
  if (liesInside(fs::weakly_canonical(target, error), source)) return Error{to + ": lies inside " + from};

  Result<FolderTurn> turn = FolderTurn::take(parentOf(target));
  if (!turn) return Error{target + ": " + turn.error()};
  const CopyTemporary temporary(parentOf(target) + "/" + std::string(copyTemporaryName));
  if (Result<> copied = copyTree(source, temporary.path); !copied) return copied;
  if (Result<> synced = turn->syncContents(); !synced) return synced;
  if (const int code = renamedToFreeName(temporary.path, target)) return systemError(target, code);
  return turn->syncFolder();
}

Result<> PosixFileStore::move(const std::string& from, const std::string& to) {
  for (const std::string& path : {from, to}) {
    if (auto error = refusal(path)) return *error;
  }
  const std::string source = withoutTrailingSlashes(from);
  const std::string target = withoutTrailingSlashes(to);
  const int code = renamedToFreeName(source, target);
  if (code == EXDEV) {
    Result<> copied = copy(source, target);
    return copied ? remove(source) : copied;
  }
  struct stat there {};
  if (code != 0) return systemError(::lstat(source.c_str(), &there) == 0 ? target : source, code);
  Result<> synced = syncFolderAt(parentOf(target));
  return synced ? syncFolderAt(parentOf(source)) : synced;
}

Result<> PosixFileStore::remove(const std::string& path) {
  if (auto error = refusal(path)) return *error;
  std::error_code error;
  const bool nothing = fs::remove_all(withoutTrailingSlashes(path), error) == 0;
  if (!error && nothing) return systemError(path, ENOENT);
  return outcome(path, error);
}

}  // namespace tallyvane
