#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <stdexcept>
#include <string>

#include "freedesktop/FileDescriptor.h"

namespace tallyvane::testing {

/// A port of the loopback interface at which connections are taken, but nobody ever says anything.
class SilentPort {
 public:
  SilentPort() {
    address_.sin_family = AF_INET;
    address_.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address_;
    auto* address = reinterpret_cast<sockaddr*>(&address_);
    const bool listens = ::bind(socket_.number(), address, size) == 0 && ::listen(socket_.number(), 1) == 0 &&
                         ::getsockname(socket_.number(), address, &size) == 0;
    if (!listens) throw std::runtime_error("no port to listen at");
  }
  [[nodiscard]] int number() const { return ::ntohs(address_.sin_port); }

 private:
  FileDescriptor socket_{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  sockaddr_in address_{};
};

/// The same at a path.
class SilentSocket {
 public:
  explicit SilentSocket(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const bool listens = ::bind(socket_.number(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
                         ::listen(socket_.number(), 1) == 0;
    if (!listens) throw std::runtime_error("nothing listens at " + path);
  }

 private:
  FileDescriptor socket_{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

}  // namespace tallyvane::testing
