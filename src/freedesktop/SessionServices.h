#pragma once

#include <string>

#include "freedesktop/SessionBus.h"

namespace tallyvane {

/// The services of the session that show what Tallyvane has to say, as the bus tells of them at one moment.
struct SessionServices {
  enum class Presence { absent, startable, running };

  std::string busFailure;  ///< why the bus cannot be asked; then all else is absent
  Presence agent = Presence::absent;
  Presence notifications = Presence::absent;
  std::string notificationServer;  ///< its name and version; empty when it does not run or does not say
  bool trayWatcher = false;        ///< something collects the items of a tray
  bool trayHost = false;           ///< and something shows them

  /// Starts none of them, and waits no longer than the bus's limit for each answer.
  [[nodiscard]] static SessionServices ask(SessionBus& bus);
};

}  // namespace tallyvane
