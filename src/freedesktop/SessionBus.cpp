#include "freedesktop/SessionBus.h"

#include <sdbus-c++/sdbus-c++.h>

#include <utility>

namespace tallyvane {

SessionBus::SessionBus(std::string address, std::chrono::milliseconds replyLimit)
    : address_(std::move(address)), replyLimit_(replyLimit) {}

SessionBus::~SessionBus() = default;

Result<sdbus::IConnection*> SessionBus::connection() {
  if (connection_) return connection_.get();
  if (address_.empty())
    return Error{"there is no session bus: neither DBUS_SESSION_BUS_ADDRESS nor XDG_RUNTIME_DIR is set"};
  try {
    auto opened = sdbus::createSessionBusConnectionWithAddress(address_);
    opened->setMethodCallTimeout(replyLimit_);
    connection_ = std::move(opened);
    return connection_.get();
  } catch (const sdbus::Error& error) {
    return Error{"the session bus at " + address_ + " cannot be reached: " + error.getMessage()};
  }
}

}  // namespace tallyvane
