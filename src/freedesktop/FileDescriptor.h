#pragma once

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "foundation/Result.h"

namespace tallyvane {

/// Owns an open file and closes it; a negative number is none.
class FileDescriptor {
 public:
  explicit FileDescriptor(int number = -1) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (number_ >= 0) ::close(number_);
  }

  [[nodiscard]] explicit operator bool() const { return number_ >= 0; }
  [[nodiscard]] int number() const { return number_; }

 private:
  int number_;
};

/// "PATH: REASON" for the system call that has just failed.
[[nodiscard]] inline Error systemError(const std::string& path, int code = errno) {
  return Error{path + ": " + std::generic_category().message(code)};
}

/// The call's outcome, made again for as long as a signal interrupts it.
template <typename Call>
[[nodiscard]] auto uninterrupted(Call call) {
  auto outcome = call();
  while (outcome < 0 && errno == EINTR) outcome = call();
  return outcome;
}

/// Writes all the bytes and gives 0, or the reason why it could not.
[[nodiscard]] int writeAll(const FileDescriptor& file, std::string_view bytes);

/// Opens the regular file, made with mode 0600 when it is not there, and locks it exclusively (flock); the lock lasts
/// until the descriptor is closed. The file locked is the one that the path still names. A relative path starts at
/// `folder`, an open folder. With LOCK_EX | LOCK_NB, no descriptor says that another program holds the lock.
[[nodiscard]] Result<FileDescriptor> openLocked(const std::string& path, int folder = AT_FDCWD,
                                                int operation = LOCK_EX);

}  // namespace tallyvane
