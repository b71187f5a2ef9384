#include "freedesktop/FolderTurn.h"

#include <sys/stat.h>

#include <cstdio>

namespace tallyvane {

namespace {

const std::string temporaryName(saveTemporaryName);

}  // namespace

FolderTurn::FolderTurn(std::string folderPath, FileDescriptor folder, FileDescriptor temporary)
    : folderPath_(std::move(folderPath)), folder_(std::move(folder)), temporary_(std::move(temporary)) {}

Result<FolderTurn> FolderTurn::take(const std::string& folderPath) {
  FileDescriptor folder(::open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder) return systemError(folderPath);
  Result<FileDescriptor> temporary = openLocked(temporaryName, folder.number());
  if (!temporary) return Error{folderPath + "/" + temporary.error()};
  return FolderTurn(folderPath, std::move(folder), std::move(*temporary));
}

FolderTurn::~FolderTurn() {
  // While it is still locked: the next in line then finds the name gone and makes a temporary of its own.
  if (temporary_) ::unlinkat(folder_.number(), temporaryName.c_str(), 0);
}

Result<> FolderTurn::replace(const std::string& name, std::string_view bytes, Durability durability) {
  if (Result<> prepared = prepareFor(name); !prepared) return prepared;
  if (const int code = writeAll(temporary_, bytes)) return systemError(folderPath_ + "/" + name, code);
  if (durability == Durability::synced && ::fsync(temporary_.number()) != 0) return failed(name);
  if (::renameat(folder_.number(), temporaryName.c_str(), folder_.number(), name.c_str()) != 0) return failed(name);
  temporary_ = FileDescriptor();
  return durability == Durability::synced ? syncFolder() : Result<>();
}

Result<> FolderTurn::syncContents() { return ::syncfs(folder_.number()) == 0 ? Result<>() : systemError(folderPath_); }

Result<> FolderTurn::syncFolder() { return tallyvane::syncFolder(folder_.number(), folderPath_); }

Result<> FolderTurn::prepareFor(const std::string& name) {
  struct stat has {};
  struct stat target {};
  if (::fstat(temporary_.number(), &has) != 0) return failed(name);
  if (::fstatat(folder_.number(), name.c_str(), &target, AT_SYMLINK_NOFOLLOW) != 0) {
    if (errno != ENOENT) return failed(name);
    target = has;
    target.st_mode = S_IFREG | 0600;
  }
  if (!S_ISREG(target.st_mode)) return Error{folderPath_ + "/" + name + ": not a regular file"};
  // Each is set only where it differs: the disk would have to note it again.
  if (has.st_size != 0 && ::ftruncate(temporary_.number(), 0) != 0) return failed(name);
  // The administrator saves for the user: the file stays the user's. Others may not give files away, nor need to.
  const bool changesOwner = target.st_uid != has.st_uid || target.st_gid != has.st_gid;
  if (changesOwner && ::geteuid() == 0 && ::fchown(temporary_.number(), target.st_uid, target.st_gid) != 0)
    return failed(name);
  if (target.st_mode != has.st_mode && ::fchmod(temporary_.number(), target.st_mode & 07777) != 0) return failed(name);
  return {};
}

Result<> syncFolder(int folder, const std::string& path) {
  if (::fsync(folder) == 0 || errno == EINVAL || errno == ENOTSUP) return {};
  return systemError(path);
}

}  // namespace tallyvane
