#pragma once

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

#include <array>
#include <stdexcept>
#include <string>

#include "freedesktop/FileDescriptor.h"
#include "support/ChildProcess.h"

namespace tallyvane::testing {

/// Through which a program that a test set going says that it ran, and with what.
class NamedPipe {
 public:
  explicit NamedPipe(const std::string& path) {
    if (::mkfifo(path.c_str(), 0600) != 0) throw std::runtime_error("cannot make the pipe " + path);
    // Open for writing too, so that there is no end of file between two writers.
    file_ = FileDescriptor(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
  }

  /// What one writer writes next; empty when nobody does in time.
  [[nodiscard]] std::string nextText() const {
    pollfd polled{file_.number(), POLLIN, 0};
    if (::poll(&polled, 1, static_cast<int>(std::chrono::milliseconds(patience).count())) != 1) return "";
    std::array<char, 4096> buffer{};
    const auto size = ::read(file_.number(), buffer.data(), buffer.size());
    return {buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0};
  }

 private:
  FileDescriptor file_;
};

}  // namespace tallyvane::testing
