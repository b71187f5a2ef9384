// Copying, moving and removing files and folders with all that is in them.
#include <sys/stat.h>
#include <sys/statvfs.h>

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

/// What is copied is its owner's alone, whoever may read where it came from.
constexpr mode_t ownersPart(mode_t mode, mode_t least) { return (mode & S_IRWXU) | least; }

/// Counts what one copy has copied, and tells of it.
struct Copied {
  const std::function<void(std::uint64_t)>& tell;
  std::uint64_t bytes = 0;
  void add(std::size_t more) {
    bytes += more;
    if (tell) tell(bytes);
  }
};

/// Errors name the file that could not be copied.
Result<> copyFile(const std::string& from, const std::string& to, Copied& done) {
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
    done.add(static_cast<std::size_t>(count));
  }
  return ::fchmod(target.number(), ownersPart(status.st_mode, S_IRUSR | S_IWUSR)) == 0 ? Result<>() : systemError(from);
}

Result<> copyTree(const fs::path& from, const fs::path& to, Copied& done);

Result<> copyFolder(const fs::path& from, const fs::path& to, Copied& done) {
  std::error_code error;
  if (::mkdir(to.c_str(), S_IRWXU) != 0) return systemError(from.string());
  for (fs::directory_iterator entry(from, error), end; !error && entry != end; entry.increment(error)) {
    const fs::path name = entry->path().filename();
    if (isTemporaryName(name.string())) continue;
    if (Result<> copied = copyTree(entry->path(), to / name, done); !copied) return copied;
  }
  return outcome(from, error);
}

Result<> copyTree(const fs::path& from, const fs::path& to, Copied& done) {
  std::error_code error;
  switch (fs::symlink_status(from, error).type()) {
    case fs::file_type::directory:
      return copyFolder(from, to, done);
    case fs::file_type::symlink:
      fs::copy_symlink(from, to, error);
      break;
    case fs::file_type::regular:
      return copyFile(from, to, done);
    default:
      if (!error) return Error{from.string() + ": neither a file nor a folder"};
  }
  return outcome(from, error);
}

/// Blocks of the disk are what is taken, by a folder and a link as by a file.
std::uint64_t wholeBlocks(std::uint64_t bytes) {
  constexpr std::uint64_t block = 4096;
  return (bytes / block + 1) * block;
}

Result<std::uint64_t> treeSize(const fs::path& path);

Result<std::uint64_t> folderSize(const fs::path& folder) {
  std::uint64_t size = wholeBlocks(0);
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (isTemporaryName(entry->path().filename().string())) continue;
    const Result<std::uint64_t> inside = treeSize(entry->path());
    if (!inside) return inside;
    size += *inside;
  }
  if (error) return systemError(folder.string(), error.value());
  return size;
}

Result<std::uint64_t> treeSize(const fs::path& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return systemError(path.string());
  if (S_ISDIR(status.st_mode)) return folderSize(path);
  if (S_ISLNK(status.st_mode)) return wholeBlocks(0);
  if (!S_ISREG(status.st_mode)) return Error{path.string() + ": neither a file nor a folder"};
  if (::access(path.c_str(), R_OK) != 0) return systemError(path.string());
  return wholeBlocks(static_cast<std::uint64_t>(status.st_size));
}

