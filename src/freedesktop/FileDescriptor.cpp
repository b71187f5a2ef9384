#include "freedesktop/FileDescriptor.h"

#include <sys/stat.h>

namespace tallyvane {

int writeAll(const FileDescriptor& file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = uninterrupted([&] { return ::write(file.number(), bytes.data(), bytes.size()); });
    if (written < 0) return errno;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

Result<FileDescriptor> openLocked(const std::string& path, int folder, int operation) {
  for (;;) {
    // Without O_NONBLOCK a pipe of that name would make the program wait for its other end.
    constexpr int flags = O_CREAT | O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    FileDescriptor file(uninterrupted([&] { return ::openat(folder, path.c_str(), flags, 0600); }));
    if (!file) return systemError(path);
    if (uninterrupted([&] { return ::flock(file.number(), operation); }) != 0) {
      return errno == EWOULDBLOCK ? Result<FileDescriptor>(FileDescriptor()) : systemError(path);
    }
    struct stat locked {};
    struct stat named {};
    if (::fstat(file.number(), &locked) != 0) return systemError(path);
    if (!S_ISREG(locked.st_mode)) return Error{path + ": not a regular file"};
    // Whoever held the lock before may have renamed or removed the file; then the lock guards nothing.
    const bool there = ::fstatat(folder, path.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0;
    if (there && named.st_dev == locked.st_dev && named.st_ino == locked.st_ino) return file;
  }
}

}  // namespace tallyvane
