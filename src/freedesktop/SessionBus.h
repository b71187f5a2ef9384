#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "foundation/Result.h"

namespace sdbus {
class IConnection;
}

namespace tallyvane {

/// How long a program waits for an answer over the session bus.
inline constexpr std::chrono::milliseconds sessionBusReplyLimit{10'000};

/// The program's connection to the user's session bus: opened at the first use, then kept. For one thread. Whoever
/// uses the connection lends it to proxies and objects, and drops those before this goes.
class SessionBus {
 public:
  /// An empty address is a session without a bus. A call that has no answer after `replyLimit` fails.
  explicit SessionBus(std::string address, std::chrono::milliseconds replyLimit = sessionBusReplyLimit);
  ~SessionBus();
  SessionBus(const SessionBus&) = delete;
  SessionBus& operator=(const SessionBus&) = delete;

  /// The open connection, owned by this; an error while there is no bus. Opening waits for the bus's greeting.
  [[nodiscard]] Result<sdbus::IConnection*> connection();
  [[nodiscard]] std::chrono::milliseconds replyLimit() const { return replyLimit_; }

 private:
  std::string address_;
  std::chrono::milliseconds replyLimit_;
  std::unique_ptr<sdbus::IConnection> connection_;
};

}  // namespace tallyvane