Result<> sameFile(const fs::path& left, const fs::path& right) {
  const FileDescriptor one(::open(left.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  const FileDescriptor other(::open(right.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  if (!one || !other) return systemError(one ? right.string() : left.string());
  // What the disk has is compared, not what memory still holds of it.
  (void)::posix_fadvise(other.number(), 0, 0, POSIX_FADV_DONTNEED);
  std::string block(std::size_t{1} << 16, '\0');
  std::string counterpart(block);
  for (off_t at = 0;;) {
    const ssize_t count = uninterrupted([&] { return ::pread(one.number(), block.data(), block.size(), at); });
    const ssize_t copied = uninterrupted([&] { return ::pread(other.number(), counterpart.data(), block.size(), at); });
    if (count < 0 || copied < 0) return systemError(count < 0 ? left.string() : right.string());
    const auto length = static_cast<std::size_t>(count);
    if (count != copied || block.compare(0, length, counterpart, 0, length) != 0)
      return Error{left.string() + ": its copy is not the same"};
    if (count == 0) return {};
    at += count;
  }
}

/// Everything in one tree is in the other, too, with the same content.
Result<> sameTree(const fs::path& left, const fs::path& right) {
  std::error_code error;
  const fs::file_type type = fs::symlink_status(left, error).type();
  if (error || fs::symlink_status(right, error).type() != type) return Error{left.string() + ": has no copy"};
  if (type == fs::file_type::regular) return sameFile(left, right);
  if (type == fs::file_type::symlink && fs::read_symlink(left, error) != fs::read_symlink(right, error))
    return Error{left.string() + ": its copy leads elsewhere"};
  if (type != fs::file_type::directory) return {};
  for (fs::directory_iterator entry(left, error), end; !error && entry != end; entry.increment(error)) {
    const fs::path name = entry->path().filename();
    if (isTemporaryName(name.string())) continue;
    if (Result<> same = sameTree(entry->path(), right / name); !same) return same;
  }
  return outcome(left, error);
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

/// Without links and "..", as far as that can be told.
fs::path resolved(const std::string& path) {
  std::error_code error;
  const fs::path whole = fs::weakly_canonical(withoutTrailingSlashes(path), error);
  return error ? fs::path(withoutTrailingSlashes(path)).lexically_normal() : whole;
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

/// Compared as files, too: a folder may have several names without links, where it is mounted twice or case is ignored.
bool isSameOrInside(const std::string& path, const std::string& folder) {
  const fs::path outer = resolved(folder);
  for (fs::path at = resolved(path);; at = at.parent_path()) {
    std::error_code ignored;
    if (at == outer || fs::equivalent(at, outer, ignored)) return true;
    if (at == at.parent_path()) return false;
  }
}

}  // namespace

Result<> PosixFileStore::copyTo(const std::string& from, const std::string& to, bool compares) {
  for (const std::string& path : {from, to}) {
    if (auto error = refusal(path)) return *error;
  }
  std::error_code error;
  const fs::path source = fs::canonical(from, error);
  if (error) return outcome(from, error);
  const std::string target = withoutTrailingSlashes(to);
  if (fs::symlink_status(target, error).type() != fs::file_type::not_found) return systemError(target, EEXIST);
  if (isSameOrInside(target, source.string())) return Error{to + ": lies inside " + from};

  Result<FolderTurn> turn = FolderTurn::take(parentOf(target));
  if (!turn) return Error{target + ": " + turn.error()};
  const CopyTemporary temporary(parentOf(target) + "/" + std::string(copyTemporaryName));
  Copied done{tellCopied_};
  if (Result<> copied = copyTree(source, temporary.path, done); !copied) return copied;
  if (Result<> synced = turn->syncContents(); !synced) return synced;
  if (Result<> same = compares ? sameTree(source, temporary.path) : Result<>(); !same) return same;
  if (const int code = renamedToFreeName(temporary.path, target)) return systemError(target, code);
  return turn->syncFolder();
}

bool PosixFileStore::liesIn(const std::string& path, const std::string& folder) {
  return !refusal(path) && !refusal(folder) && isSameOrInside(path, folder);
}

Result<> PosixFileStore::copy(const std::string& from, const std::string& to) { return copyTo(from, to, false); }

Result<> PosixFileStore::move(const std::string& from, const std::string& to) {
  for (const std::string& path : {from, to}) {
    if (auto error = refusal(path)) return *error;
  }
  const std::string source = withoutTrailingSlashes(from);
  const std::string target = withoutTrailingSlashes(to);
  std::error_code none;
  const bool isLink = fs::is_symlink(fs::symlink_status(source, none));
  // What a link leads to might not be found from the new place.
  const int code = isLink ? EXDEV : renamedToFreeName(source, target);
  if (code == EXDEV) {
    Result<> copied = copyTo(source, target, true);
    return copied ? remove(source) : copied;
  }
  struct stat there {};
  if (code != 0) return systemError(::lstat(source.c_str(), &there) == 0 ? target : source, code);
  Result<> synced = syncFolderAt(parentOf(target));
  return synced ? syncFolderAt(parentOf(source)) : synced;
}

/// A folder is renamed first, so that it is never seen, or left by a killed program, with a part of what is in it.
Result<> PosixFileStore::remove(const std::string& path) {
  if (auto error = refusal(path)) return *error;
  const std::string target = withoutTrailingSlashes(path);
  std::error_code error;
  const fs::file_type type = fs::symlink_status(target, error).type();
  if (type == fs::file_type::directory || type == fs::file_type::not_found) {
    const Result<FolderTurn> turn = FolderTurn::take(parentOf(target));
    const std::string doomed = joined(parentOf(target), copyTemporaryName);
    if (turn) fs::remove_all(doomed, error);
    if (turn && ::rename(target.c_str(), doomed.c_str()) == 0) {
      fs::remove_all(doomed, error);
      return outcome(path, error);
    }
  }
  const bool nothing = fs::remove_all(target, error) == 0;
  if (!error && nothing) return systemError(path, ENOENT);
  return outcome(path, error);
}

Result<std::uint64_t> PosixFileStore::copySize(const std::string& path) {
  if (auto error = refusal(path)) return *error;
  std::error_code error;
  const fs::path source = fs::canonical(path, error);
  if (error) return systemError(path, error.value());
  return treeSize(source);
}

Result<std::uint64_t> PosixFileStore::freeSpace(const std::string& folder) {
  if (auto error = refusal(folder)) return *error;
  struct statvfs status {};
  if (::statvfs(folder.c_str(), &status) != 0) return systemError(folder);
  return static_cast<std::uint64_t>(status.f_bavail) * status.f_frsize;
}

}  // namespace tallyvane
